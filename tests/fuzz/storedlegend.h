#pragma once

#include <QByteArray>

/// The stored state of a legend, read by hand.
namespace StoredLegend {

/// What is stored of a curve.
struct Record {
    bool isValid = false;
    bool isVisible = false;
    qint32 type = 0;
};

inline qint32 bigEndian(const char* bytes)
{
    quint32 value = 0;
    for (int i = 0; i < 4; ++i)
        value = value << 8U | quint8(bytes[i]);
    return static_cast<qint32>(value);
}

/// Calls with each whole record in its order, valid or not; with none where the header is another.
template <typename Use> void forEachRecord(const QByteArray& bytes, const Use& use)
{
    constexpr int header = 12;
    constexpr int recordSize = 6;
    const char* const start = bytes.constData();
    if (bytes.size() < header || bigEndian(start) != 1 || bigEndian(start + 4) != 5)
        return;
    const qint32 count = bigEndian(start + 8);
    int offset = header;
    for (qint32 i = 0; i < count && offset + recordSize <= bytes.size(); ++i, offset += recordSize)
        use(Record{start[offset] != 0, start[offset + 1] != 0, bigEndian(start + offset + 2)});
}

}
