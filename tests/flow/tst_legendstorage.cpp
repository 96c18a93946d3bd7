#include "flow/legendplot.h"
#include "support/testmain.h"

#include <database/settings.h>

#include <QTemporaryDir>

#include <memory>

namespace {

const QString key = QStringLiteral("legendItemKeys");
const QString one = QStringLiteral("one");
const QString two = QStringLiteral("two");

}

/// store() and restore() of PriceBased2dPlotLegend.
class tst_legendstorage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void storedBytes();
    void noCurvesStoreNothing();
    void acrossARestart();
    void restored_data();
    void restored();
    void restoreIsAnnounced();
    void twoCurvesOfAType();
    void curveWithoutAnEntry_data();
    void curveWithoutAnEntry();
    void everyCurveIsTheOnlyOne();
    void otherValues_data();
    void otherValues();
    void plotOfAnotherClass();
    void listenerDeletesTheLegend();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<LegendPlot> m_host;

    std::unique_ptr<Settings> openSettings() const;
    bool isChecked(const QString& text) const;
};

void tst_legendstorage::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_legendstorage::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_legendstorage::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_settings = openSettings();
    m_host = std::make_unique<LegendPlot>();
}

std::unique_ptr<Settings> tst_legendstorage::openSettings() const
{
    return std::make_unique<Settings>(m_folder->filePath(QStringLiteral("settings.ini")));
}

void tst_legendstorage::cleanup()
{
    m_host.reset();
    m_settings.reset();
    m_folder.reset();
}

bool tst_legendstorage::isChecked(const QString& text) const
{
    bool found = false;
    const bool checked = m_host->legend->isCheckBoxChecked(text, &found);
    return checked && found;
}

void tst_legendstorage::storedBytes()
{
    m_host->add(one, 9);
    m_host->add(two, 12)->QwtPlotItem::setVisible(false);
    m_host->legend->store(*m_settings);
    const QVariant value = m_settings->value(key);
    QCOMPARE(value.userType(), int(QMetaType::QByteArray));
    QCOMPARE(value.toByteArray().toHex(),
        QByteArray("000000010000000500000002010100000009"
                   "01000000000c"));
}

void tst_legendstorage::noCurvesStoreNothing()
{
    m_host->legend->store(*m_settings);
    QVERIFY(!m_settings->value(key).isValid());
    m_settings->setValue(key, QByteArray("earlier"));
    m_host->legend->store(*m_settings);
    QCOMPARE(m_settings->value(key).toByteArray(), QByteArray("earlier"));
}

void tst_legendstorage::acrossARestart()
{
    const auto start = [this] {
        m_host = std::make_unique<LegendPlot>();
        connect(m_host->legend, SIGNAL(visibilityChanged(QString, bool)), &m_host->plot,
            SLOT(setCurveVisible(QString, bool)));
        m_host->add(one, 9);
        m_host->add(two, 12);
        m_host->legend->restore(*m_settings);
    };
    start();
    QVERIFY(isChecked(one) && isChecked(two));
    m_host->legend->setCheckBoxChecked(two, false);
    m_host->legend->store(*m_settings);
    m_settings.reset();
    m_settings = openSettings();
    start();
    QVERIFY(isChecked(one) && !isChecked(two));
    const auto* curve = m_host->plot.attachedCurves(12).value(0);
    QVERIFY(curve && !curve->isVisible());
    QCOMPARE(m_host->color(curve), QColor(Qt::darkGray));
    QCOMPARE(m_host->icon(curve), m_host->legend->resetIcons()[QwtSymbol::DTriangle].toImage());
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList(two));
    m_host->legend->setCheckBoxChecked(two, true);
    m_host->legend->store(*m_settings);
    start();
    QVERIFY(isChecked(one) && isChecked(two));
}

void tst_legendstorage::restored_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<bool>("oneIsChecked");
    QTest::addColumn<bool>("twoIsChecked");
    // The entry "one", of type 9, is checked before, "two", of type 12, is not.
    QTest::newRow("both") << QByteArray("000000010000000500000002 010000000009 01010000000c") << false
                          << true;
    QTest::newRow("as they are") << QByteArray("000000010000000500000002 010100000009 01000000000c") << true
                                 << false;
    QTest::newRow("first of a type") << QByteArray("000000010000000500000002 010100000009 010000000009")
                                     << true << false;
    QTest::newRow("not valid") << QByteArray("000000010000000500000001 000000000009") << true << false;
    QTest::newRow("other version") << QByteArray("000000010000000400000001 010000000009") << true << false;
    QTest::newRow("type not attached")
        << QByteArray("000000010000000500000001 01000000000a") << true << false;
    QTest::newRow("cut short") << QByteArray("000000010000000500000002 010000000009 0101") << false << false;
    QTest::newRow("count too high") << QByteArray("00000001000000057fffffff 010000000009") << false << false;
}

