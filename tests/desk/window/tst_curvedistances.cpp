#include "support/testmain.h"

#include <window/curvelook.h>

#include <plot2d/pricebased2dplotcurve.h>

#include <QPen>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using Color = std::array<double, 3>;
using Matrix = std::array<Color, 3>;

constexpr Matrix usualSight{{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};
// Of linear sRGB. G. M. Machado, M. M. Oliveira, L. A. F. Fernandes, "A physiologically-based model for
// simulation of color vision deficiency", 2009, at their full strength.
constexpr Matrix deuteranopia{
    {{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}};
constexpr Matrix protanopia{
    {{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}};
// IEC 61966-2-1, with white as 1.
constexpr Matrix toXyzOfWhite{{{0.4124 / 0.9505, 0.3576 / 0.9505, 0.1805 / 0.9505}, {0.2126, 0.7152, 0.0722},
    {0.0193 / 1.0890, 0.1192 / 1.0890, 0.9505 / 1.0890}}};

double linear(double value)
{
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

Color product(const Matrix& matrix, const Color& color)
{
    Color result{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j)
            result[i] += matrix[i][j] * color[j];
        result[i] = std::clamp(result[i], 0.0, 1.0);
    }
    return result;
}

// CIE 1976 (L*, a*, b*).
Color lab(const QColor& color, const Matrix& sight)
{
    const Color seen = product(sight, {linear(color.redF()), linear(color.greenF()), linear(color.blueF())});
    Color roots = product(toXyzOfWhite, seen);
    for (double& each : roots)
        each = each > 216.0 / 24389.0 ? std::cbrt(each) : (24389.0 / 27.0 * each + 16.0) / 116.0;
    return {116.0 * roots[1] - 16.0, 500.0 * (roots[0] - roots[1]), 200.0 * (roots[1] - roots[2])};
}

double distance(const QColor& one, const QColor& other, const Matrix& sight)
{
    const Color a = lab(one, sight);
    const Color b = lab(other, sight);
    return std::sqrt(std::pow(a[0] - b[0], 2.0) + std::pow(a[1] - b[1], 2.0) + std::pow(a[2] - b[2], 2.0));
}

QColor colorOf(CurveRole role)
{
    CurveSamples samples;
    samples.role = role;
    PriceBased2dPlotCurve curve(nullptr, CurveLook::title(role));
    CurveLook::apply(samples, curve);
    return curve.pen().color();
}

}

Q_DECLARE_METATYPE(CurveRole)
Q_DECLARE_METATYPE(Matrix)

/// That people with the common colour deficiencies tell the curves apart.
class tst_curvedistances : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reckonsRight();
    void areLarge_data();
    void areLarge();
};

void tst_curvedistances::reckonsRight()
{
    QVERIFY(std::abs(distance(Qt::black, Qt::white, usualSight) - 100.0) < 0.1);
    QVERIFY(distance(QColor(213, 94, 0), QColor(255, 0, 0), deuteranopia) < 5.0);
    QVERIFY(distance(QColor(0, 128, 0), QColor(190, 90, 0), usualSight) > 80.0);
    QVERIFY(distance(QColor(0, 128, 0), QColor(190, 90, 0), deuteranopia) < 30.0);
}

void tst_curvedistances::areLarge_data()
{
    using Roles = QVector<CurveRole>;
    QTest::addColumn<Roles>("roles");
    QTest::addColumn<Matrix>("sight");
    const std::pair<const char*, Matrix> sights[]
        = {{"usual", usualSight}, {"deuteranopia", deuteranopia}, {"protanopia", protanopia}};
    const std::pair<const char*, Roles> views[] = {
        {"volatility",
            {CurveRole::Smile, CurveRole::StatedVolatility, CurveRole::BidVolatility,
                CurveRole::AskVolatility, CurveRole::BidAskBand, CurveRole::ImpliedVolatility,
                CurveRole::Forward}},
        {"value", {CurveRole::CallValue, CurveRole::PutValue, CurveRole::MarketPrice, CurveRole::Forward}},
        {"position",
            {CurveRole::ProfitAtExpiry, CurveRole::ProfitToday, CurveRole::BreakEven, CurveRole::Forward}}};
    for (const auto& [sightName, sight] : sights) {
        for (const auto& [viewName, roles] : views)
            QTest::addRow("%s, %s", viewName, sightName) << roles << sight;
    }
}

void tst_curvedistances::areLarge()
{
    QFETCH(QVector<CurveRole>, roles);
    QFETCH(Matrix, sight);
    // About 2.3 is just noticeable side by side.
    constexpr double wanted = 15.0;
    for (int i = 0; i < roles.size(); ++i) {
        QVERIFY2(distance(colorOf(roles[i]), Qt::white, sight) > 2.0 * wanted,
            qPrintable(CurveLook::title(roles[i])));
        for (int j = i + 1; j < roles.size(); ++j) {
            const double found = distance(colorOf(roles[i]), colorOf(roles[j]), sight);
            QVERIFY2(found > wanted,
                qPrintable(QStringLiteral("%1 and %2: %3")
                               .arg(CurveLook::title(roles[i]), CurveLook::title(roles[j]))
                               .arg(found)));
        }
    }
}

PLOT2D_TEST_MAIN(tst_curvedistances)
#include "tst_curvedistances.moc"
