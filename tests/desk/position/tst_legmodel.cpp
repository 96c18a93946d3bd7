#include "positiontest.h"
#include "support/testmain.h"

#include <position/legmodel.h>
#include <position/legtexts.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <random>

using namespace Position;
using namespace PositionTest;

namespace {

// Knows prices of the near series alone: a tenth of the strike, and 100 for the future.
class FixedMarket : public LegMarket {
public:
    QVector<QDate> expiries() const override { return {nearExpiry, farExpiry}; }
    Leg suggestedLeg() const override { return leg(LegKind::Call, 1, 100.0, 10.0); }
    std::optional<double> price(const Leg& each) const override
    {
        if (each.expiry != nearExpiry)
            return std::nullopt;
        return each.kind == LegKind::Future ? forward : each.strike / 10.0;
    }
};

}

class tst_legmodel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isAModel();
    void addsAndRemoves();
    void input_data();
    void input();
    void refusesWhatIsNoLeg_data();
    void refusesWhatIsNoLeg();
    void anotherInstrumentHasAnotherPrice();
    void futuresHaveNoStrike();
    void valuesOfEachLeg();
    void randomInputKeepsLegsValid();

private:
    FixedMarket m_market;
};

void tst_legmodel::isAModel()
{
    LegModel model(m_market);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.addLeg();
    model.addLeg();
    model.setData(model.index(0, LegModel::Strike), QStringLiteral("95"));
    model.setProfile(Profile(model.legs(), bothSeries()), 3);
    model.removeLeg(0);
    model.setLegs({leg(LegKind::Put, 1, 90.0, 2.0)});
    model.removeAll();
    QCOMPARE(model.rowCount(), 0);
}

void tst_legmodel::addsAndRemoves()
{
    LegModel model(m_market);
    QSignalSpy edited(&model, SIGNAL(edited()));
    QCOMPARE(model.addLeg(), 0);
    QCOMPARE(model.addLeg(), 1);
    QCOMPARE(edited.count(), 2);
    model.removeLeg(2);
    model.removeLeg(-1);
    QCOMPARE(edited.count(), 2);
    model.removeLeg(0);
    QCOMPARE(model.rowCount(), 1);
    model.removeAll();
    QCOMPARE(edited.count(), 4);
    model.removeAll();
    QCOMPARE(edited.count(), 4);
    model.setLegs({leg(LegKind::Put, 1, 90.0, 2.0)});
    QCOMPARE(edited.count(), 4);
}

void tst_legmodel::input_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("kind") << int(LegModel::Kind) << QVariant(int(LegKind::Put)) << "Put";
    QTest::newRow("expiry") << int(LegModel::Expiry) << QVariant(farExpiry) << "2 Jul 2024";
    QTest::newRow("quantity") << int(LegModel::Quantity) << QVariant("-12") << "-12";
    QTest::newRow("quantity with a plus") << int(LegModel::Quantity) << QVariant(" +3 ") << "+3";
    QTest::newRow("strike") << int(LegModel::Strike) << QVariant("97.125") << "97.125";
    QTest::newRow("price") << int(LegModel::Price) << QVariant("0.005") << "0.005";
    QTest::newRow("a price of nothing") << int(LegModel::Price) << QVariant("0") << "0";
    QTest::newRow("the market's price") << int(LegModel::Price) << QVariant("") << "10";
}

void tst_legmodel::input()
{
    QFETCH(int, column);
    QFETCH(QVariant, value);
    LegModel model(m_market);
    model.addLeg();
    model.setData(model.index(0, LegModel::Price), QStringLiteral("7.5"));
    QSignalSpy edited(&model, SIGNAL(edited()));
    QVERIFY(model.setData(model.index(0, column), value));
    QCOMPARE(edited.count(), 1);
    QTEST(model.index(0, column).data().toString(), "shown");
    // What is there already is no edit.
    QVERIFY(model.setData(model.index(0, column), value));
    QCOMPARE(edited.count(), 1);
}

void tst_legmodel::refusesWhatIsNoLeg_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("no quantity") << int(LegModel::Quantity) << QVariant("0");
    QTest::newRow("half a contract") << int(LegModel::Quantity) << QVariant("1.5");
    QTest::newRow("too many") << int(LegModel::Quantity) << QVariant("1000001");
    QTest::newRow("quantity in words") << int(LegModel::Quantity) << QVariant("two");
    QTest::newRow("no strike") << int(LegModel::Strike) << QVariant("");
    QTest::newRow("strike of nothing") << int(LegModel::Strike) << QVariant("0");
    QTest::newRow("negative strike") << int(LegModel::Strike) << QVariant("-5");
    QTest::newRow("strike of NaN") << int(LegModel::Strike) << QVariant("nan");
    QTest::newRow("infinite strike") << int(LegModel::Strike) << QVariant("inf");
    QTest::newRow("negative price") << int(LegModel::Price) << QVariant("-0.01");
    QTest::newRow("price in words") << int(LegModel::Price) << QVariant("market");
    QTest::newRow("huge price") << int(LegModel::Price) << QVariant("1e10");
    QTest::newRow("unknown kind") << int(LegModel::Kind) << QVariant(int('X'));
    QTest::newRow("a value") << int(LegModel::Value) << QVariant("5");
}

void tst_legmodel::refusesWhatIsNoLeg()
{
    QFETCH(int, column);
    QFETCH(QVariant, value);
    LegModel model(m_market);
    model.addLeg();
    const QVector<Leg> before = model.legs();
    QSignalSpy refused(&model, SIGNAL(refused(QString)));
    QSignalSpy edited(&model, SIGNAL(edited()));
    QVERIFY(!model.setData(model.index(0, column), value));
    QCOMPARE(model.legs(), before);
    QCOMPARE(edited.count(), 0);
    if (column > LegModel::Price)
        return;
    QCOMPARE(refused.count(), 1);
    const QString name = model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    QVERIFY2(
        refused.first().first().toString().startsWith(name), qPrintable(refused.first().first().toString()));
}

