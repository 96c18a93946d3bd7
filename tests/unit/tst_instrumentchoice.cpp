#include "support/testmain.h"

#include <plot2d/instrumentchoice.h>

using Kind = InstrumentChoice::Kind;

class tst_InstrumentChoice : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void beginsWithNothing();
    void exactInstrument_data();
    void exactInstrument();
    void earliestOfBaseCode();
    void impossibleOnesAreIgnored_data();
    void impossibleOnesAreIgnored();
    void theLaterWayCounts();
};

void tst_InstrumentChoice::beginsWithNothing()
{
    const InstrumentChoice choice;
    QCOMPARE(choice.isinId(), -1);
    QCOMPARE(choice.boardId(), -1);
    QCOMPARE(choice.baseCode(), QString());
    QVERIFY(choice.kind() == Kind::None);
}

void tst_InstrumentChoice::exactInstrument_data()
{
    QTest::addColumn<int>("isinId");
    QTest::addColumn<int>("boardId");
    QTest::newRow("lowest ids") << 1 << 1;
    QTest::newRow("others") << 10 << 2;
}

void tst_InstrumentChoice::exactInstrument()
{
    QFETCH(int, isinId);
    QFETCH(int, boardId);
    InstrumentChoice byIsin;
    byIsin.setIsinId(isinId);
    QCOMPARE(byIsin.isinId(), isinId);
    QCOMPARE(byIsin.boardId(), -1);
    QVERIFY(byIsin.kind() == Kind::None);
    byIsin.setBoardId(boardId);
    QCOMPARE(byIsin.boardId(), boardId);
    QVERIFY(byIsin.kind() == Kind::ExactInstrument);

    InstrumentChoice byBoard;
    byBoard.setBoardId(boardId);
    QCOMPARE(byBoard.isinId(), -1);
    QVERIFY(byBoard.kind() == Kind::None);
    byBoard.setIsinId(isinId);
    QVERIFY(byBoard.kind() == Kind::ExactInstrument);
}

void tst_InstrumentChoice::earliestOfBaseCode()
{
    InstrumentChoice choice;
    choice.setBaseCode(QStringLiteral("AB"));
    QCOMPARE(choice.baseCode(), QStringLiteral("AB"));
    QVERIFY(choice.kind() == Kind::EarliestOfBaseCode);
}

void tst_InstrumentChoice::impossibleOnesAreIgnored_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("zero") << 0;
    QTest::newRow("negative") << -1;
}

void tst_InstrumentChoice::impossibleOnesAreIgnored()
{
    QFETCH(int, id);
    InstrumentChoice code;
    code.setBaseCode(QStringLiteral("AB"));
    code.setIsinId(id);
    code.setBoardId(id);
    code.setBaseCode(QString());
    QCOMPARE(code.isinId(), -1);
    QCOMPARE(code.boardId(), -1);
    QCOMPARE(code.baseCode(), QStringLiteral("AB"));

    InstrumentChoice exact;
    exact.setIsinId(10);
    exact.setBoardId(2);
    exact.setIsinId(id);
    exact.setBoardId(id);
    exact.setBaseCode(QString());
    QCOMPARE(exact.isinId(), 10);
    QCOMPARE(exact.boardId(), 2);
}

void tst_InstrumentChoice::theLaterWayCounts()
{
    InstrumentChoice choice;
    choice.setIsinId(10);
    choice.setBoardId(2);
    choice.setBaseCode(QStringLiteral("AB"));
    QCOMPARE(choice.isinId(), -1);
    QCOMPARE(choice.boardId(), -1);
    QVERIFY(choice.kind() == Kind::EarliestOfBaseCode);
    choice.setIsinId(10);
    QCOMPARE(choice.baseCode(), QString());
    QVERIFY(choice.kind() == Kind::None);
    choice.setBoardId(2);
    QVERIFY(choice.kind() == Kind::ExactInstrument);
    choice.setBaseCode(QStringLiteral("AB"));
    choice.setBoardId(2);
    QCOMPARE(choice.baseCode(), QString());
    QVERIFY(choice.kind() == Kind::None);
}

PLOT2D_TEST_MAIN(tst_InstrumentChoice)
#include "tst_instrumentchoice.moc"
