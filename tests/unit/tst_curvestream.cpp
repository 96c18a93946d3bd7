#include "support/testmain.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QDataStream>

#include <functional>

namespace {

using Change = std::function<void(PriceBased2dPlotCurve&)>;

void makeValid(PriceBased2dPlotCurve& curve)
{
    curve.setTitle(QStringLiteral("a"));
    curve.setSamples(QVector<QPointF>{{100.0, 1.0}, {110.0, 2.0}});
    curve.setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve.setDataType(9);
}

QByteArray written(const PriceBased2dPlotCurve& curve, QDataStream::ByteOrder order)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(order);
    curve.write(stream);
    return bytes;
}

}

Q_DECLARE_METATYPE(Change)

/// What a curve writes and reads of itself.
class tst_curvestream : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recordDefaults();
    void writtenBytes_data();
    void writtenBytes();
    void writtenIsRead();
    void readTakesAnyType();
    void recordsFollowEachOther();
    void shortStreams_data();
    void shortStreams();
    void brokenStream();
};

void tst_curvestream::recordDefaults()
{
    const PriceBased2dPlotCurve::CurveParams params;
    QVERIFY(!params.isValid);
    QVERIFY(!params.isVisible);
    QCOMPARE(params.dataType, 0);
    const PriceBased2dPlotPoint origin;
    QCOMPARE(origin.x, 0.0);
    QCOMPARE(origin.y, 0.0);
    QVERIFY(!origin.marked);
    const PriceBased2dPlotPoint point{1.0, 2.0, true};
    QCOMPARE(point.x, 1.0);
    QCOMPARE(point.y, 2.0);
    QVERIFY(point.marked);
}

void tst_curvestream::writtenBytes_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QByteArray>("big");
    QTest::addColumn<QByteArray>("little");
    const auto row = [](const char* name, const char* big, const char* little, const Change& change) {
        QTest::newRow(name) << change << QByteArray::fromHex(big) << QByteArray::fromHex(little);
    };
    using Curve = PriceBased2dPlotCurve;
    row("valid and visible", "010100000009", "010109000000", [](Curve&) {});
    row("type 13", "01010000000d", "01010d000000", [](Curve& curve) { curve.setDataType(13); });
    row("hidden", "010000000009", "010009000000", [](Curve& curve) { curve.setVisible(false); });
    row("invalid", "000100000009", "000109000000", [](Curve& curve) { curve.setTitle(QString()); });
    row("without type", "0001ffffffff", "0001ffffffff", [](Curve& curve) { curve.setDataType(-1); });
}

void tst_curvestream::writtenBytes()
{
    QFETCH(Change, change);
    QFETCH(QByteArray, big);
    QFETCH(QByteArray, little);
    PriceBased2dPlotCurve curve(nullptr, QString());
    makeValid(curve);
    change(curve);
    QCOMPARE(written(curve, QDataStream::BigEndian).toHex(), big.toHex());
    QCOMPARE(written(curve, QDataStream::LittleEndian).toHex(), little.toHex());
}

void tst_curvestream::writtenIsRead()
{
    PriceBased2dPlotCurve curve(nullptr, QString());
    makeValid(curve);
    for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
        const QByteArray bytes = written(curve, order);
        QDataStream stream(bytes);
        stream.setByteOrder(order);
        PriceBased2dPlotCurve::CurveParams params;
        PriceBased2dPlotCurve::read(stream, params);
        QVERIFY(params.isValid);
        QVERIFY(params.isVisible);
        QCOMPARE(params.dataType, 9);
        QVERIFY(stream.atEnd());
        QCOMPARE(stream.status(), QDataStream::Ok);
    }
}

void tst_curvestream::readTakesAnyType()
{
    QDataStream stream(QByteArray::fromHex("000180000001"));
    PriceBased2dPlotCurve::CurveParams params{true, false, 5};
    PriceBased2dPlotCurve::read(stream, params);
    QVERIFY(!params.isValid);
    QVERIFY(params.isVisible);
    QCOMPARE(params.dataType, -2147483647);
}

void tst_curvestream::recordsFollowEachOther()
{
    QDataStream stream(QByteArray::fromHex("01000000000a00010000000c"));
    PriceBased2dPlotCurve::CurveParams first;
    PriceBased2dPlotCurve::CurveParams second;
    PriceBased2dPlotCurve::read(stream, first);
    PriceBased2dPlotCurve::read(stream, second);
    QVERIFY(first.isValid && !first.isVisible);
    QCOMPARE(first.dataType, 10);
    QVERIFY(!second.isValid && second.isVisible);
    QCOMPARE(second.dataType, 12);
}

void tst_curvestream::shortStreams_data()
{
    QTest::addColumn<int>("length");
    for (int length = 0; length < 6; ++length)
        QTest::addRow("%d bytes", length) << length;
}

void tst_curvestream::shortStreams()
{
    QFETCH(int, length);
    QDataStream stream(QByteArray::fromHex("010100000009").left(length));
    PriceBased2dPlotCurve::CurveParams params{true, true, 9};
    PriceBased2dPlotCurve::read(stream, params);
    QVERIFY(!params.isValid);
    QVERIFY(!params.isVisible);
    QCOMPARE(params.dataType, 0);
    QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
}

void tst_curvestream::brokenStream()
{
    QDataStream stream(QByteArray::fromHex("010100000009"));
    stream.setStatus(QDataStream::ReadCorruptData);
    PriceBased2dPlotCurve::CurveParams params{true, true, 9};
    PriceBased2dPlotCurve::read(stream, params);
    QVERIFY(!params.isValid);
    QVERIFY(!params.isVisible);
    QCOMPARE(params.dataType, 0);
    QCOMPARE(stream.status(), QDataStream::ReadCorruptData);
}

PLOT2D_TEST_MAIN(tst_curvestream)
#include "tst_curvestream.moc"
