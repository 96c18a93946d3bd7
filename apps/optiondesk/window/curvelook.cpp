#include "window/curvelook.h"

#include "window/bandcurve.h"
#include "window/desktexts.h"
#include "window/overlaycurve.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QPen>

#include <qwt_symbol.h>

#include <algorithm>

namespace {

constexpr QRgb black = 0xff000000;
constexpr QRgb orange = 0xffe69f00;
constexpr QRgb blue = 0xff0072b2;
constexpr QRgb bluishGreen = 0xff009e73;
constexpr QRgb reddishPurple = 0xffcc79a7;
constexpr QRgb skyBlue = 0xff56b4e9;

constexpr QSize legendIconSize(24, 13);

struct Look {
    const char* title;
    int dataType;
    QColor color;
    double width;
    Qt::PenStyle style;
    /// Curves of a higher one are drawn over those of a lower one; Qwt draws markers at 30.
    double z;
};

Look lookOf(CurveRole role)
{
    switch (role) {
    case CurveRole::Smile:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Smile"), 9, blue, 2.0, Qt::SolidLine, 40.0};
    case CurveRole::StatedVolatility:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Stated volatility"), 10, black, 1.0, Qt::DotLine, 41.0};
    case CurveRole::BidVolatility:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Bid volatility"), 11, bluishGreen, 1.0, Qt::SolidLine, 20.0};
    case CurveRole::AskVolatility:
        return {
            QT_TRANSLATE_NOOP("DeskTexts", "Ask volatility"), 12, reddishPurple, 1.0, Qt::SolidLine, 20.0};
    case CurveRole::BidAskBand:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Bid-ask band"), BandCurve::bandType, skyBlue, 5.0,
            Qt::SolidLine, 16.0};
    case CurveRole::ImpliedVolatility:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Implied volatility"), PriceBased2dPlotCurve::markedType,
            orange, 1.0, Qt::SolidLine, 25.0};
    case CurveRole::CallValue:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Call value"), 11, blue, 2.0, Qt::SolidLine, 40.0};
    case CurveRole::PutValue:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Put value"), 12, bluishGreen, 2.0, Qt::DashLine, 40.0};
    case CurveRole::MarketPrice:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Market price"), PriceBased2dPlotCurve::markedType, orange,
            1.0, Qt::SolidLine, 25.0};
    case CurveRole::ProfitAtExpiry:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Profit at expiry"), 9, blue, 2.0, Qt::SolidLine, 40.0};
    case CurveRole::ProfitToday:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Profit today"), 10, bluishGreen, 2.0, Qt::DashLine, 39.0};
    case CurveRole::BreakEven:
        return {QT_TRANSLATE_NOOP("DeskTexts", "Break-even"), PriceBased2dPlotCurve::markedType, black, 1.0,
            Qt::SolidLine, 42.0};
    case CurveRole::Forward:
        break;
    }
    return {QT_TRANSLATE_NOOP("DeskTexts", "Forward"), PriceBased2dPlotCurve::quoteLineType,
        PriceBased2dPlotCurve::CurKotirCurveColor, 1.0, Qt::SolidLine, 15.0};
}

bool allMarked(const QVector<PriceBased2dPlotPoint>& points)
{
    return std::all_of(
        points.begin(), points.end(), [](const PriceBased2dPlotPoint& point) { return point.marked; });
}

// Every point has a small symbol, which the plot's markers cover where a strike has traded. Where all have,
// the legend shows what is on the plot with a square.
void usePoints(PriceBased2dPlotCurve& curve, const QColor& color, bool allMarked)
{
    curve.setStyle(QwtPlotCurve::Dots);
    curve.setSymbol(allMarked
            ? new QwtSymbol(QwtSymbol::Rect, QBrush(color), QPen(color), QSize(6, 6))
            : new QwtSymbol(QwtSymbol::Ellipse, QBrush(Qt::white), QPen(color, 1.5), QSize(6, 6)));
    curve.setLegendAttribute(QwtPlotCurve::LegendShowLine, false);
    curve.setLegendAttribute(QwtPlotCurve::LegendShowSymbol);
}

}

const QVector<CurveRole>& CurveLook::roles()
{
    static const QVector<CurveRole> all{CurveRole::Smile, CurveRole::StatedVolatility,
        CurveRole::BidVolatility, CurveRole::AskVolatility, CurveRole::BidAskBand,
        CurveRole::ImpliedVolatility, CurveRole::CallValue, CurveRole::PutValue, CurveRole::MarketPrice,
        CurveRole::ProfitAtExpiry, CurveRole::ProfitToday, CurveRole::BreakEven, CurveRole::Forward};
    return all;
}

QString CurveLook::title(CurveRole role)
{
    return DeskTexts::tr(lookOf(role).title);
}

QString CurveLook::key(const QString& title)
{
    const auto role = std::find_if(
        roles().begin(), roles().end(), [&title](CurveRole each) { return CurveLook::title(each) == title; });
    return role == roles().end() ? title : QString::fromLatin1(lookOf(*role).title);
}

bool CurveLook::isOverStrikes(const QString& title)
{
    const auto roles = {CurveRole::ProfitAtExpiry, CurveRole::ProfitToday, CurveRole::BreakEven};
    return std::none_of(
        roles.begin(), roles.end(), [&title](CurveRole role) { return CurveLook::title(role) == title; });
}

int CurveLook::dataType(CurveRole role)
{
    return lookOf(role).dataType;
}

QColor CurveLook::color(CurveRole role)
{
    return lookOf(role).color;
}

void CurveLook::apply(const CurveSamples& samples, PriceBased2dPlotCurve& curve)
{
    const Look look = lookOf(samples.role);
    const bool isLine = look.dataType == PriceBased2dPlotCurve::quoteLineType;
    curve.setDataType(look.dataType);
    curve.setPen(QPen(look.color, look.width, look.style));
    curve.setZ(look.z);
    // A vertical line between two columns of pixels would be blurred.
    curve.setRenderHint(QwtPlotItem::RenderAntialiased, !isLine);
    curve.setLegendAttribute(QwtPlotCurve::LegendShowLine);
    if (isLine)
        curve.setStyle(QwtPlotCurve::Sticks);
    else if (look.dataType == PriceBased2dPlotCurve::markedType)
        usePoints(curve, look.color, allMarked(samples.points));
    curve.setLegendIconSize(legendIconSize);
}

void CurveLook::updateMarks(const CurveSamples& samples, PriceBased2dPlotCurve& curve)
{
    const QwtSymbol* const symbol = curve.symbol();
    const bool all = allMarked(samples.points);
    if (symbol && all != (symbol->style() == QwtSymbol::Rect))
        usePoints(curve, curve.pen().color(), all);
}

bool CurveLook::hasFreeColor(const PriceBased2dPlotCurve& curve)
{
    return curve.dataType() != PriceBased2dPlotCurve::quoteLineType
        && curve.dataType() != OverlayCurve::overlayType;
}

void CurveLook::setColor(PriceBased2dPlotCurve& curve, const QColor& color)
{
    QPen pen = curve.pen();
    pen.setColor(color);
    curve.setPen(pen);
    if (curve.dataType() == PriceBased2dPlotCurve::markedType && curve.symbol())
        usePoints(curve, color, curve.symbol()->style() == QwtSymbol::Rect);
}
