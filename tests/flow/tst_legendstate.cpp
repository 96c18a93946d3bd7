#include "plot2d/legendstate_p.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <random>

namespace {

const QSet<int> types{-1, 0, 9, 10, 11, 12, 13};

constexpr quint64 seed = 20240615;

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

/// The records as "valid visible type" each.
QString textOf(const QVector<PriceBased2dPlotCurve::CurveParams>& records)
{
    QStringList texts;
    for (const auto& record : records)
        texts << QStringLiteral("%1 %2 %3").arg(record.isValid).arg(record.isVisible).arg(record.dataType);
    return texts.join(QStringLiteral(", "));
}

}

class tst_legendstate : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void writes();
    void writesNothing();
    void reads_data();
    void reads();
    void readsAnyBytes();
};

void tst_legendstate::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_legendstate::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_legendstate::writes()
{
    TestPlot plot;
    const QVector<QPointF> samples{{1.0, 1.0}, {2.0, 2.0}};
    addCurve(plot, 9, samples, QStringLiteral("shown"));
    addCurve(plot, 13, samples, QStringLiteral("hidden"))->QwtPlotItem::setVisible(false);
    addCurve(plot, -1, {}, QStringLiteral("not valid"));
    QCOMPARE(LegendState::write(plot.attachedCurves(-1)).toHex(' '),
        QByteArray("00 00 00 01 00 00 00 05 00 00 00 03 "
                   "01 01 00 00 00 09 01 00 00 00 00 0d 00 01 ff ff ff ff"));
}

void tst_legendstate::writesNothing()
{
    QCOMPARE(LegendState::write({}).toHex(), QByteArray("000000010000000500000000"));
}

void tst_legendstate::reads_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("one") << hex("000000010000000500000001 010000000009") << "1 0 9";
    QTest::newRow("two") << hex("000000010000000500000002 010000000009 01010000000a") << "1 0 9, 1 1 10";
    QTest::newRow("more bytes than records")
        << hex("000000010000000500000001 010000000009 01010000000a") << "1 0 9";
    QTest::newRow("wrong tag") << hex("000000020000000500000001 010000000009") << QString();
    QTest::newRow("wrong version") << hex("000000010000000400000001 010000000009") << QString();
    QTest::newRow("little-endian") << hex("010000000500000001000000 010009000000") << QString();
    QTest::newRow("count 0") << hex("000000010000000500000000 010000000009") << QString();
    QTest::newRow("count -1") << hex("0000000100000005ffffffff 010000000009") << QString();
    QTest::newRow("header short") << hex("00000001000000050000") << QString();
    QTest::newRow("no records") << hex("000000010000000500000002") << QString();
    QTest::newRow("second record short")
        << hex("000000010000000500000002 010000000009 0101000000") << "1 0 9";
    QTest::newRow("first record short") << hex("000000010000000500000002 01000000") << QString();
    QTest::newRow("count larger than the bytes") << hex("00000001000000057fffffff 010000000009") << "1 0 9";
    QTest::newRow("not valid") << hex("000000010000000500000002 000100000009 01000000000a") << "1 0 10";
    QTest::newRow("not valid does not take its type")
        << hex("000000010000000500000002 000100000009 010000000009") << "1 0 9";
    QTest::newRow("a type that is not asked for")
        << hex("000000010000000500000002 01000000004d 010000000009") << "1 0 9";
    QTest::newRow("first of a type") << hex("000000010000000500000003 010000000009 010100000009 01010000000a")
                                     << "1 0 9, 1 1 10";
    QTest::newRow("other bytes are true") << hex("000000010000000500000001 80ff00000009") << "1 1 9";
    QTest::newRow("type -1") << hex("000000010000000500000001 0100ffffffff") << "1 0 -1";
}

void tst_legendstate::reads()
{
    QFETCH(QByteArray, bytes);
    QTEST(textOf(LegendState::read(bytes, types)), "expected");
}

void tst_legendstate::readsAnyBytes()
{
    std::mt19937_64 random(seed);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<int> length(0, 40);
    for (int i = 0; i < 2000; ++i) {
        QByteArray bytes = hex("0000000100000005");
        const int count = length(random);
        // Every byte is small or all ones, so that counts and data types are met as well.
        for (int k = 0; k < count; ++k)
            bytes.append(static_cast<char>(byte(random) < 128 ? 0 : byte(random) % 15 - 1));
        const auto records = LegendState::read(bytes, types);
        const QString where = QStringLiteral("seed %1 case %2").arg(seed).arg(i);
        QVERIFY2(records.size() <= std::max(0, count - 4) / 6, qPrintable(where));
        QSet<int> left = types;
        for (const auto& record : records)
            QVERIFY2(record.isValid && left.remove(record.dataType), qPrintable(where));
    }
}

PLOT2D_TEST_MAIN(tst_legendstate)
#include "tst_legendstate.moc"
