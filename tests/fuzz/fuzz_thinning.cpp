#include "fuzzinput.h"

#include <plot2d/labelthinning_p.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Labels of one width that stand where their values are.
struct Row {
    double pixelsPerUnit = 1.0;
    int width = 1;

    QRect operator()(double value) const
    {
        const double left = std::clamp(value * pixelsPerUnit, -1e8, 1e8);
        return QRect(static_cast<int>(left), 0, width, 10);
    }
};

QList<LabelThinning::Overlap> overlaps(
    const QList<double>& ticks, const LabelThinning::QuoteLabel& quote, const Row& row)
{
    QList<QRect> rectangles;
    std::transform(ticks.cbegin(), ticks.cend(), std::back_inserter(rectangles), row);
    return LabelThinning::overlaps(ticks, rectangles, quote, quote.index < 0 ? QRect() : row(quote.value));
}

/// The labels of one width, chosen the plain way: two of them overlap that are closer than they are wide.
class PlainLabels {
public:
    PlainLabels(const QList<double>& ticks, const LabelThinning::QuoteLabel& quote, const Row& row)
        : m_quote(quote)
        , m_row(row)
        , m_slot(quote.index)
    {
        for (const double tick : ticks)
            m_ticks.values[m_ticks.count++] = tick;
    }

    /// How many neighbours overlap, the quote among them; the last pair of them is kept.
    int overlaps()
    {
        int found = 0;
        const double* last = nullptr;
        const auto meet = [&](const double& value) {
            if (last != nullptr && std::abs(m_row(value).left() - m_row(*last).left()) < m_row.width) {
                m_pair = {*last, value};
                ++found;
            }
            last = &value;
        };
        for (int i = 0; i <= int(m_ticks.count) && m_ticks.count > 0; ++i) {
            if (i == m_slot)
                meet(m_quote.value);
            if (i < int(m_ticks.count))
                meet(m_ticks.values[std::size_t(i)]);
        }
        return found;
    }

    void thin()
    {
        const std::size_t rounds = m_ticks.count;
        const bool hasSlot = m_slot >= 0;
        if (isSettled())
            return;
        for (std::size_t round = 1; round < rounds; ++round) {
            const std::size_t before = m_ticks.count;
            const int slotBefore = m_slot;
            halve(hasSlot ? m_slot % 2 : 0);
            if (m_ticks.count == before && m_slot == slotBefore)
                break;
            if (isSettled())
                return;
        }
        m_ticks.count = 0;
    }

    const double* begin() const { return m_ticks.begin(); }
    const double* end() const { return m_ticks.end(); }

private:
    /// Whether nothing overlaps, or a single tick that the drawn quote takes the place of.
    bool isSettled()
    {
        const int found = overlaps();
        if (found != 1)
            return found == 0;
        if (!m_quote.drawn || (m_pair.first != m_quote.value && m_pair.second != m_quote.value))
            return false;
        keep([&, gone = m_pair.first == m_quote.value ? m_pair.second : m_pair.first](
                 int, double tick) { return tick != gone; });
        return true;
    }

    /// Next to the slot they are the first to go.
    void halve(int parity)
    {
        keep([&](int i, double tick) { return i % 2 == (tick < m_quote.value ? parity : 1 - parity); });
        m_slot = m_quote.value > 0.0 ? int(std::lower_bound(begin(), end(), m_quote.value) - begin()) : -1;
    }

    template <typename Stays> void keep(const Stays& stays)
    {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < m_ticks.count; ++i) {
            if (stays(int(i), m_ticks.values[i]))
                m_ticks.values[kept++] = m_ticks.values[i];
        }
        m_ticks.count = kept;
    }

    FuzzDoubles<100> m_ticks;
    std::pair<double, double> m_pair;
    const LabelThinning::QuoteLabel m_quote;
    const Row m_row;
    int m_slot;
};

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    LabelThinning::QuoteLabel quote;
    quote.value = input.takeDouble();
    const auto flags = input.take<std::uint8_t>();
    quote.drawn = flags & 1;
    Row row;
    row.pixelsPerUnit = 1.0 + input.take<std::uint8_t>();
    row.width = 1 + input.take<std::uint8_t>();
    if (!std::isfinite(quote.value))
        quote.value = -1.0;

    // Ticks as an axis has them: ascending and within reach of integer pixels. Few inputs have many of them.
    static FuzzDoubles<100> values;
    input.takeDoubles(values, (flags & 4) != 0 ? values.values.size() : 20);
    double* const first = values.values.data();
    double* last
        = std::remove_if(first, first + values.count, [](double value) { return !(std::abs(value) < 1e6); });
    std::sort(first, last);
    last = std::unique(first, last);
    const QList<double> ticks(first, last);
    quote.index = flags & 2 ? -1 : LabelThinning::quoteIndex(ticks, quote.value);

    long measured = 0;
    const auto measure = [&](double value) {
        ++measured;
        return row(value);
    };
    const LabelThinning::Result result = LabelThinning::thinned(ticks, quote, measure);
    FUZZ_EXPECT(std::is_sorted(result.ticks.cbegin(), result.ticks.cend()));
    FUZZ_EXPECT(std::includes(ticks.cbegin(), ticks.cend(), result.ticks.cbegin(), result.ticks.cend()));
    FUZZ_EXPECT(measured <= 4L * ticks.size() + 64);

    LabelThinning::QuoteLabel left = quote;
    left.index = result.quoteIndex < 0 ? -1 : LabelThinning::quoteIndex(result.ticks, quote.value);
    FUZZ_EXPECT(overlaps(result.ticks, left, row).isEmpty());
    FUZZ_EXPECT(result.ticks.size() == ticks.size() || !overlaps(ticks, quote, row).isEmpty());

    PlainLabels plain(ticks, quote, row);
    FUZZ_EXPECT(overlaps(ticks, quote, row).size() == plain.overlaps());
    plain.thin();
    FUZZ_EXPECT(std::equal(result.ticks.cbegin(), result.ticks.cend(), plain.begin(), plain.end()));
    return 0;
}
