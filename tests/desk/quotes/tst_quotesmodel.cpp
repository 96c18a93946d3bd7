#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <quotes/quotesmodel.h>

#include <QAbstractItemModelTester>
#include <QFont>
#include <QLocale>

/// The table of quotes as a model: its texts, and what it announces.
class tst_quotesmodel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void texts_data();
    void texts();
    void absentIsEmpty();
    void noZeroHasASign();
    void decimalsOfTheStrikes();
    void alignsNumbers();
    void marksAtTheMoney();
    void namesColumns();
    void knowsEmptyColumns();
    void changesChangedRowsOnly();
    void sameNumbersChangeNothing();
    void strikesComeAndGo();
    void anotherSeriesResets();
    void clears();

private:
    QString text(double strike, QuotesColumn column) const;
    int rowOf(double strike) const;
    void show(int futureIsinId = 1) { m_model->show(futureIsinId, valued()); }
    ShownSeries valued() const;
    OptionQuote& quote(OptionType type, double strike);

    OptionChain m_chain;
    std::unique_ptr<QuotesModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void tst_quotesmodel::init()
{
    m_chain = DeskTest::quotedChain();
    m_model = std::make_unique<QuotesModel>();
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    show();
}

void tst_quotesmodel::cleanup()
{
    m_tester.reset();
    m_model.reset();
    QLocale::setDefault(QLocale::c());
}

ShownSeries tst_quotesmodel::valued() const
{
    return valuedSeries(
        {m_chain.baseCode, m_chain.asOf, m_chain.priceStep, m_chain.decimals, m_chain.series.first()},
        DeskTest::forward);
}

OptionQuote& tst_quotesmodel::quote(OptionType type, double strike)
{
    for (OptionQuote& one : m_chain.series.first().quotes) {
        if (one.type == type && one.strike.toDouble() == strike)
            return one;
    }
    qFatal("no option at %g", strike);
}

int tst_quotesmodel::rowOf(double strike) const
{
    for (int i = 0; i < m_model->rows().size(); ++i) {
        if (m_model->rows().at(i).strike == strike)
            return i;
    }
    return -1;
}

QString tst_quotesmodel::text(double strike, QuotesColumn column) const
{
    return m_model->index(rowOf(strike), int(column)).data().toString();
}

void tst_quotesmodel::texts_data()
{
    QTest::addColumn<QString>("locale");
    // Strike, bid, middle, volatility and delta.
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("C") << "C" << QStringList{"1234567.5", "1234.50", "1235.000", "20.00%", "-0.286"};
    QTest::newRow("English") << "en_US"
                             << QStringList{"1,234,567.5", "1,234.50", "1,235.000", "20.00%", "-0.286"};
    QTest::newRow("German") << "de_DE"
                            << QStringList{"1.234.567,5", "1.234,50", "1.235,000", "20,00%", "-0,286"};
}

void tst_quotesmodel::texts()
{
    QFETCH(QString, locale);
    QFETCH(QStringList, expected);
    QLocale::setDefault(locale == QLatin1String("C") ? QLocale::c() : QLocale(locale));
    ShownSeries series = valued();
    OptionQuote put;
    put.type = OptionType::Put;
    put.strike = decimal::fromDouble(1234567.5, 1);
    put.bid = decimal::fromDouble(1234.5, 2);
    put.ask = decimal::fromDouble(1235.5, 2);
    series.data.options.quotes = {put};
    series.market = {1300000.0, 0.25};
    series.analysis.points = {{1234567.5, OptionType::Put, 0.2, 1235.0, 0.01, true}};
    m_model->show(2, series);
    QStringList found;
    for (const QuotesColumn column : {QuotesColumn::Strike, QuotesColumn::PutBid, QuotesColumn::PutMiddle,
             QuotesColumn::Volatility, QuotesColumn::Delta})
        found.append(text(1234567.5, column));
    QCOMPARE(found, expected);
}

void tst_quotesmodel::absentIsEmpty()
{
    QCOMPARE(text(90.0, QuotesColumn::CallBid), QString());
    QVERIFY(!text(90.0, QuotesColumn::PutBid).isEmpty());
}

void tst_quotesmodel::noZeroHasASign()
{
    ShownSeries series = valued();
    // A few hours: far from the money nothing depends on the forward any more.
    series.market.time = 0.001;
    m_model->show(1, series);
    QCOMPARE(text(75.0, QuotesColumn::Delta), QStringLiteral("0.000"));
    QCOMPARE(text(100.0, QuotesColumn::Delta).left(3), QStringLiteral("0.5"));
}

void tst_quotesmodel::decimalsOfTheStrikes()
{
    QCOMPARE(text(90.0, QuotesColumn::Strike), QStringLiteral("90.0"));
    QCOMPARE(text(92.5, QuotesColumn::Strike), QStringLiteral("92.5"));
    auto& quotes = m_chain.series.first().quotes;
    quotes.erase(std::remove_if(quotes.begin(), quotes.end(),
                     [](const OptionQuote& one) {
                         return one.strike.toDouble() != std::floor(one.strike.toDouble());
                     }),
        quotes.end());
    show();
    QCOMPARE(text(90.0, QuotesColumn::Strike), QStringLiteral("90"));
}

