#include "choosingdesk.h"
#include "desktest.h"
#include "support/testmain.h"

#include <qwt_plot_marker.h>

Q_DECLARE_METATYPE(DeskView)
Q_DECLARE_METATYPE(ChoosingDesk::Keeping)

/// Which curves the user hides, over series, views, live updates and restarts.
class tst_curvechoices : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_desk = std::make_unique<ChoosingDesk>(); }
    void cleanup() { m_desk.reset(); }
    void hiddenCurves_data();
    void hiddenCurves();
    void hiddenCurvesAsStored();
    void viewsDoNotMeddle();
    void absentCurvesAreRemembered();
    void curveThatComesBack_data();
    void curveThatComesBack();
    void withoutSettings();
    void nothingIsStoredWithoutAChoice();
    void strangeState_data();
    void strangeState();

private:
    std::unique_ptr<ChoosingDesk> m_desk;
};

namespace {

const QString smile = QStringLiteral("Smile");
const QString bid = QStringLiteral("Bid volatility");
const QString volatilityKey = QStringLiteral("volatility/legendItemKeys");

}

void tst_curvechoices::hiddenCurves_data()
{
    QTest::addColumn<DeskView>("view");
    QTest::addColumn<QString>("title");
    for (const char* title :
        {"Smile", "Stated volatility", "Bid volatility", "Ask volatility", "Implied volatility", "Forward"})
        QTest::addRow("volatility, %s", title) << DeskView::Volatility << QString::fromLatin1(title);
    for (const char* title : {"Call value", "Put value", "Market price", "Forward"})
        QTest::addRow("value, %s", title) << DeskView::Value << QString::fromLatin1(title);
}

void tst_curvechoices::hiddenCurves()
{
    QFETCH(DeskView, view);
    QFETCH(QString, title);
    m_desk->start(view);
    QCOMPARE(m_desk->hidden(), QStringList());
    m_desk->legend->setCheckBoxChecked(title, false);
    QCOMPARE(m_desk->hidden(), QStringList(title));
    m_desk->start(view);
    QCOMPARE(m_desk->hidden(), QStringList(title));
    QVERIFY(m_desk->plot->attachedMarkers().isEmpty()
        || m_desk->plot->attachedMarkers().first()->isVisible()
            != (m_desk->curve(title)->dataType() == PriceBased2dPlotCurve::markedType));
    m_desk->show(view, m_desk->quoted);
    QCOMPARE(m_desk->hidden(), QStringList(title));
    m_desk->legend->setCheckBoxChecked(title, true);
    m_desk->start(view);
    QCOMPARE(m_desk->hidden(), QStringList());
}

void tst_curvechoices::hiddenCurvesAsStored()
{
    m_desk->start(DeskView::Volatility);
    m_desk->legend->setCheckBoxChecked(bid, false);
    QCOMPARE(m_desk->settings->value(volatilityKey).toByteArray().toHex(' '),
        QByteArray("00 00 00 01 00 00 00 05 00 00 00 06 "
                   "01 01 00 00 00 00 01 00 00 00 00 0b 01 01 00 00 00 0c "
                   "01 01 00 00 00 0d 01 01 00 00 00 09 01 01 00 00 00 0a"));
}

// Bids have the data type of calls, asks that of puts.
void tst_curvechoices::viewsDoNotMeddle()
{
    m_desk->start(DeskView::Volatility);
    m_desk->legend->setCheckBoxChecked(bid, false);
    m_desk->show(DeskView::Value, m_desk->quoted);
    QCOMPARE(m_desk->hidden(), QStringList());
    m_desk->start(DeskView::Value);
    QCOMPARE(m_desk->hidden(), QStringList());
    m_desk->legend->setCheckBoxChecked(QStringLiteral("Put value"), false);
    m_desk->start(DeskView::Volatility);
    QCOMPARE(m_desk->hidden(), QStringList(bid));
    m_desk->show(DeskView::Value, m_desk->quoted);
    QCOMPARE(m_desk->hidden(), QStringList(QStringLiteral("Put value")));
}

