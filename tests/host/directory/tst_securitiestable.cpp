#include "support/testmain.h"

#include <directory/securitiestable.h>

#include <QSet>

class tst_SecuritiesTable : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void securities_data();
    void securities();
    void boards_data();
    void boards();
    void names();
};

namespace {

void compareColumns(const QVector<TableColumnDef>& columns)
{
    QFETCH(QString, name);
    QFETCH(int, type);
    QFETCH(int, decimals);

    int found = 0;
    for (const TableColumnDef& column : columns) {
        if (column.name != name)
            continue;
        ++found;
        QCOMPARE(static_cast<int>(column.type), type);
        QCOMPARE(int{column.decimals}, decimals);
    }
    QCOMPARE(found, 1);
}

void addColumns()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("decimals");
}

void addRows(FieldType type, std::initializer_list<const char*> names)
{
    for (const char* name : names) {
        QTest::newRow(name) << QString::fromLatin1(name) << static_cast<int>(type)
                            << (type == FieldType::Decimal ? 5 : 0);
    }
}

}

void tst_SecuritiesTable::securities_data()
{
    addColumns();
    addRows(FieldType::Int32,
        {"stock_id", "board_id", "isin_id", "fut_isin_id", "base_isin_id", "sess_id", "decimals"});
    addRows(FieldType::Int64, {"sec_id", "volume", "open_interest"});
    addRows(FieldType::Text, {"base_code", "short_name", "sectype", "option_type"});
    addRows(FieldType::Decimal,
        {"strike", "price_step", "bid", "ask", "last", "settlement", "cur_kotir_real", "cur_kotir",
            "old_kotir"});
    addRows(FieldType::Double, {"volat_min", "volat_max", "volat"});
    addRows(FieldType::Moment, {"expdate", "lasttime"});
}

void tst_SecuritiesTable::securities()
{
    compareColumns(SecuritiesTable::securitiesColumns());
    QCOMPARE(SecuritiesTable::securitiesColumns().size(), 28);
}

void tst_SecuritiesTable::boards_data()
{
    addColumns();
    addRows(FieldType::Int32, {"stock_id", "board_id", "is_anonym"});
    addRows(FieldType::Text, {"name"});
}

void tst_SecuritiesTable::boards()
{
    compareColumns(SecuritiesTable::boardsColumns());
    QCOMPARE(SecuritiesTable::boardsColumns().size(), 4);
}

void tst_SecuritiesTable::names()
{
    QCOMPARE(SecuritiesTable::securitiesName, QStringLiteral("securities"));
    QCOMPARE(SecuritiesTable::boardsName, QStringLiteral("boards"));
}

PLOT2D_TEST_MAIN(tst_SecuritiesTable)
#include "tst_securitiestable.moc"
