#include "chain/optioncode.h"
#include "support/testmain.h"

class tst_optioncode : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void codes_data();
    void codes();
};

void tst_optioncode::codes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("short") << "AMBR231215C00150000"
                           << "AMBR 2023-12-15 C";
    QTest::newRow("padded") << "AMB   231215P00150000"
                            << "AMB 2023-12-15 P";
    QTest::newRow("digit in the root") << "AMB1231215P00150000"
                                       << "AMB1 2023-12-15 P";
    QTest::newRow("no such day") << "AMB231315C00150000"
                                 << "";
    QTest::newRow("no type") << "AMB231215X00150000"
                             << "";
    QTest::newRow("no root") << "231215C00150000"
                             << "";
    QTest::newRow("short strike") << "AMB231215C150"
                                  << "";
    QTest::newRow("word") << "AMBER"
                          << "";
    QTest::newRow("empty") << ""
                           << "";
}

void tst_optioncode::codes()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);

    const std::optional<OptionCode> code = parseOptionCode(text);
    const QString found = code ? QStringLiteral("%1 %2 %3")
                                     .arg(code->root, code->expiry.toString(Qt::ISODate))
                                     .arg(QLatin1Char(char(code->type)))
                               : QString();
    QCOMPARE(found, expected);
}

PLOT2D_TEST_MAIN(tst_optioncode)
#include "tst_optioncode.moc"