void tst_legmodel::anotherInstrumentHasAnotherPrice()
{
    LegModel model(m_market);
    model.addLeg();
    const auto set = [&model](int column, const QVariant& value) {
        return model.setData(model.index(0, column), value);
    };
    QVERIFY(set(LegModel::Price, QStringLiteral("3")));
    QVERIFY(set(LegModel::Quantity, QStringLiteral("4")));
    QCOMPARE(model.legs()[0].price, 3.0);
    QVERIFY(set(LegModel::Strike, QStringLiteral("120")));
    QCOMPARE(model.legs()[0].price, 12.0);
    QVERIFY(set(LegModel::Price, QStringLiteral("3")));
    QVERIFY(set(LegModel::Kind, int(LegKind::Future)));
    QCOMPARE(model.legs()[0].price, forward);
    // Of the far series nobody knows a price: it stays.
    QVERIFY(set(LegModel::Expiry, farExpiry));
    QCOMPARE(model.legs()[0].price, forward);
    QVERIFY(!set(LegModel::Price, QString()));
    // A future may cost less than nothing, an option may not.
    QVERIFY(set(LegModel::Price, QStringLiteral("-8")));
    QVERIFY(set(LegModel::Kind, int(LegKind::Call)));
    QCOMPARE(model.legs()[0].price, 0.0);
}

void tst_legmodel::futuresHaveNoStrike()
{
    LegModel model(m_market);
    Leg future = leg(LegKind::Future, 2, 0.0, 99.0);
    model.setLegs({future});
    const QModelIndex strike = model.index(0, LegModel::Strike);
    QVERIFY(!model.flags(strike).testFlag(Qt::ItemIsEditable));
    QCOMPARE(strike.data().toString(), QStringLiteral("\u2013"));
    QVERIFY(model.flags(model.index(0, LegModel::Price)).testFlag(Qt::ItemIsEditable));
    QVERIFY(!model.flags(model.index(0, LegModel::Delta)).testFlag(Qt::ItemIsEditable));
    QVERIFY(model.setData(model.index(0, LegModel::Kind), int(LegKind::Put)));
    QCOMPARE(model.legs()[0].strike, 100.0);
}

void tst_legmodel::valuesOfEachLeg()
{
    LegModel model(m_market);
    Leg stranger = leg(LegKind::Call, 1, 100.0, 5.0);
    stranger.expiry = QDate(2030, 1, 1);
    model.setLegs({leg(LegKind::Future, -2, 0.0, 97.5), stranger, leg(LegKind::Put, 3, 1e-3, 0.0)});
    const auto text = [&model](int row, int column) { return model.index(row, column).data().toString(); };
    QCOMPARE(text(0, LegModel::Profit), QStringLiteral("\u2013"));
    model.setProfile(Profile(model.legs(), bothSeries()), 3);
    QCOMPARE(text(0, LegModel::Value), QStringLiteral("100"));
    QCOMPARE(text(0, LegModel::Profit), QStringLiteral("-5"));
    QCOMPARE(text(0, LegModel::Delta), QStringLiteral("-2"));
    QCOMPARE(text(1, LegModel::Value), QStringLiteral("\u2013"));
    QCOMPARE(text(2, LegModel::Value), QStringLiteral("0"));
    QCOMPARE(text(2, LegModel::Profit), QStringLiteral("0"));
    QCOMPARE(
        model.index(0, LegModel::Delta).data(Qt::AccessibleTextRole).toString(), QStringLiteral("Delta: -2"));
    const QString summary = LegTexts::summary(Profile(model.legs(), bothSeries()), 3);
    QVERIFY2(summary.startsWith(QStringLiteral("Profit now -5 ")), qPrintable(summary));
    QVERIFY2(summary.contains(QStringLiteral("break-even 97.5")), qPrintable(summary));
    QVERIFY2(summary.contains(QStringLiteral("delta -2")), qPrintable(summary));
    QVERIFY2(summary.contains(QStringLiteral("1 leg")), qPrintable(summary));
}

void tst_legmodel::randomInputKeepsLegsValid()
{
    const QStringList texts{QString(), QStringLiteral("0"), QStringLiteral("-1"), QStringLiteral("1e308"),
        QStringLiteral("12.5"), QStringLiteral("nan"), QStringLiteral("1e-320"), QStringLiteral("x"),
        QStringLiteral("99"), QStringLiteral("1000000")};
    std::mt19937_64 random(11);
    LegModel model(m_market);
    for (int i = 0; i < 5000; ++i) {
        const int action = int(random() % 20);
        if (action == 0)
            model.addLeg();
        if (action == 1 && model.rowCount() > 3)
            model.removeLeg(int(random() % 4));
        if (model.rowCount() == 0)
            continue;
        const int row = int(random() % unsigned(model.rowCount()));
        const int column = int(random() % LegModel::ColumnCount);
        QVariant value = texts.at(int(random() % unsigned(texts.size())));
        if (column == LegModel::Kind)
            value = int("FCPX"[random() % 4]);
        if (column == LegModel::Expiry)
            value = random() % 2 == 0 ? nearExpiry : QDate();
        model.setData(model.index(row, column), value);
        model.setProfile(Profile(model.legs(), bothSeries()), 3);
        for (const Leg& each : model.legs())
            QVERIFY2(isValid(each), qPrintable(QString::number(i)));
    }
}

PLOT2D_TEST_MAIN(tst_legmodel)
#include "tst_legmodel.moc"
