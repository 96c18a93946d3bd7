#include "differential/agree.h"
#include "differential/plainpan.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/panlimits_p.h>
#include <plot2d/pricebased2dplotpanner.h>

#include <qwt_scale_map.h>

#include <cmath>

using Differential::Findings;
using Differential::Random;
using Differential::told;

namespace {

QwtScaleMap mapOf(double p1, double p2, double s1, double s2)
{
    QwtScaleMap map;
    map.setScaleInterval(s1, s2);
    map.setPaintInterval(p1, p2);
    return map;
}

Plain::ScreenAxis plainAxis(const QwtScaleMap& map, double lower, double upper, bool enabled)
{
    return {[map](double value) { return map.transform(value); },
        [map](double pixel) { return map.invTransform(pixel); }, lower, upper, enabled};
}

PanLimits::Axis libraryAxis(const QwtScaleMap& map, double lower, double upper, bool enabled)
{
    PanLimits::Axis axis;
    axis.map = map;
    axis.lower = lower;
    axis.upper = upper;
    axis.enabled = enabled;
    return axis;
}

/// The library's functions put together as the panner does.
std::optional<std::pair<int, int>> libraryAllows(
    const PanLimits::Axis& x, const PanLimits::Axis& y, const QRectF& curves, int dx, int dy)
{
    const auto view = PanLimits::draggedView(x, y, dx, dy);
    const auto limits = view ? PanLimits::limits(curves, *view) : std::nullopt;
    if (!limits || !PanLimits::overlapInPrice(*view, *limits))
        return std::nullopt;
    if (PanLimits::isInside(*view, *limits))
        return std::make_pair(dx, dy);
    const double shiftX = PanLimits::limitedShiftX(x, *view, *limits, dx);
    const double shiftY = PanLimits::limitedShiftY(y, *view, *limits, dy);
    if (std::abs(shiftX) < 1e-12 && std::abs(shiftY) < 1e-12)
        return std::nullopt;
    return std::make_pair(static_cast<int>(std::lround(shiftX)), static_cast<int>(std::lround(shiftY)));
}

/// Data about a view of which a side may lie a hair off the view's own.
QRectF randomData(Random& random, const QRectF& view)
{
    const auto side = [&](double at, double span) {
        const double place = at + span * random.oneOf({0.0, 0.05, -0.05, 0.3, -0.3, 1.2, -1.2, -4.0, 4.0});
        return random.oneIn(3) ? random.about(place) : place;
    };
    const double left = side(view.left(), view.width());
    const double right = side(view.right(), view.width());
    const double bottom = side(view.top(), view.height());
    const double top = random.oneIn(8) ? bottom : side(view.bottom(), view.height());
    return QRectF(left, bottom, right - left, top - bottom);
}

int randomOffset(Random& random)
{
    return random.oneIn(6) ? random.whole(-1, 1) : random.whole(-500, 500);
}

/// A plot of one curve whose canvas is dragged, and the signals of its panner.
class DraggedPlot {
public:
    DraggedPlot()
        : m_panner(plot.findChild<PriceBased2dPlotPanner*>())
        , m_curve(addCurve(plot, 9, {{1.0, 1.0}}, QStringLiteral("data")))
    {
        plot.resize(600, 400);
        QObject::connect(m_panner, QOverload<bool>::of(&PriceBased2dPlotPanner::autoScaleEnabled), m_panner,
            [this](bool on) { seen << QStringLiteral("auto-scale %1").arg(on); });
        QObject::connect(m_panner, &PriceBased2dPlotPanner::updateLabels, m_panner,
            [this] { seen << QStringLiteral("labels"); });
    }

    PriceBased2dPlotPanner& panner() { return *m_panner; }

    void show(const QRectF& view, const QRectF& curves, bool hasX, bool hasAutoScale)
    {
        plot.enableAxis(QwtPlot::xBottom, hasX);
        m_curve->setSamples(
            {curves.topLeft(), QPointF(curves.left() + curves.width(), curves.top() + curves.height())});
        plot.setAutoScaleEnabled(hasAutoScale);
        plot.QwtPlot::setAxisScale(QwtPlot::xBottom, view.left(), view.right());
        plot.QwtPlot::setAxisScale(QwtPlot::yLeft, view.top(), view.bottom());
        plot.replot();
        seen.clear();
    }

    void compare(Findings& findings, const QRectF& expected) const
    {
        const QwtInterval prices = plot.axisInterval(QwtPlot::xBottom);
        const QwtInterval values = plot.axisInterval(QwtPlot::yLeft);
        findings.compareNear("lowest price", expected.left(), prices.minValue(), prices.width());
        findings.compareNear("highest price", expected.right(), prices.maxValue(), prices.width());
        findings.compareNear("lowest value", expected.top(), values.minValue(), values.width());
        findings.compareNear("highest value", expected.bottom(), values.maxValue(), values.width());
    }

