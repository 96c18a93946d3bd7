#pragma once

#include <plot2d/pricebased2dplotcurve.h>

#include <QPointF>
#include <QVector>

namespace Monkey {

/// The curves of a host, attached or not, each with the samples that the host gave it last.
class CurveShelf {
public:
    struct Entry {
        PriceBased2dPlotCurve* curve = nullptr;
        QVector<QPointF> given;
    };

    ~CurveShelf();

    /// A new curve with a line in the legend, attached to the plot; of type 0 with the look that makes it
    /// valid.
    void add(PriceBased2dPlot& plot, int type, const QString& title, const QVector<QPointF>& samples);
    /// By number, which starts again beyond the last; null without curves.
    Entry* at(int number);
    void remove(int number);
    void clear();
    /// Forgets the attached curves, which their plot deletes, and deletes the others.
    void leaveToPlot();

    const QVector<Entry>& entries() const { return m_entries; }

private:
    QVector<Entry> m_entries;
};

}
