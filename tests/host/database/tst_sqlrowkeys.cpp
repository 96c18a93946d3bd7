#include "database/sqlrowkeys_p.h"
#include "support/testmain.h"

#include <limits>
#include <random>

class tst_sqlrowkeys : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void firstRows();
    void behind();
    void inFront();
    void inGap_data();
    void inGap();
    void extremes();
};

void tst_sqlrowkeys::firstRows()
{
    constexpr qint64 stride = SqlRowKeys::stride;
    QCOMPARE(*SqlRowKeys::between({}, {}, 3), (QVector<qint64>{stride, 2 * stride, 3 * stride}));
    QCOMPARE(*SqlRowKeys::between({}, {}, 0), QVector<qint64>());
}

void tst_sqlrowkeys::behind()
{
    constexpr qint64 stride = SqlRowKeys::stride;
    QCOMPARE(*SqlRowKeys::between(7, {}, 2), (QVector<qint64>{7 + stride, 7 + 2 * stride}));
}

void tst_sqlrowkeys::inFront()
{
    constexpr qint64 stride = SqlRowKeys::stride;
    QCOMPARE(*SqlRowKeys::between({}, 7, 2), (QVector<qint64>{7 - 2 * stride, 7 - stride}));
}

void tst_sqlrowkeys::inGap_data()
{
    QTest::addColumn<qint64>("before");
    QTest::addColumn<qint64>("after");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("fits");

    QTest::newRow("wide") << qint64(0) << SqlRowKeys::stride << 1000 << true;
    QTest::newRow("tight") << qint64(10) << qint64(14) << 3 << true;
    QTest::newRow("one too many") << qint64(10) << qint64(14) << 4 << false;
    QTest::newRow("neighbours") << qint64(-1) << qint64(0) << 1 << false;
    QTest::newRow("nothing between neighbours") << qint64(-1) << qint64(0) << 0 << true;
    QTest::newRow("across zero") << qint64(-5) << qint64(5) << 9 << true;
}

void tst_sqlrowkeys::inGap()
{
    QFETCH(qint64, before);
    QFETCH(qint64, after);
    QFETCH(int, count);
    QFETCH(bool, fits);
    const auto keys = SqlRowKeys::between(before, after, count);
    QCOMPARE(keys.has_value(), fits);
    if (!fits)
        return;
    QCOMPARE(keys->size(), count);
    qint64 last = before;
    for (const qint64 key : *keys) {
        QVERIFY(last < key);
        last = key;
    }
    QVERIFY(last < after);
}

void tst_sqlrowkeys::extremes()
{
    constexpr qint64 largest = std::numeric_limits<qint64>::max();
    constexpr qint64 smallest = std::numeric_limits<qint64>::min();
    QVERIFY(!SqlRowKeys::between(largest, {}, 1));
    QVERIFY(!SqlRowKeys::between({}, smallest, 1));
    QVERIFY(!SqlRowKeys::between(smallest, largest, 1));
    QVERIFY(
        !SqlRowKeys::between(smallest, {}, 1) || SqlRowKeys::between(smallest, {}, 1)->first() > smallest);
    QVERIFY(SqlRowKeys::between({}, largest, std::numeric_limits<int>::max() / 1000)->last() < largest);
}

PLOT2D_TEST_MAIN(tst_sqlrowkeys)
#include "tst_sqlrowkeys.moc"
