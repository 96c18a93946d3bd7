#include "differential/agree.h"
#include "differential/plainnumbers.h"
#include "differential/plainzoom.h"
#include "support/testmain.h"

#include <plot2d/viewzoom_p.h>

#include <cmath>

using Differential::Findings;
using Differential::Random;
using Differential::told;
using Plain::Bounds;
using Plain::Wheel;

namespace {

ViewZoom::Range rangeOf(const Bounds& bounds)
{
    return {bounds.first, bounds.second};
}

/// Bounds with data that covers them, is covered, or reaches beyond one end, to a hair now and then.
std::pair<Bounds, Bounds> randomBounds(Random& random)
{
    const double low = random.oneIn(10) ? random.nasty() : random.price();
    const double width = random.oneIn(10) ? std::abs(random.nasty()) : std::abs(random.price());
    const Bounds view(low, low + width);
    double dataLow = low + width * random.oneOf({0.0, -0.5, -2.0, 0.3, 1.5});
    double dataHigh = view.second + width * random.oneOf({0.0, 0.5, 2.0, -0.3, -0.8});
    if (random.oneIn(3)) {
        dataLow = random.about(dataLow);
        dataHigh = random.about(dataHigh);
    }
    if (dataHigh < dataLow)
        std::swap(dataLow, dataHigh);
    return {view, {dataLow, random.oneIn(8) ? dataLow : dataHigh}};
}

double randomCentre(Random& random, const Bounds& view)
{
    switch (random.whole(0, 5)) {
    case 0:
        return random.about(view.first);
    case 1:
        return random.about(view.second);
    case 2:
        return random.nasty();
    default:
        return random.between(view.first, view.second);
    }
}

/// Whether bounds are far enough from the largest double for products of them to be finite.
bool isModest(const Bounds& bounds)
{
    return std::abs(bounds.first) < 1e150 && std::abs(bounds.second) < 1e150;
}

Wheel randomWheel(Random& random)
{
    Wheel wheel;
    wheel.place.canvas = true;
    const auto [prices, priceData] = randomBounds(random);
    const auto [values, valueData] = randomBounds(random);
    wheel.prices = prices;
    wheel.values = values;
    wheel.curves = QRectF(priceData.first, valueData.first, priceData.second - priceData.first,
        valueData.second - valueData.first);
    wheel.cursor = QPointF(randomCentre(random, prices), randomCentre(random, values));
    wheel.angle = random.oneOf({120, -120, 240, -240, 119, -119, 121, 600, -600, 15, 0, -128});
    wheel.minStep = random.oneIn(4) ? random.about((prices.second - prices.first) * 0.9) : 0.01;
    return wheel;
}

QString inWords(const Wheel& wheel)
{
    return QStringLiteral("prices %1, values %2, curves %3, cursor %4, angle %5, step %6")
        .arg(told(wheel.prices), told(wheel.values), told(wheel.curves), told(wheel.cursor))
        .arg(wheel.angle)
        .arg(told(wheel.minStep));
}

/// The library's functions put together as the plot does for the canvas without a modifier.
std::optional<std::pair<double, double>> firstBounds(const Wheel& wheel, double factor)
{
    ViewZoom::Start start;
    start.prices = rangeOf(wheel.prices);
    start.values = rangeOf(wheel.values);
    start.curves = wheel.curves;
    start.centre = wheel.cursor;
    start.factor = factor;
    const ViewZoom::Spans spans = ViewZoom::zoomedSpans(start);
    if (start.zoomsIn() && ViewZoom::isTooSmall(spans, wheel.minStep))
        return std::nullopt;
    const auto lowest = ViewZoom::zoomedLowestPrice(start, spans);
    const auto highest = ViewZoom::zoomedHighestValue(start, spans);
    if (!lowest || !highest)
        return std::nullopt;
    return std::make_pair(*lowest, *highest);
}

}

class tst_differential_zoom : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void factors();
    void zooms();
    void drags();
};

void tst_differential_zoom::factors()
{
    AGREE("factors of the wheel", 401, 1, ([](Random& random, Findings& findings) {
        const int angle = random.oneIn(3) ? static_cast<int>(random.bits()) : random.whole(-500, 500);
        findings.compare("factor", Plain::wheelFactor(angle), ViewZoom::factor(ViewZoom::notches(angle)));
        findings.given([&] { return told(angle); });
    }));
}

void tst_differential_zoom::zooms()
{
    AGREE("zooms", 402, 1, ([](Random& random, Findings& findings) {
        const Wheel wheel = randomWheel(random);
        const auto factor = Plain::wheelFactor(wheel.angle);
        // The plot asks for none of these.
        if (!factor || !isModest(wheel.prices) || !isModest(wheel.values) || wheel.curves.width() <= 0.0
            || wheel.curves.height() < 0.0 || wheel.prices.first == wheel.prices.second)
            return;
        const auto plain = Plain::zoomed(wheel);
        const auto library = firstBounds(wheel, *factor);
        findings.compare("done", plain.has_value(), library.has_value());
        if (plain && library) {
            findings.compare("lowest price", plain->prices->first, library->first);
            findings.compare("highest value", plain->values->second, library->second);
        }
        findings.given([&] { return inWords(wheel); });
    }));
}

void tst_differential_zoom::drags()
{
    AGREE("drags on an axis", 403, 1, ([](Random& random, Findings& findings) {
        const auto [view, data] = randomBounds(random);
        const bool shrinks = random.oneIn(2);
        if (!isModest(view))
            return;
        const auto plain = Plain::draggedAxis(view, data, shrinks);
        const auto library = ViewZoom::dragged(rangeOf(view), rangeOf(data), shrinks);
        findings.compare("done", plain.has_value(), library.has_value());
        if (plain && library)
            findings.compare("bounds", *plain, Bounds(library->lower, library->upper));
        findings.given([seen = view, all = data, shrinks] {
            return told(seen) + QStringLiteral(" data ") + told(all) + QStringLiteral(" shrinks ")
                + told(shrinks);
        });
    }));
}

PLOT2D_TEST_MAIN(tst_differential_zoom)
#include "tst_differential_zoom.moc"
