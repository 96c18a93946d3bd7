#include "differential/plainstored.h"

namespace {

constexpr int headerSize = 12;
constexpr int recordSize = 6;

void append(QByteArray& bytes, int number)
{
    const auto unsignedNumber = static_cast<unsigned>(number);
    bytes.append(static_cast<char>(unsignedNumber / 16777216U));
    bytes.append(static_cast<char>(unsignedNumber / 65536U % 256U));
    bytes.append(static_cast<char>(unsignedNumber / 256U % 256U));
    bytes.append(static_cast<char>(unsignedNumber % 256U));
}

int numberAt(const QByteArray& bytes, int place)
{
    unsigned number = 0;
    for (int i = 0; i < 4; ++i)
        number = number * 256U + static_cast<unsigned char>(bytes[place + i]);
    return static_cast<int>(number);
}

}

QByteArray Plain::storedBytes(const QList<StoredCurve>& curves)
{
    QByteArray bytes;
    append(bytes, 1);
    append(bytes, 5);
    append(bytes, curves.size());
    for (const StoredCurve& curve : curves) {
        bytes.append(curve.valid ? '\1' : '\0');
        bytes.append(curve.visible ? '\1' : '\0');
        append(bytes, curve.type);
    }
    return bytes;
}

QList<Plain::StoredCurve> Plain::storedCurves(const QByteArray& bytes)
{
    if (bytes.size() < headerSize || numberAt(bytes, 0) != 1 || numberAt(bytes, 4) != 5)
        return {};
    const int count = numberAt(bytes, 8);
    QList<StoredCurve> curves;
    QList<int> types;
    int place = headerSize;
    for (int i = 0; i < count && place + recordSize <= bytes.size(); ++i) {
        const StoredCurve curve{bytes[place] != '\0', bytes[place + 1] != '\0', numberAt(bytes, place + 2)};
        place = place + recordSize;
        if (!curve.valid || types.contains(curve.type))
            continue;
        types << curve.type;
        curves << curve;
    }
    return curves;
}
