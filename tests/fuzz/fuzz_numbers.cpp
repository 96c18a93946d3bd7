#include "fuzzinput.h"

#include <plot2d/plot2dcommon.h>

#include <QLocale>

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace Plot2dCommon;
    FuzzInput input(data, size);
    const int decimals = input.take<std::int8_t>();
    const double a = input.takeDouble();
    const double b = input.takeDouble();

    const QString text = formattedValue(a, decimals);
    FUZZ_EXPECT(text.isEmpty() == (decimals < 0));
    FUZZ_EXPECT(!text.endsWith('.'));
    if (text.contains('.'))
        FUZZ_EXPECT(!text.endsWith('0') && text.section('.', 1).size() <= 10);
    fromDoubleToSystemStringShort(a, decimals);

    if (!std::isinf(a)) {
        const int length = integerLength(a);
        FUZZ_EXPECT(length >= 1 && length <= 310 && length == integerLength(-a));
    }
    const double rounded = roundValue(a, decimals);
    FUZZ_EXPECT(std::isnan(a) == std::isnan(rounded));
    FUZZ_EXPECT(std::isfinite(a) == std::isfinite(rounded));
    FUZZ_EXPECT(scaleDrawFuzzyCompare(a, b) == scaleDrawFuzzyCompare(b, a));
    return 0;
}
