#include "differential/randomcurves.h"

#include "differential/told.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QPen>

#include <algorithm>

namespace Differential {

namespace {

QwtPlotCurve::CurveStyle styleOf(Plain::Line line)
{
    switch (line) {
    case Plain::Line::None:
        return QwtPlotCurve::NoCurve;
    case Plain::Line::Lines:
        return QwtPlotCurve::Lines;
    case Plain::Line::Sticks:
        return QwtPlotCurve::Sticks;
    case Plain::Line::Steps:
        return QwtPlotCurve::Steps;
    case Plain::Line::Dots:
        return QwtPlotCurve::Dots;
    }
    return QwtPlotCurve::NoCurve;
}

}

QVector<QPointF> randomSamples(Random& random, Samples kind, int most)
{
    QVector<QPointF> samples;
    const int count = random.oneIn(12) ? 0 : random.whole(1, most);
    const double step = random.oneOf({1.0, 0.5, 2.0, 20.0 / most});
    const bool even = !random.oneIn(3);
    double price = 100.0 + (random.oneIn(3) ? random.whole(-10, 15) : 0);
    for (int i = 0; i < count; ++i) {
        const double value = random.oneIn(2) ? random.whole(-5, 5) : random.between(-10.0, 10.0);
        samples << QPointF(random.oneIn(30) ? random.about(price) : price, value);
        price += even ? step : random.between(0.0, 2.0 * step);
    }
    if (count > 0 && random.oneIn(12))
        samples[random.whole(0, count - 1)] = QPointF(random.nasty(), random.nasty());
    if (count > 0 && kind == Samples::Any && random.oneIn(15)) {
        QPointF& sample = samples[random.whole(0, count - 1)];
        (random.oneIn(2) ? sample.rx() : sample.ry()) = random.notFinite();
    }
    if (random.oneIn(15))
        std::reverse(samples.begin(), samples.end());
    return samples;
}

Plain::Curve randomCurve(Random& random, Samples kind, int mostSamples)
{
    Plain::Curve curve;
    curve.type = random.oneIn(8) ? 0 : random.oneIn(10) ? -1 : random.whole(9, 13);
    curve.visible = !random.oneIn(5);
    curve.title = random.oneIn(15) ? QString() : random.title();
    curve.samples = randomSamples(random, kind, mostSamples);
    curve.line = random.oneIn(12)
        ? random.oneOf({Plain::Line::None, Plain::Line::Steps, Plain::Line::Dots, Plain::Line::Sticks})
        : Plain::Line::Lines;
    curve.legendShowsLine = !random.oneIn(10);
    curve.legendShowsSymbol = random.oneIn(4);
    curve.hasPen = !random.oneIn(15);
    curve.color = random.oneIn(15) ? QColor() : QColor(random.oneIn(4) ? Qt::red : Qt::blue);
    // The line at the quote is valid in one look only.
    if (curve.type == 0 && !random.oneIn(3)) {
        curve.line = Plain::Line::Sticks;
        curve.color = QColor(Qt::red);
        curve.samples = {{105.0, -1.0}, {random.oneIn(4) ? random.about(105.0) : 105.0, 1.0}};
    }
    return curve;
}

QList<Plain::Curve> randomCurves(Random& random, Samples kind, int most, int mostSamples)
{
    QList<Plain::Curve> curves;
    for (int count = random.whole(0, most); count > 0; --count)
        curves << randomCurve(random, kind, mostSamples);
    return curves;
}

int randomLength(Random& random)
{
    return random.oneIn(10) ? random.oneOf({31, 32, 33, 64, 200, 1023, 1024, 1025, 2500}) : 12;
}

namespace {

/// Samples as pairs or as two lists, which the library reads by different ways.
void setSamples(PriceBased2dPlotCurve& curve, const QVector<QPointF>& samples)
{
    if (samples.size() % 2 == 0)
        return curve.setSamples(samples);
    QVector<double> prices;
    QVector<double> values;
    for (const QPointF& sample : samples) {
        prices << sample.x();
        values << sample.y();
    }
    curve.setSamples(prices, values);
}

}

std::unique_ptr<PriceBased2dPlotCurve> made(const Plain::Curve& plain, PriceBased2dPlot* plot)
{
    auto curve = std::make_unique<PriceBased2dPlotCurve>(plot, plain.title);
    curve->setDataType(plain.type);
    setSamples(*curve, plain.samples);
    curve->setStyle(styleOf(plain.line));
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine, plain.legendShowsLine);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowSymbol, plain.legendShowsSymbol);
    curve->setPen(QPen(QBrush(plain.color), 1.0, plain.hasPen ? Qt::SolidLine : Qt::NoPen));
    // Past the class's own, which asks the plot for a quote.
    curve->QwtPlotItem::setVisible(plain.visible);
    return curve;
}

QString told(const Plain::Curve& curve)
{
    return QStringLiteral("type %1, visible %2, valid %3, title \"%4\", samples %5")
        .arg(curve.type)
        .arg(curve.visible)
        .arg(curve.isValid())
        .arg(curve.title, told(curve.samples));
}

QString told(const QList<Plain::Curve>& curves)
{
    QStringList texts;
    for (const Plain::Curve& curve : curves)
        texts << QStringLiteral("\n    ") + told(curve);
    return texts.join(QString());
}

}