    TestPlot plot;
    QStringList seen;

private:
    PriceBased2dPlotPanner* m_panner;
    PriceBased2dPlotCurve* m_curve;
};

}

class tst_differential_pan : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void shifts();
    void drags();
    void dragsOfAPlot();
};

void tst_differential_pan::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_differential_pan::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_differential_pan::shifts()
{
    AGREE("shifts", 501, 1, ([](Random& random, Findings& findings) {
        const double lower = random.oneIn(10) ? random.nasty() : random.price();
        const double upper = random.oneIn(20) ? lower : lower + std::abs(random.price());
        const bool isVertical = random.oneIn(2);
        const QwtScaleMap map
            = isVertical ? mapOf(400.0, 0.0, lower, upper) : mapOf(0.0, 600.0, lower, upper);
        const double value = random.about(random.between(lower - 0.5 * (upper - lower), upper * 1.2));
        const double most = random.oneIn(5) ? random.nasty() : randomOffset(random);
        const int side = random.oneIn(2) ? PanLimits::Upper : PanLimits::Lower;
        const bool enabled = !random.oneIn(20);
        if (!std::isfinite(value) || !(lower < upper))
            return;
        const double plain
            = Plain::shiftTo(plainAxis(map, lower, upper, enabled), value, side == PanLimits::Upper, most);
        findings.compare("shift", plain,
            PanLimits::shiftUntil(libraryAxis(map, lower, upper, enabled), value, side, most));
        findings.given([&] {
            return QStringLiteral("%1 to %2, value %3, side %4, at most %5, vertical %6")
                .arg(told(lower), told(upper), told(value))
                .arg(side)
                .arg(told(most), told(isVertical));
        });
    }));
}

void tst_differential_pan::drags()
{
    AGREE("drags", 502, 1, ([](Random& random, Findings& findings) {
        const QRectF view(random.price(), random.price(), std::abs(random.price()), std::abs(random.price()));
        const QwtScaleMap xMap = mapOf(0.0, 600.0, view.left(), view.right());
        const QwtScaleMap yMap = mapOf(400.0, 0.0, view.top(), view.bottom());
        const bool hasX = !random.oneIn(30);
        const bool hasY = !random.oneIn(30);
        const QRectF curves = randomData(random, view);
        const int dx = randomOffset(random);
        const int dy = randomOffset(random);
        const Plain::Pan plain{plainAxis(xMap, view.left(), view.right(), hasX),
            plainAxis(yMap, view.top(), view.bottom(), hasY), curves};
        findings.compare("move", plain.allowed(dx, dy),
            libraryAllows(libraryAxis(xMap, view.left(), view.right(), hasX),
                libraryAxis(yMap, view.top(), view.bottom(), hasY), curves, dx, dy));
        findings.given([&] {
            return QStringLiteral("view %1, curves %2, by %3 and %4")
                .arg(told(view), told(curves))
                .arg(dx)
                .arg(dy);
        });
    }));
}

/// The panner of a real plot: a case is one view with one curve, and one drag of it.
void tst_differential_pan::dragsOfAPlot()
{
    DraggedPlot dragged;
    AGREE("drags of a plot", 503, 30, ([&](Random& random, Findings& findings) {
        const QRectF view(random.price(), random.price(), std::abs(random.price()), std::abs(random.price()));
        const QRectF curves = randomData(random, view);
        const int dx = randomOffset(random);
        const int dy = randomOffset(random);
        const bool hasAutoScale = random.oneIn(2);
        const bool hasX = !random.oneIn(20);
        dragged.show(view, curves, hasX, hasAutoScale);

        const TestPlot& plot = dragged.plot;
        const Plain::Pan plain{plainAxis(plot.canvasMap(QwtPlot::xBottom), view.left(), view.right(), hasX),
            plainAxis(plot.canvasMap(QwtPlot::yLeft), view.top(), view.bottom(), true),
            plot.curvesRectangle()};
        const auto move = plain.allowed(dx, dy);
        QStringList expected;
        if (move && hasAutoScale)
            expected << QStringLiteral("auto-scale 0");
        if (move)
            expected << QStringLiteral("labels");
        const QRectF viewExpected = move ? plain.viewAfter(move->first, move->second) : view;
        dragged.panner().moveCanvas(dx, dy);
        dragged.compare(findings, viewExpected);
        findings.compare("signals", expected, dragged.seen);
        findings.given([&] {
            return QStringLiteral("view %1, curves %2, by %3 and %4")
                .arg(told(view), told(curves))
                .arg(dx)
                .arg(dy);
        });
    }));
}

PLOT2D_TEST_MAIN(tst_differential_pan)
#include "tst_differential_pan.moc"