void tst_curvechoices::absentCurvesAreRemembered()
{
    m_desk->start(DeskView::Volatility);
    m_desk->legend->setCheckBoxChecked(bid, false);
    m_desk->show(DeskView::Volatility, m_desk->plain);
    QVERIFY(!m_desk->curve(bid));
    m_desk->legend->setCheckBoxChecked(smile, false);
    m_desk->start(DeskView::Volatility);
    QCOMPARE(m_desk->hidden(), QStringList({bid, smile}));
}

void tst_curvechoices::curveThatComesBack_data()
{
    QTest::addColumn<ChoosingDesk::Keeping>("keeping");
    QTest::newRow("settings") << ChoosingDesk::Keeping::InSettings;
    QTest::newRow("no settings") << ChoosingDesk::Keeping::Nowhere;
}

void tst_curvechoices::curveThatComesBack()
{
    QFETCH(ChoosingDesk::Keeping, keeping);
    m_desk->start(DeskView::Volatility, keeping);
    m_desk->legend->setCheckBoxChecked(bid, false);
    const ShownSeries whole = m_desk->quotedSeries();
    ShownSeries series = whole;
    for (OptionQuote& quote : series.data.options.quotes)
        quote.bid.reset();
    m_desk->plot->updateSeries(series);
    QVERIFY(!m_desk->curve(bid));
    QCOMPARE(m_desk->hidden(), QStringList());
    m_desk->legend->setCheckBoxChecked(smile, false);
    m_desk->plot->updateSeries(whole);
    QVERIFY(m_desk->curve(bid));
    QStringList both = m_desk->hidden();
    both.sort();
    QCOMPARE(both, QStringList({bid, smile}));
}

void tst_curvechoices::withoutSettings()
{
    m_desk->start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
    m_desk->legend->setCheckBoxChecked(bid, false);
    m_desk->show(DeskView::Volatility, m_desk->plain);
    m_desk->show(DeskView::Volatility, m_desk->quoted);
    QCOMPARE(m_desk->hidden(), QStringList(bid));
    m_desk->start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
    QCOMPARE(m_desk->hidden(), QStringList());
}

void tst_curvechoices::nothingIsStoredWithoutAChoice()
{
    m_desk->start(DeskView::Volatility);
    m_desk->legend->setCheckBoxChecked(bid, false);
    m_desk->settings->sync();
    const QString file = m_desk->settings->fileName();
    QFile before(file);
    QVERIFY(before.open(QIODevice::ReadOnly));
    const QByteArray content = before.readAll();
    QVERIFY(!content.isEmpty());

    // Another run hides it as well, which is no choice of its user's.
    QVERIFY(before.remove());
    DeskTest::write(file, content + "\n; a remark\n");
    m_desk->start(DeskView::Volatility);
    QCOMPARE(m_desk->hidden(), QStringList(bid));
    m_desk->show(DeskView::Value, m_desk->quoted);
    m_desk->start(DeskView::Volatility);
    QFile after(file);
    QVERIFY(after.open(QIODevice::ReadOnly));
    QCOMPARE(after.readAll(), content + "\n; a remark\n");
}

void tst_curvechoices::strangeState_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QVariant(QStringLiteral("no state"));
    QTest::newRow("bytes") << QVariant(QByteArray(1000, '\xff'));
    QTest::newRow("two thousand million")
        << QVariant(QByteArray::fromHex("000000010000000577359400 010100000009"));
    QTest::newRow("other version") << QVariant(QByteArray::fromHex("000000010000000600000001 010000000009"));
}

void tst_curvechoices::strangeState()
{
    QFETCH(QVariant, value);
    {
        Settings settings(m_desk->settingsFile());
        settings.setValue(volatilityKey, value);
    }
    m_desk->start(DeskView::Volatility);
    QCOMPARE(m_desk->hidden(), QStringList());
    m_desk->legend->setCheckBoxChecked(smile, false);
    m_desk->start(DeskView::Volatility);
    QCOMPARE(m_desk->hidden(), QStringList(smile));
}

PLOT2D_TEST_MAIN(tst_curvechoices)
#include "tst_curvechoices.moc"
