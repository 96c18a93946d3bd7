#include "fuzzinput.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QBuffer>
#include <QDataStream>

namespace {

using Curve = PriceBased2dPlotCurve;

constexpr int recordSize = 6;

bool isReset(const Curve::CurveParams& params)
{
    return !params.isValid && !params.isVisible && params.dataType == 0;
}

qint32 bigEndian(const QByteArray& bytes, int offset)
{
    quint32 value = 0;
    for (int i = 0; i < 4; ++i)
        value = value << 8U | quint8(bytes.at(offset + i));
    return static_cast<qint32>(value);
}

/// The curves that are written: of all types, valid and not.
const Curve& curve(unsigned which)
{
    static Curve* const curves[]
        = {new Curve(nullptr, QStringLiteral("valid")), new Curve(nullptr, QString())};
    Curve& result = *curves[which & 1U];
    if (result.dataSize() == 0) {
        result.setSamples(QVector<QPointF>{{1.0, 2.0}, {2.0, 3.0}});
        result.setLegendAttribute(QwtPlotCurve::LegendShowLine);
    }
    result.QwtPlotItem::setVisible((which & 2U) != 0);
    result.setDataType(9 + int(which >> 2U & 7U));
    return result;
}

void expectReadBack(unsigned which, QDataStream::Version version)
{
    const Curve& written = curve(which);
    static QBuffer buffer;
    buffer.close();
    buffer.open(QIODevice::ReadWrite | QIODevice::Truncate);
    QDataStream stream(&buffer);
    stream.setVersion(version);
    written.write(stream);
    FUZZ_EXPECT(buffer.size() == recordSize);
    buffer.seek(0);
    Curve::CurveParams params;
    Curve::read(stream, params);
    FUZZ_EXPECT(stream.status() == QDataStream::Ok && params.isValid == written.isValid()
        && params.isVisible == written.isVisible() && params.dataType == written.dataType());
}

}

/// The first byte chooses a curve that is written and read back, the others are read as records.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const auto which = input.take<std::uint8_t>();
    expectReadBack(which, (which & 0x20U) != 0 ? QDataStream::Qt_4_0 : QDataStream::Qt_5_15);

    const QByteArray bytes
        = QByteArray::fromRawData(reinterpret_cast<const char*>(input.data()), int(input.size()));
    QDataStream stream(bytes);
    for (int offset = 0;; offset += recordSize) {
        Curve::CurveParams params;
        params.dataType = -7;
        Curve::read(stream, params);
        if (offset + recordSize > bytes.size()) {
            FUZZ_EXPECT(stream.status() != QDataStream::Ok && isReset(params));
            return 0;
        }
        FUZZ_EXPECT(stream.status() == QDataStream::Ok);
        FUZZ_EXPECT(
            params.isValid == (bytes.at(offset) != 0) && params.isVisible == (bytes.at(offset + 1) != 0));
        FUZZ_EXPECT(params.dataType == bigEndian(bytes, offset + 2));
    }
}