void tst_legendstorage::restored()
{
    QFETCH(QByteArray, hex);
    m_host->add(one, 9);
    m_host->add(two, 12);
    m_host->legend->setCheckBoxChecked(two, false);
    m_settings->setValue(key, QByteArray::fromHex(hex));
    m_host->legend->restore(*m_settings);
    QTEST(isChecked(one), "oneIsChecked");
    QTEST(isChecked(two), "twoIsChecked");
}

void tst_legendstorage::restoreIsAnnounced()
{
    m_host->add(one, 9);
    m_settings->setValue(key, QByteArray::fromHex("000000010000000500000001010000000009"));
    QSignalSpy spy(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));
    m_host->legend->restore(*m_settings);
    m_host->legend->restore(*m_settings);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first(), QVariantList({one, false}));
}

void tst_legendstorage::twoCurvesOfAType()
{
    m_host->add(one, 9);
    m_host->add(two, 9);
    m_settings->setValue(key, QByteArray::fromHex("000000010000000500000001010000000009"));
    m_host->legend->restore(*m_settings);
    QVERIFY(isChecked(one) && isChecked(two));
}

void tst_legendstorage::curveWithoutAnEntry_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::newRow("hidden") << QByteArray("000000010000000500000002 010000000009 01000000000a");
    QTest::newRow("visible") << QByteArray("000000010000000500000002 010100000009 01000000000a");
}

void tst_legendstorage::curveWithoutAnEntry()
{
    QFETCH(QByteArray, hex);
    PriceBased2dPlotCurve* unlisted = m_host->add(one, 9);
    unlisted->detach();
    unlisted->setItemAttribute(QwtPlotItem::Legend, false);
    unlisted->attach(&m_host->plot);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_host->add(two, 10);
    m_settings->setValue(key, QByteArray::fromHex(hex));
    m_host->legend->restore(*m_settings);
    QVERIFY(!isChecked(two));
    QVERIFY(unlisted->isVisible());
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList(two));
}

void tst_legendstorage::everyCurveIsTheOnlyOne()
{
    m_host->add(one, 9);
    m_settings->setValue(key, QByteArray::fromHex("0000000100000005000000010100ffffffff"));
    m_host->legend->restore(*m_settings);
    QVERIFY(!isChecked(one));
}

void tst_legendstorage::otherValues_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("none") << QVariant();
    QTest::newRow("empty") << QVariant(QByteArray());
    QTest::newRow("text") << QVariant(QStringLiteral("text that is no state at all"));
    QTest::newRow("number") << QVariant(5);
    QTest::newRow("list") << QVariant(QStringList({one, two}));
}

void tst_legendstorage::otherValues()
{
    QFETCH(QVariant, value);
    m_host->add(one, 9);
    if (value.isValid())
        m_settings->setValue(key, value);
    m_host->legend->restore(*m_settings);
    QVERIFY(isChecked(one));
}

void tst_legendstorage::plotOfAnotherClass()
{
    QwtPlot plot;
    PriceBased2dPlotLegend legend(&plot);
    legend.store(*m_settings);
    QVERIFY(!m_settings->value(key).isValid());
    m_settings->setValue(key, QByteArray::fromHex("000000010000000500000001010000000009"));
    legend.restore(*m_settings);
}

void tst_legendstorage::listenerDeletesTheLegend()
{
    m_host->add(one, 9);
    m_host->add(two, 12);
    m_settings->setValue(key, QByteArray::fromHex("000000010000000500000002010000000009 01000000000c"));
    int calls = 0;
    connect(m_host->legend, &PriceBased2dPlotLegend::visibilityChanged, this, [&] {
        ++calls;
        delete m_host->legend;
    });
    m_host->legend->restore(*m_settings);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(calls, 1);
}

PLOT2D_TEST_MAIN(tst_legendstorage)
#include "tst_legendstorage.moc"
