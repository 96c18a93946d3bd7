#include "fuzzinput.h"

#include <plot2d/closestpoint_p.h>
#include <plot2d/sampleindex_p.h>

#include <qwt_series_data.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int usualSamples = 48;
constexpr int mostSamples = 2500;

/// Points of any kind, or, so that blocks of them matter, a long row of ascending ones.
void takeSamples(FuzzInput& input, QVector<QPointF>& samples)
{
    samples.clear();
    if (input.takeFlag()) {
        while (!input.isEmpty() && samples.size() < usualSamples) {
            const double x = input.takeDouble();
            samples.append(QPointF(x, input.takeDouble()));
        }
        return;
    }
    // Blocks of blocks have more than a thousand samples; few inputs have such.
    const bool isLarge = input.takeBelow(64) == 63;
    const int most = isLarge ? mostSamples : usualSamples;
    double x = input.takePrice();
    while (!input.isEmpty() && samples.size() < most) {
        x += input.take<std::uint8_t>() / 16.0;
        const double y = input.take<std::int8_t>();
        for (int repeats = input.takeBelow(isLarge ? 250 : 8); repeats >= 0 && samples.size() < most;
             --repeats)
            samples.append(QPointF(x += 0.25, y + repeats));
    }
}

ClosestPointCalcParams takeView(FuzzInput& input)
{
    const bool near = input.takeFlag();
    const auto take = [&] { return near ? input.takePrice() : input.takeDouble(); };
    ClosestPointCalcParams params;
    params.xMin = take();
    params.xMax = take();
    params.yMin = take();
    params.yMax = take();
    params.cursorX = take();
    params.cursorY = take();
    return params;
}

void expectVisible(
    const ClosestPointParams& found, const QVector<QPointF>& samples, const ClosestPointCalcParams& params)
{
    FUZZ_EXPECT(found.index >= -1 && found.index < samples.size() && found.curve == nullptr);
    FUZZ_EXPECT((found.index == -1) == (found.distance < 0.0));
    if (found.index < 0)
        return;
    const QPointF point = samples[found.index];
    FUZZ_EXPECT(params.xMin <= point.x() && point.x() <= params.xMax);
    FUZZ_EXPECT(params.yMin <= point.y() && point.y() <= params.yMax);
}

/// A sample's distance, in percent of a view that has a width.
double distanceOf(const QPointF& point, const ClosestPointCalcParams& params)
{
    const double width = params.xMax - params.xMin;
    const double height = params.yMax - params.yMin;
    const double x = std::abs(params.cursorX - (point.x() - params.xMin)) / width * 100.0;
    return x
        + (height > 0.0 ? std::abs(params.cursorY - (point.y() - params.yMin)) / height * 100.0
                        : std::abs(params.cursorY));
}

/// Whether percentages of a view are as exact as doubles are.
bool isModest(const ClosestPointCalcParams& params)
{
    constexpr double least = 1e-250;
    constexpr double most = 1e250;
    const auto isNumber = [](double value) { return std::abs(value) < most; };
    const double height = params.yMax - params.yMin;
    return isNumber(params.xMin) && isNumber(params.xMax) && isNumber(params.yMin) && isNumber(params.yMax)
        && isNumber(params.cursorX) && isNumber(params.cursorY) && params.xMax - params.xMin > least
        && (height == 0.0 || height > least);
}

/// No visible sample is nearer, and none that is the same comes first.
void expectNearest(
    const ClosestPointParams& found, const QVector<QPointF>& samples, const ClosestPointCalcParams& params)
{
    if (!isModest(params))
        return;
    const double farthest = distanceOf(QPointF(params.xMin, params.yMin), params) + 200.0;
    if (!(farthest < 1e300))
        return;
    const double tolerance = 1e-12 * farthest;
    if (found.index >= 0)
        FUZZ_EXPECT(std::abs(found.distance - distanceOf(samples[found.index], params)) <= tolerance);
    for (int i = 0; i < samples.size(); ++i) {
        const QPointF& point = samples[i];
        if (!(params.xMin <= point.x() && point.x() <= params.xMax && params.yMin <= point.y()
                && point.y() <= params.yMax))
            continue;
        FUZZ_EXPECT(found.index >= 0 && found.distance <= distanceOf(point, params) + tolerance);
        FUZZ_EXPECT(i >= found.index || point.x() != samples[found.index].x()
            || point.y() != samples[found.index].y());
    }
}

/// A step that moves a price of 1 is of use, and so is a view whose bounds ascend.
void expectUsable(const ClosestPointCalcParams& params)
{
    const double step = params.cursorX;
    FUZZ_EXPECT(!ClosestPoint::isUsableStep(step) || step > 0.0);
    FUZZ_EXPECT(ClosestPoint::isUsableStep(step) || !(step > 1e-11));
    const bool isUsable = ClosestPoint::isUsableView(params);
    FUZZ_EXPECT(isUsable || !(params.xMin < params.xMax && params.yMin <= params.yMax));
    FUZZ_EXPECT(!isUsable || !(params.xMin >= params.xMax || params.yMin > params.yMax));
}

}

/// A search through all samples finds the nearest, and so does a search by an index.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const ClosestPointCalcParams params = takeView(input);
    expectUsable(params);
    if (!ClosestPoint::isUsableView(params))
        return 0;

    static QVector<QPointF> samples;
    samples.reserve(mostSamples);
    takeSamples(input, samples);
    const auto sample = [](int i) { return samples[i]; };
    const ClosestPointParams found = ClosestPoint::find(samples.size(), sample, params);
    expectVisible(found, samples, params);
    expectNearest(found, samples, params);

    const QwtPointSeriesData series(samples);
    const auto index = SampleIndex::of(&series);
    FUZZ_EXPECT(index && index->describes(&series) && index->size() == samples.size());
    const ClosestPointParams byIndex = ClosestPoint::find(*index, params);
    FUZZ_EXPECT(byIndex.index == found.index && byIndex.distance == found.distance);
    return 0;
}
