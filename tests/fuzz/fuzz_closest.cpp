#include "fuzzinput.h"

#include <plot2d/closestpoint_p.h>

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    ClosestPointCalcParams params;
    params.xMin = input.takeDouble();
    params.xMax = input.takeDouble();
    params.yMin = input.takeDouble();
    params.yMax = input.takeDouble();
    params.cursorX = input.takeDouble();
    params.cursorY = input.takeDouble();
    const std::vector<double> values = input.takeDoubles(200);
    const int count = static_cast<int>(values.size() / 2);
    const auto sample = [&values](int i) {
        const auto at = static_cast<std::size_t>(i) * 2;
        return QPointF(values[at], values[at + 1]);
    };

    ClosestPoint::isUsableStep(params.cursorX);
    if (!ClosestPoint::isUsableView(params))
        return 0;
    const ClosestPointParams found = ClosestPoint::find(count, sample, params);
    FUZZ_EXPECT(found.index >= -1 && found.index < count && found.curve == nullptr);
    FUZZ_EXPECT((found.index == -1) == (found.distance < 0.0));
    if (found.index >= 0) {
        const QPointF point = sample(found.index);
        FUZZ_EXPECT(params.xMin <= point.x() && point.x() <= params.xMax);
        FUZZ_EXPECT(params.yMin <= point.y() && point.y() <= params.yMax);
    }
    return 0;
}
