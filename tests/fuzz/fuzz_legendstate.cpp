#include "differential/plainstored.h"
#include "fuzzinput.h"

#include <plot2d/legendstate_p.h>

#include <QSet>

namespace {

/// The valid records for the types, the first of each, and no others.
void expectRecords(const QVector<PriceBased2dPlotCurve::CurveParams>& records, const QByteArray& bytes,
    const QSet<int>& types)
{
    int found = 0;
    for (const Plain::StoredCurve& stored : Plain::storedCurves(bytes)) {
        if (!types.contains(stored.type))
            continue;
        FUZZ_EXPECT(found < records.size());
        const auto& record = records[found];
        FUZZ_EXPECT(record.isValid && record.dataType == stored.type && record.isVisible == stored.visible);
        ++found;
    }
    FUZZ_EXPECT(found == records.size());
}

}

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
    expectRecords(records, bytes, types);
    return 0;
}
