#include "window/readout.h"

#include <plot2d/plot2dcommon.h>
#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotpicker.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <QLocale>

#include <qwt_text.h>

namespace {

constexpr int priceDecimals = 10;
constexpr int distanceDecimals = 4;

// Arabic digits would change places with a number behind them; a mark of zero width keeps them apart.
QString keptInPlace(const QString& number)
{
    constexpr ushort leftToRightMark = 0x200E;
    const bool isArabic = QLocale::system().zeroDigit().direction() == QChar::DirAN;
    return isArabic ? number + QChar(leftToRightMark) : number;
}

}

QString ReadOut::distanceFromQuote(const PriceBased2dPlot& plot, double price)
{
    const auto* const axis
        = dynamic_cast<const PriceBased2dPlotScaleDraw*>(plot.axisScaleDraw(QwtPlot::xBottom));
    if (!axis)
        return QString();
    const Conversion* const conversion = axis->isConversionEnabled() ? axis->conversionObject() : nullptr;
    const auto inUnit
        = [&](double value) { return conversion ? (conversion->*axis->conversionMethod())(value) : value; };
    const double distance
        = Plot2dCommon::roundValue(inUnit(price) - inUnit(axis->curKotirValue()), distanceDecimals);
    QString text
        = Plot2dCommon::fromDoubleToSystemStringShort(distance, distanceDecimals) + plot.xAxisMetricUnit();
    if (distance > 0.0)
        text.prepend(QLocale::system().positiveSign());
    return text;
}

QString ReadOut::text(const PriceBased2dPlot& plot, const PriceBased2dPlotPicker& picker,
    const PriceBased2dPlotCurve& curve, int index)
{
    if (index < 0 || index >= int(curve.dataSize()))
        return QString();
    const QPointF sample = curve.sample(index);
    const double price = plot.roundedXValue(sample.x());
    return tr("%1\nStrike %2, %3 from the quote\n%4")
        .arg(curve.title().text(),
            keptInPlace(Plot2dCommon::fromDoubleToSystemStringShort(price, priceDecimals)),
            distanceFromQuote(plot, price), picker.convertedValue(sample.y()));
}
