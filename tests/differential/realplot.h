#pragma once

#include "differential/cases.h"
#include "differential/plainview.h"
#include "differential/randomcurves.h"
#include "flow/shownplot.h"

namespace Differential {

/// A plot on the screen and the plain view of the same: a case sets both up, does the same to both and
/// compares.
class RealPlot : public QObject {
    Q_OBJECT

public:
    RealPlot();

    bool isReady() const { return m_plot != nullptr; }
    TestPlot& plot() { return *m_plot; }
    Plain::View& view() { return m_view; }
    QStringList& seen() { return m_seen; }

    /// New curves, ranges and settings.
    void setUp(Random& random);
    /// Whether the labels of the vertical axis read the same, by the plain rules.
    bool labelsAreEqual() const;
    /// The smallest step of prices that the plot knows of.
    double minStep() const { return m_minStep; }

    void compare(Findings& findings);
    QString inWords() const;

private Q_SLOTS:
    void onLabels() { m_seen << QStringLiteral("labels"); }
    void onAutoScale(bool on) { m_seen << QStringLiteral("auto-scale %1").arg(on); }

private:
    void setUpCurves(Random& random);
    void setUpRanges(Random& random);

    std::unique_ptr<TestPlot> m_plot;
    Plain::View m_view;
    QList<PriceBased2dPlotCurve*> m_curves;
    QStringList m_seen;
    int m_decimals = 10;
    double m_minStep = 0.0;
};

}