void tst_quotesmodel::alignsNumbers()
{
    for (int i = 0; i < quotesColumnCount; ++i) {
        QVERIFY(m_model->index(0, i).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
        QVERIFY(m_model->headerData(i, Qt::Horizontal, Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    }
}

void tst_quotesmodel::marksAtTheMoney()
{
    for (const double strike : {97.5, 100.0, 102.5}) {
        const QModelIndex index = m_model->index(rowOf(strike), 0);
        const bool isMarked = strike == 100.0;
        QCOMPARE(index.data(Qt::FontRole).value<QFont>().bold(), isMarked);
        QCOMPARE(index.data(Qt::BackgroundRole).isValid(), isMarked);
        QCOMPARE(index.data(Qt::ToolTipRole).isValid(), isMarked);
    }
}

void tst_quotesmodel::namesColumns()
{
    QSet<QString> names;
    for (int i = 0; i < quotesColumnCount; ++i) {
        names.insert(m_model->headerData(i, Qt::Horizontal).toString());
        QVERIFY(!m_model->headerData(i, Qt::Horizontal, Qt::ToolTipRole).toString().isEmpty());
    }
    QCOMPARE(names.size(), quotesColumnCount);
    QCOMPARE(m_model->headerData(int(QuotesColumn::PutAsk), Qt::Horizontal).toString(),
        QStringLiteral("Put\nask"));
    QVERIFY(!m_model->headerData(0, Qt::Vertical).isValid());
}

void tst_quotesmodel::knowsEmptyColumns()
{
    QVERIFY(m_model->hasValues(QuotesColumn::CallBid));
    m_chain = DeskTest::chain();
    show();
    for (const QuotesColumn column : {QuotesColumn::CallBid, QuotesColumn::PutAsk, QuotesColumn::PutMiddle})
        QVERIFY(!m_model->hasValues(column));
    QVERIFY(m_model->hasValues(QuotesColumn::PutSettlement));
}

void tst_quotesmodel::changesChangedRowsOnly()
{
    QSignalSpy changes(m_model.get(), SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)));
    const QSignalSpy resets(m_model.get(), SIGNAL(modelReset()));
    for (const double strike : {90.0, 92.5})
        quote(OptionType::Put, strike).settlement = decimal::fromUnits(77, 1);
    quote(OptionType::Call, 120.0).ask = decimal::fromUnits(99, 1);
    show();
    QCOMPARE(changes.size(), 2);
    QCOMPARE(changes.at(0).at(0).toModelIndex().row(), rowOf(90.0));
    QCOMPARE(changes.at(0).at(1).toModelIndex().row(), rowOf(92.5));
    QCOMPARE(changes.at(1).at(0).toModelIndex().row(), rowOf(120.0));
    QCOMPARE(changes.at(1).at(1).toModelIndex().row(), rowOf(120.0));
    QCOMPARE(text(90.0, QuotesColumn::PutSettlement), QStringLiteral("7.70"));
    QCOMPARE(resets.size(), 0);
}

void tst_quotesmodel::sameNumbersChangeNothing()
{
    const QSignalSpy changes(m_model.get(), SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)));
    show();
    QCOMPARE(changes.size(), 0);
}

void tst_quotesmodel::strikesComeAndGo()
{
    const QPersistentModelIndex kept = m_model->index(rowOf(110.0), 0);
    const QSignalSpy resets(m_model.get(), SIGNAL(modelReset()));
    const QVector<QuotesRow> all = m_model->rows();
    const OptionChain before = m_chain;
    auto& quotes = m_chain.series.first().quotes;
    quotes.erase(std::remove_if(quotes.begin(), quotes.end(),
                     [](const OptionQuote& one) {
                         const double strike = one.strike.toDouble();
                         return strike < 70.0 || strike == 95.0 || strike > 130.0;
                     }),
        quotes.end());
    show();
    QCOMPARE(m_model->rowCount(), int(quotes.size()) / 2);
    QCOMPARE(rowOf(95.0), -1);
    QVERIFY(kept.isValid());
    QCOMPARE(kept.row(), rowOf(110.0));
    m_chain = before;
    show();
    QCOMPARE(m_model->rows(), all);
    QCOMPARE(kept.row(), rowOf(110.0));
    QCOMPARE(resets.size(), 0);
}

void tst_quotesmodel::anotherSeriesResets()
{
    const QSignalSpy resets(m_model.get(), SIGNAL(modelReset()));
    show(2);
    QCOMPARE(resets.size(), 1);
    show(2);
    QCOMPARE(resets.size(), 1);
}

void tst_quotesmodel::clears()
{
    m_model->clear();
    QCOMPARE(m_model->rowCount(), 0);
    QVERIFY(!m_model->hasValues(QuotesColumn::Strike));
    show();
    QCOMPARE(m_model->rowCount(), DeskTest::strikeCount);
}

PLOT2D_TEST_MAIN(tst_quotesmodel)
#include "tst_quotesmodel.moc"
