#include "legendstate_p.h"

#include <QBuffer>
#include <QDataStream>
#include <QSet>

namespace {

constexpr qint32 formatTag = 1;
constexpr qint32 formatVersion = 5;
constexpr int streamVersion = QDataStream::Qt_4_0;

}

QByteArray LegendState::write(const QList<PriceBased2dPlotCurve*>& curves)
{
    QByteArray bytes;
    // A stream that makes its own buffer would lose it where memory runs out.
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    stream.setVersion(streamVersion);
    stream << formatTag << formatVersion << static_cast<qint32>(curves.size());
    for (const PriceBased2dPlotCurve* curve : curves)
        curve->write(stream);
    return bytes;
}

QVector<PriceBased2dPlotCurve::CurveParams> LegendState::read(const QByteArray& bytes, const QSet<int>& types)
{
    QVector<PriceBased2dPlotCurve::CurveParams> records;
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QDataStream stream(&buffer);
    stream.setVersion(streamVersion);
    qint32 tag = -1;
    qint32 version = -1;
    qint32 count = -1;
    stream >> tag >> version >> count;
    if (stream.status() != QDataStream::Ok || tag != formatTag || version != formatVersion || count < 1)
        return records;

    QSet<int> left = types;
    for (qint32 i = 0; i < count; ++i) {
        PriceBased2dPlotCurve::CurveParams record;
        PriceBased2dPlotCurve::read(stream, record);
        // What the count promises beyond the bytes would be read as invalid, one record after the other.
        if (stream.status() != QDataStream::Ok)
            break;
        if (record.isValid && left.remove(record.dataType))
            records.append(record);
    }
    return records;
}
