#include "fuzzinput.h"

#include <plot2d/legendstate_p.h>

#include <QSet>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QSet<int> types{-1, 0, 9, 10, 11, 12, 13};
    constexpr int header = 12;
    constexpr int recordSize = 6;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const auto records = LegendState::read(bytes, types);
    FUZZ_EXPECT(records.isEmpty() || records.size() <= (bytes.size() - header) / recordSize);
    QSet<int> left = types;
    for (const auto& record : records)
        FUZZ_EXPECT(record.isValid && left.remove(record.dataType));
    return 0;
}
