#include "fuzzinput.h"

#include <plot2d/plot2dcommon.h>

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace {

/// Whether a text read back is a value to a number of decimals: half a unit of the last one, and what the two
/// doubles next to each other differ by.
bool isRounded(double read, double value, int decimals)
{
    const double unit = std::pow(10.0, -std::clamp(decimals, 0, 10));
    const double spacing
        = std::nextafter(std::abs(value), std::numeric_limits<double>::infinity()) - std::abs(value);
    return std::abs(read - value) <= unit * 0.5 * (1.0 + 1e-9) + spacing;
}

void expectReadsBack(const QLocale& locale, const QString& text, double value, int decimals)
{
    bool ok = false;
    const double read = locale.toDouble(text, &ok);
    FUZZ_EXPECT(ok);
    if (std::isfinite(value))
        FUZZ_EXPECT(isRounded(read, value, decimals));
    else
        FUZZ_EXPECT(std::isnan(value) ? std::isnan(read) : read == value);
}

}

/// Texts of numbers read back as what they were made of.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace Plot2dCommon;
    FuzzInput input(data, size);
    const int decimals = input.take<std::int8_t>();
    const double value = input.takeDouble();

    const QString text = formattedValue(value, decimals);
    FUZZ_EXPECT(text.isEmpty() == (decimals < 0));
    if (!text.isEmpty()) {
        static const QLocale notation = QLocale::c();
        expectReadsBack(notation, text, value, decimals);
        const int point = text.indexOf(QLatin1Char('.'));
        if (point >= 0)
            FUZZ_EXPECT(
                !text.endsWith(QLatin1Char('0')) && text.size() - point - 1 <= std::min(decimals, 10));
        FUZZ_EXPECT(!text.endsWith(QLatin1Char('.')));
    }

    static const QLocale system = QLocale::system();
    const QString forUser = fromDoubleToSystemStringShort(value, decimals);
    expectReadsBack(system, forUser, value, decimals);
    FUZZ_EXPECT(!forUser.endsWith(system.decimalPoint()));
    return 0;
}
