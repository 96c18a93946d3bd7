#include "chain/chainfilename.h"
#include "support/testmain.h"

class tst_chainfilename : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void names_data();
    void names();
};

void tst_chainfilename::names_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("baseCode");
    QTest::addColumn<QDate>("date");

    const QDate day(2012, 10, 1);
    QTest::newRow("word and date") << "/a/wti_options_on_futures_2012-10-01.csv"
                                   << "WTI" << day;
    QTest::newRow("date of digits") << "amber20121001.csv"
                                    << "AMBER" << day;
    QTest::newRow("date with points") << "amber 2012.10.01.csv"
                                      << "AMBER" << day;
    QTest::newRow("date with underscores") << "amber_2012_10_01.csv"
                                           << "AMBER" << day;
    QTest::newRow("two words") << "light amber_x.csv"
                               << "LIGHT AMBER" << QDate();
    QTest::newRow("date first") << "2012-10-01_amber.csv"
                                << "AMBER" << day;
    QTest::newRow("no letters") << "20121001.csv"
                                << "20121001" << day;
    QTest::newRow("no date") << "amber.csv"
                             << "AMBER" << QDate();
    QTest::newRow("not in the calendar") << "amber_20121301.csv"
                                         << "AMBER" << QDate();
    QTest::newRow("second is a date") << "amber_20121399_2012-10-01.csv"
                                      << "AMBER" << day;
    QTest::newRow("more digits") << "amber_120121001.csv"
                                 << "AMBER" << QDate();
    QTest::newRow("mixed separators") << "amber_2012-1001.csv"
                                      << "AMBER" << QDate();
    QTest::newRow("time behind") << "amber_20121001_1600.csv"
                                 << "AMBER" << day;
    QTest::newRow("date in the folder only") << "/2012-10-01/amber.csv"
                                             << "AMBER" << QDate();
    QTest::newRow("resource") << ":/samples/amber_options_2012-10-01.csv"
                              << "AMBER" << day;
    QTest::newRow("no extension") << "amber"
                                  << "AMBER" << QDate();
}

void tst_chainfilename::names()
{
    QFETCH(QString, fileName);
    QFETCH(QString, baseCode);
    QFETCH(QDate, date);

    QCOMPARE(baseCodeFromFileName(fileName), baseCode);
    QCOMPARE(dateFromFileName(fileName), date);
}

PLOT2D_TEST_MAIN(tst_chainfilename)
#include "tst_chainfilename.moc"
