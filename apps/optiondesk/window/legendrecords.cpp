#include "window/legendrecords.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QDataStream>

#include <algorithm>

namespace {

using Records = QVector<PriceBased2dPlotCurve::CurveParams>;

// What the library writes before the number of records.
constexpr qint32 formatTag = 1;
constexpr qint32 formatVersion = 5;
constexpr int streamVersion = QDataStream::Qt_4_0;

Records recordsOf(const QByteArray& state)
{
    QDataStream stream(state);
    stream.setVersion(streamVersion);
    qint32 tag = 0;
    qint32 version = 0;
    qint32 count = 0;
    stream >> tag >> version >> count;
    Records records;
    if (tag != formatTag || version != formatVersion)
        return records;
    for (qint32 i = 0; i < count; ++i) {
        PriceBased2dPlotCurve::CurveParams record;
        PriceBased2dPlotCurve::read(stream, record);
        if (stream.status() != QDataStream::Ok)
            break;
        records.append(record);
    }
    return records;
}

bool speakOf(const Records& records, int dataType)
{
    return std::any_of(
        records.begin(), records.end(), [dataType](const PriceBased2dPlotCurve::CurveParams& record) {
            return record.isValid && record.dataType == dataType;
        });
}

}

QByteArray LegendRecords::withMissing(const QByteArray& state, const QByteArray& earlier)
{
    Records records = recordsOf(state);
    const Records old = recordsOf(earlier);
    for (const PriceBased2dPlotCurve::CurveParams& record : old) {
        if (record.isValid && !speakOf(records, record.dataType))
            records.append(record);
    }
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    stream << formatTag << formatVersion << qint32(records.size());
    for (const PriceBased2dPlotCurve::CurveParams& record : qAsConst(records))
        stream << record.isValid << record.isVisible << qint32(record.dataType);
    return bytes;
}
