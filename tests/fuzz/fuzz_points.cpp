#include "fuzzinput.h"

#include <plot2d/pricepoints_p.h>
#include <plot2d/valuerange_p.h>

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const double from = input.takeDouble();
    const double to = input.takeDouble();
    const double step = input.takeDouble();
    const double lo = input.takeDouble();
    const double hi = input.takeDouble();

    const QList<double> points = PricePoints::progression(from, to, step);
    FUZZ_EXPECT(points.size() <= 200002);
    if (!points.isEmpty())
        FUZZ_EXPECT(points.first() == from && points.last() <= to * (1.0 + 1e-11));
    for (int i = 1; i < points.size(); ++i)
        FUZZ_EXPECT(points[i] == points[i - 1] + step && points[i] > points[i - 1]);
    if (points.size() < 2000)
        FUZZ_EXPECT(PricePoints::densified(points, lo, hi, step).size() <= points.size() * 102);

    QVector<decimal> strikes;
    for (const double strike : input.takeDoubles(100))
        strikes.append(decimal::fromDouble(strike, 5));
    if (const auto bracket = PricePoints::bracket(strikes, {lo, hi}))
        FUZZ_EXPECT(bracket->first < bracket->second);

    const double snapped = ValueRange::snapped(from, step);
    FUZZ_EXPECT(!std::isfinite(from) || std::isfinite(snapped));
    return 0;
}
