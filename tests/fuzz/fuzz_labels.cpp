#include "fuzzinput.h"

#include <plot2d/ticklabels_p.h>

#include <c_api/common.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// One of a few texts, so that there are equal ones beside each other and empty ones.
const QString& textOf(double value)
{
    static const QString texts[]
        = {QString(), QStringLiteral("1"), QStringLiteral("1.5"), QStringLiteral("2")};
    return texts[static_cast<unsigned>(std::min(std::abs(value), 1e9)) % 4U];
}

bool readTheSame(const QList<double>& ticks)
{
    int equal = 0;
    for (int i = 1; i < ticks.size(); ++i) {
        if (std::abs(ticks[i] - ticks[i - 1]) < 1e-8)
            return true;
    }
    for (int i = 1; i < ticks.size(); ++i) {
        const QString& a = textOf(ticks[i - 1]);
        const QString& b = textOf(ticks[i]);
        if (a.isEmpty() || b.isEmpty())
            continue;
        if (a != b)
            return false;
        ++equal;
    }
    return equal > 0;
}

void expectCandidates(const QList<double>& ticks, const QList<double>& major, const QList<double>& medium)
{
    FUZZ_EXPECT(std::is_sorted(ticks.cbegin(), ticks.cend()));
    FUZZ_EXPECT(std::all_of(ticks.cbegin(), ticks.cend(), [](double tick) { return std::isfinite(tick); }));
    int expected = 0;
    for (const double tick : major) {
        expected += std::isfinite(tick) ? 1 : 0;
        FUZZ_EXPECT(!std::isfinite(tick) || std::binary_search(ticks.cbegin(), ticks.cend(), tick));
    }
    for (const double tick : medium) {
        const bool isOnMajor = std::any_of(
            major.cbegin(), major.cend(), [tick](double other) { return commonFuzzyCompare(other, tick); });
        expected += std::isfinite(tick) && !isOnMajor ? 1 : 0;
    }
    FUZZ_EXPECT(ticks.size() == expected);
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const auto equalDigits = input.take<std::int8_t>();
    const auto majorCount = input.take<std::uint8_t>();
    static FuzzDoubles<24> values;
    input.takeDoubles(values);
    QList<double> major;
    QList<double> medium;
    for (const double value : values)
        (major.size() < majorCount % 32 ? major : medium).append(value);

    const QList<double> ticks = TickLabels::candidates(major, medium);
    expectCandidates(ticks, major, medium);

    const auto digits = TickLabels::equalDigits(ticks);
    if (digits && ticks.size() > 1)
        FUZZ_EXPECT(*digits <= 27);
    for (const int wanted : {static_cast<int>(equalDigits), digits.value_or(-1)}) {
        const int length = TickLabels::maxFractionLength(ticks, wanted);
        FUZZ_EXPECT(length >= 0 && length <= 10);
    }
    FUZZ_EXPECT(TickLabels::readTheSame(ticks, textOf) == readTheSame(ticks));
    return 0;
}
