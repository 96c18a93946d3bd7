#pragma once

#include <QList>
#include <QPointF>
#include <QRect>
#include <QStringList>
#include <QVector>

#include <qwt_scale_div.h>

#include <array>
#include <optional>
#include <utility>

namespace Monkey {

class Host;

/// What a plot shows after a step, in plain values.
struct Snapshot {
    struct Scale {
        double lower = 0.0;
        double upper = 0.0;
        std::array<QList<double>, QwtScaleDiv::NTickTypes> ticks;
        /// What the axis is set to.
        int maxMajor = 0;
        int maxMinor = 0;
        double step = 0.0;
    };

    /// The samples of a curve of the quote line's type, and those that the host gave it last.
    struct QuoteLine {
        QVector<QPointF> samples;
        QVector<QPointF> given;
    };

    /// Of the bottom axis; empty before the first paint.
    struct Labels {
        /// Those that stand there after the step.
        QList<double> left;
        /// Those chosen anew for the scale of this moment.
        QList<double> shown;
        QList<double> candidates;
        /// Of those that are shown.
        QList<QRect> rectangles;
    };

    /// An entry for each curve in the plot's order, each with a text for each of its widgets.
    struct Legend {
        bool present = false;
        QStringList curves;
        QVector<QStringList> entries;
        /// Widgets that are no living part of the legend.
        int strangers = 0;
    };

    Scale prices;
    Scale values;
    QVector<QuoteLine> quoteLines;
    Labels labels;
    Legend legend;
    bool autoScale = false;
    bool expectedAutoScale = false;
    /// Items of the plot that say they are of another one.
    int foreignItems = 0;
    /// Whether Qwt finds the vertical range itself, the plot's auto-scale notwithstanding.
    bool valuesByQwt = false;
    /// What the plot's auto-scale would show, unless it finds no range.
    std::optional<std::pair<double, double>> autoScaleRange;
};

/// Chooses the labels of the bottom axis anew, and changes nothing else.
Snapshot snapshotOf(Host& host);

}
