#include "chain/dateparser.h"
#include "support/testmain.h"

class tst_dateparser : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void dates_data();
    void dates();
    void notDates_data();
    void notDates();
    void columns_data();
    void columns();
    void thirdFridays_data();
    void thirdFridays();
};

void tst_dateparser::dates_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QDate>("expected");

    const QDate day(2012, 3, 16);
    const QStringList sameDay = {"2012-03-16", "2012/03/16", "2012.03.16", "2012-3-16", "20120316",
        "20120316.0", "16.03.2012", "16.3.12", "03/16/2012", "3/16/2012", "16/03/2012", "16-03-2012",
        "03-16-2012", "3/16/12", "16-Mar-2012", "16-MAR-12", "16MAR2012", "16MAR12", "16 March 2012",
        "16. Mar 2012", "Mar 16, 2012", "March 16 2012", "2012-Mar-16", "2012-03-16 16:00:00",
        "2012-03-16T00:00:00.000+00:00", "2012-03-16T16:00:00Z", "03/16/2012 16:00", "16MAR2012:00:00:00",
        "Fri 16 Mar 2012", "Friday, March 16, 2012", " 2012-03-16 "};
    for (const QString& cell : sameDay)
        QTest::newRow(qPrintable(cell)) << cell << day;
    // Months whose third Friday is the 16th.
    const QStringList sameMonth = {"201203", "201203.0", "2012-03", "2012/03", "03/2012", "3-2012", "Mar-12",
        "MAR12", "March 2012", "Mar '12"};
    for (const QString& cell : sameMonth)
        QTest::newRow(qPrintable(cell)) << cell << day;
    QTest::newRow("leap day") << "29-Feb-2012" << QDate(2012, 2, 29);
    QTest::newRow("september") << "21-Sept-2012" << QDate(2012, 9, 21);
    QTest::newRow("last century") << "15.03.85" << QDate(1985, 3, 15);
    QTest::newRow("end of year") << "20121231" << QDate(2012, 12, 31);
}

void tst_dateparser::dates()
{
    QFETCH(QString, cell);
    QFETCH(QDate, expected);

    const std::optional<DateReading> reading = parseDate(cell);
    QVERIFY(reading);
    QVERIFY(reading->monthFirst == expected || reading->dayFirst == expected);
    DateColumn column;
    const std::optional<int> number = column.add(cell);
    QVERIFY(number);
    QCOMPARE(column.date(*number), expected);
}

void tst_dateparser::notDates_data()
{
    QTest::addColumn<QString>("cell");

    for (const char* cell : {"", "abc", "2012", "201213", "20120230", "20121301", "31.02.2012", "13/13/2012",
             "2012-02-30", "16-Foo-2012", "16-Ma-2012", "44", "0.25", "12:30", "1812-03-16", "2012-03-16-01",
             "99999999", "2012-00-10", "20120300"})
        QTest::newRow(cell) << QString::fromLatin1(cell);
    QTest::newRow("long") << QString(100000, QLatin1Char('1'));
}

void tst_dateparser::notDates()
{
    QFETCH(QString, cell);

    QVERIFY(!parseDate(cell));
}

void tst_dateparser::columns_data()
{
    QTest::addColumn<QStringList>("cells");
    // "!" where a cell is refused.
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("month first by a later row")
        << QStringList{"04/05/2012", "03/16/2012"} << QStringList{"2012-04-05", "2012-03-16"};
    QTest::newRow("day first by a later row")
        << QStringList{"04/05/2012", "16/03/2012"} << QStringList{"2012-05-04", "2012-03-16"};
    QTest::newRow("undecided") << QStringList{"04/05/2012", "06/07/2012"}
                               << QStringList{"2012-04-05", "2012-06-07"};
    QTest::newRow("contradiction") << QStringList{"16/03/2012", "03/16/2012", "04/05/2012"}
                                   << QStringList{"2012-03-16", "!", "2012-05-04"};
    QTest::newRow("not in the calendar either way")
        << QStringList{"02/30/2012", "04/05/2012"} << QStringList{"!", "2012-04-05"};
    QTest::newRow("mixed with others") << QStringList{"2012-03-16", "04/05/2012", "17.08.2012"}
                                       << QStringList{"2012-03-16", "2012-04-05", "2012-08-17"};
    QTest::newRow("unreadable") << QStringList{"x", "2012-03-16"} << QStringList{"!", "2012-03-16"};
}

void tst_dateparser::columns()
{
    QFETCH(QStringList, cells);
    QFETCH(QStringList, expected);

    DateColumn column;
    QVector<std::optional<int>> numbers;
    for (const QString& cell : qAsConst(cells)) {
        numbers.append(column.add(cell));
        QVERIFY(column.add(cell) == numbers.last());
    }
    QStringList dates;
    for (const std::optional<int>& number : qAsConst(numbers))
        dates.append(number ? column.date(*number).toString(Qt::ISODate) : QStringLiteral("!"));
    QCOMPARE(dates, expected);
}

void tst_dateparser::thirdFridays_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("month");
    QTest::addColumn<QDate>("expected");

    QTest::newRow("begins on a Thursday") << 2012 << 3 << QDate(2012, 3, 16);
    QTest::newRow("begins on a Friday") << 2012 << 6 << QDate(2012, 6, 15);
    QTest::newRow("begins on a Saturday") << 2012 << 9 << QDate(2012, 9, 21);
    QTest::newRow("leap February") << 2024 << 2 << QDate(2024, 2, 16);
    QTest::newRow("no month") << 2012 << 13 << QDate();
    QTest::newRow("no year") << 0 << 3 << QDate();
}

void tst_dateparser::thirdFridays()
{
    QFETCH(int, year);
    QFETCH(int, month);
    QFETCH(QDate, expected);

    QCOMPARE(thirdFriday(year, month), expected);
}

PLOT2D_TEST_MAIN(tst_dateparser)
#include "tst_dateparser.moc"
