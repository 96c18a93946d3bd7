// A program of somebody else's: draws a curve and the line at the quote into a picture, and fails unless both
// are in it.
#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <database/database.h>
#include <database/icore.h>
#include <directory/securitiestable.h>

#include <QApplication>
#include <QImage>
#include <QTextStream>

namespace {

class Plot : public PriceBased2dPlot {
public:
    Plot()
        : PriceBased2dPlot(true)
    {
    }
    void curveIconReset(const PriceBased2dPlotCurve*) override { }
};

const QColor curveColor(0, 114, 178);

void addCurve(Plot& plot, const QString& title, int type, const QPen& pen, const QVector<QPointF>& samples)
{
    auto* const curve = new PriceBased2dPlotCurve(&plot, title);
    curve->setDataType(type);
    curve->setPen(pen);
    // What the legend does not show is not scaled to.
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    if (type == PriceBased2dPlotCurve::quoteLineType)
        curve->setStyle(QwtPlotCurve::Sticks);
    curve->setSamples(samples);
    curve->attach(&plot);
}

int pixelsOf(const QImage& picture, const QColor& color)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixel(x, y) == color.rgb();
    }
    return count;
}

}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    ICore::instance()->database()->createTable(
        SecuritiesTable::securitiesName, SecuritiesTable::securitiesColumns());

    Plot plot;
    addCurve(plot, "Volatility", 9, QPen(curveColor, 2.0), {{80.0, 0.3}, {90.0, 0.25}, {100.0, 0.28}});
    addCurve(plot, "Quote", PriceBased2dPlotCurve::quoteLineType, QPen(Qt::red), {{92.5, 0.25}, {92.5, 0.3}});
    plot.setAxisScale(QwtPlot::xBottom, 80.0, 100.0, 5.0);
    plot.setAutoScaleEnabled(true);
    plot.resize(480, 320);
    plot.updateYAxisScale();

    const QImage picture = plot.grab().toImage();
    const int curve = pixelsOf(picture, curveColor);
    const int quote = pixelsOf(picture, Qt::red);
    QTextStream(stdout) << "pixels of the curve: " << curve << ", of the quote: " << quote << '\n';
    // The curve crosses more than half of the width, the line more than half of the height.
    return curve > picture.width() / 2 && quote > picture.height() / 2 ? 0 : 1;
}
