#include "fuzzinput.h"

#include <plot2d/legendstate_p.h>

#include <QSet>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr int header = 12;
    constexpr int recordSize = 6;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const auto records = LegendState::read(bytes);
    FUZZ_EXPECT(records.isEmpty() || records.size() <= (bytes.size() - header) / recordSize);
    QSet<int> types;
    for (const auto& record : records) {
        FUZZ_EXPECT(record.isValid && !types.contains(record.dataType));
        types.insert(record.dataType);
    }
    return 0;
}
