#pragma once

#include "differential/plaincurves.h"
#include "differential/plainstored.h"

#include <QImage>
#include <QMap>
#include <QStringList>

namespace Plain {

/// A curve and its entry in a legend.
struct LegendCurve {
    Curve curve;
    /// QwtSymbol::Style.
    int symbol = -1;
    bool checked = true;
    bool grey = false;
    QImage icon;
    QImage savedIcon;
};

/// A plot's curves with their entries, and what the user does to them.
class Legend {
public:
    QList<LegendCurve> curves;
    QStringList unchecked;
    /// By symbol style.
    QMap<int, QImage> placeholders;
    /// The style of the plot's first marker with a symbol, -1 without markers.
    int markerStyle = -1;
    /// The quote of the plot's future; the line at one below zero is not shown.
    double quote = -1.0;
    /// Whether the plot is told what to show.
    bool isConnected = false;
    /// The visibilities announced so far.
    QStringList announced;

    void toggle(int index);
    /// Acts on the first entry of a text.
    void check(const QString& text, bool checked);
    void checkOffUnchecked();
    void setIcon(const QString& text, const QImage& icon);
    /// A curve looks different, or has another title.
    void update(int index, const QString& title, const QImage& icon);

    /// Nothing for a plot without curves.
    QByteArray stored() const;
    void restore(const QByteArray& bytes);

    int entryOf(const QString& text) const;
    /// The valid curves whose entries are checked.
    QList<int> used() const;

private:
    void showCurve(const QString& title, bool visible);
    QImage placeholderOf(const QString& text) const;
    int onlyCurveOf(int type) const;
};

}
