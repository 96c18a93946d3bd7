#include "host/directory/tablerows.h"
#include "support/testmain.h"

#include <directory/roworder.h>

using namespace TestSupport;

class tst_RowOrder : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void atTheEnd();
    void atTheBeginning();
    void inTheMiddle();
    void runThatWasTornApart();
    void emptyRun();
    void restart();

private:
    QVector<Record> insert(int position, int count);

    std::unique_ptr<Table> m_table;
    RowOrder m_order;
};

void tst_RowOrder::init()
{
    m_table = std::make_unique<Table>(
        QStringLiteral("t"), QVector<TableColumnDef>{{QStringLiteral("value"), FieldType::Int32, 0}});
    m_order.restart();
}

void tst_RowOrder::cleanup()
{
    m_table.reset();
}

QVector<Record> tst_RowOrder::insert(int position, int count)
{
    QVector<Record> rows;
    for (int i = 0; i < count; ++i)
        rows.append(m_table->createRow());
    m_table->insertRows(position, rows);
    return rows;
}

void tst_RowOrder::atTheEnd()
{
    const qint64 first = m_order.place(*m_table, insert(0, 3));
    const qint64 second = m_order.place(*m_table, insert(3, 2));
    const qint64 third = m_order.place(*m_table, insert(5, 1));
    QVERIFY(first + 2 < second);
    QVERIFY(second + 1 < third);
    QVERIFY(third < m_order.next());
    QVERIFY(m_order.isExact());
}

void tst_RowOrder::atTheBeginning()
{
    const qint64 first = m_order.place(*m_table, insert(0, 1));
    const qint64 second = m_order.place(*m_table, insert(0, 3));
    const qint64 third = m_order.place(*m_table, insert(0, 2));
    QVERIFY(second + 2 < first);
    QVERIFY(third + 1 < second);
    QVERIFY(m_order.isExact());
}

void tst_RowOrder::inTheMiddle()
{
    const qint64 first = m_order.place(*m_table, insert(0, 2));
    QVERIFY(m_order.isExact());
    const qint64 second = m_order.place(*m_table, insert(1, 2));
    QVERIFY(!m_order.isExact());
    QVERIFY2(second > first + 1, "numbers are unique");
    m_order.place(*m_table, insert(4, 1));
    QVERIFY2(!m_order.isExact(), "a later run makes up for nothing");
}

void tst_RowOrder::runThatWasTornApart()
{
    const QVector<Record> run = insert(0, 2);
    insert(1, 1);
    m_order.place(*m_table, run);
    QVERIFY(!m_order.isExact());
}

void tst_RowOrder::emptyRun()
{
    insert(0, 2);
    m_order.place(*m_table, {});
    QVERIFY(m_order.isExact());
}

void tst_RowOrder::restart()
{
    m_order.setInexact();
    QVERIFY(!m_order.isExact());
    m_order.restart();
    QVERIFY(m_order.isExact());
}

PLOT2D_TEST_MAIN(tst_RowOrder)
#include "tst_roworder.moc"
