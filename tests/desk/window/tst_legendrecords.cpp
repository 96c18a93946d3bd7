#include "support/testmain.h"

#include <window/legendrecords.h>

class tst_legendrecords : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withMissing_data();
    void withMissing();
};

void tst_legendrecords::withMissing_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QByteArray>("earlier");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray two("000000010000000500000002 010100000009 01000000000d");
    QTest::newRow("nothing earlier") << two << QByteArray() << two;
    QTest::newRow("the same types") << two << QByteArray("000000010000000500000002 010000000009 01010000000d")
                                    << two;
    QTest::newRow("other types") << two
                                 << QByteArray("000000010000000500000003 01000000000b 010100000009 "
                                               "01010000000c")
                                 << QByteArray("000000010000000500000004 010100000009 01000000000d "
                                               "01000000000b 01010000000c");
    QTest::newRow("a type twice") << two << QByteArray("000000010000000500000002 01000000000b 01010000000b")
                                  << QByteArray("000000010000000500000003 010100000009 01000000000d "
                                                "01000000000b");
    QTest::newRow("not valid") << two << QByteArray("000000010000000500000001 00000000000b") << two;
    QTest::newRow("not valid now") << QByteArray("000000010000000500000001 000100000009")
                                   << QByteArray("000000010000000500000001 010000000009")
                                   << QByteArray("000000010000000500000002 000100000009 010000000009");
    QTest::newRow("other version") << two << QByteArray("000000010000000600000001 01000000000b") << two;
    QTest::newRow("other tag") << two << QByteArray("000000020000000500000001 01000000000b") << two;
    QTest::newRow("cut short") << two << QByteArray("000000010000000500000002 01000000000b 0100")
                               << QByteArray("000000010000000500000003 010100000009 01000000000d "
                                             "01000000000b");
    QTest::newRow("two thousand million")
        << two << QByteArray("000000010000000577359400 01000000000b")
        << QByteArray("000000010000000500000003 010100000009 01000000000d 01000000000b");
    QTest::newRow("negative count") << two << QByteArray("0000000100000005ffffffff 01000000000b") << two;
    QTest::newRow("no state") << QByteArray("00") << QByteArray("ff")
                              << QByteArray("000000010000000500000000");
}

void tst_legendrecords::withMissing()
{
    QFETCH(QByteArray, state);
    QFETCH(QByteArray, earlier);
    QFETCH(QByteArray, expected);
    const auto bytes = [](const QByteArray& hex) { return QByteArray::fromHex(hex); };
    QCOMPARE(LegendRecords::withMissing(bytes(state), bytes(earlier)).toHex(), bytes(expected).toHex());
}

PLOT2D_TEST_MAIN(tst_legendrecords)
#include "tst_legendrecords.moc"
