#include "desktest.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/desksession.h>
#include <window/desksettings.h>
#include <window/deskwindow.h>
#include <window/exportactions.h>
#include <window/viewhistory.h>
#include <window/windowsession.h>

#include <database/settings.h>

#include <QTemporaryDir>
#include <QToolBar>

#include <random>

Q_DECLARE_METATYPE(CommandLine)

/// What of the window comes back: every value, what no longer fits, and what the command line states.
class tst_windowsession : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyValueComesBack();
    void aFreshStartKeepsNoZoom();
    void fallsBack_data();
    void fallsBack();
    void zoomIsOfItsSeriesAlone();
    void seriesThatCannotBeShown();
    void commandLineWins_data();
    void commandLineWins();
    void survivesDamagedValues();

private:
    void start(const CommandLine& options = CommandLine());
    void stop();
    void store(const QString& key, const QVariant& value);
    void chooseSeries(const QString& baseCode);
    QString shownCode() const { return m_window->shownSeries()->data.baseCode; }
    View view() const;
    QString path(const char* name) const { return m_folder->filePath(QString::fromLatin1(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<DeskData> m_data;
    int m_first = 0;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<DeskWindow> m_window;
    std::unique_ptr<DeskSession> m_session;
};

void tst_windowsession::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_data = std::make_unique<DeskData>(QString());
    m_first = m_data->import(DeskTest::quotedChain(QStringLiteral("FIRST")), 0);
    m_data->import(DeskTest::quotedChain(QStringLiteral("SECOND")), 0);
}

void tst_windowsession::cleanup()
{
    stop();
    m_data.reset();
}

// As the program does.
void tst_windowsession::start(const CommandLine& options)
{
    m_settings = std::make_unique<Settings>(path("s.ini"));
    m_window = std::make_unique<DeskWindow>(*m_data, options.view);
    m_window->setAxisMode(options.axisMode);
    m_window->setSmileModel(options.smileModel);
    m_window->showSeries(m_first, SeriesFacts());
    m_window->resize(600, 400);
    m_session = std::make_unique<DeskSession>(m_settings.get());
    WindowSession::keep(*m_session, *m_window, *m_data, options);
    m_session->restore(WindowSession::statedBy(options));
    m_session->watch(m_window.get());
    m_window->show();
    QCoreApplication::processEvents();
}

void tst_windowsession::stop()
{
    if (m_window)
        m_window->close();
    m_session.reset();
    m_window.reset();
    m_settings.reset();
}

void tst_windowsession::store(const QString& key, const QVariant& value)
{
    Settings settings(path("s.ini"));
    settings.setValue(QStringLiteral("session/") + key, value);
    QVERIFY(settings.sync());
}

void tst_windowsession::chooseSeries(const QString& baseCode)
{
    const QVector<StoredSeries> all = m_data->series();
    for (const StoredSeries& series : all) {
        if (series.baseCode == baseCode)
            m_window->showSeries(series.futureIsinId, SeriesFacts());
    }
    QCOMPARE(shownCode(), baseCode);
}

View tst_windowsession::view() const
{
    const DeskPlot& plot = *m_window->plot();
    return {plot.axisScaleDiv(QwtPlot::xBottom).interval(), plot.axisScaleDiv(QwtPlot::yLeft).interval(),
        plot.autoScaleEnabled()};
}

void tst_windowsession::everyValueComesBack()
{
    start();
    m_window->resize(700, 500);
    m_window->move(20, 30);
    chooseSeries(QStringLiteral("SECOND"));
    m_window->setView(DeskView::Value);
    m_window->setAxisMode(AxisMode::PercentOfQuote);
    m_window->setGridVisible(false);
    m_window->setSmileModel(Pricing::SmileModel::Svi);
    const Pricing::OptionFilter filter{false, Pricing::OptionSide::Puts, 2};
    m_window->setFilter(filter);
    m_window->setImportFolder(m_folder->path());
    m_window->exports()->setFolder(m_folder->path());
    m_window->exports()->setScale(3);
    auto* const bar = m_window->findChild<QToolBar*>(QStringLiteral("seriesBar"));
    m_window->addToolBar(Qt::BottomToolBarArea, bar);
    DeskPlot& plot = *m_window->plot();
    Q_EMIT plot.autoScaleEnabled(false);
    plot.setAxisScale(QwtPlot::xBottom, 91.25, 107.5, 0.0);
    plot.setAxisScale(QwtPlot::yLeft, 1.5, 9.25, 0.0);
    Q_EMIT plot.updateAxisLabels();
    const View before = view();
    stop();

    start();
    QCOMPARE(m_window->size(), QSize(700, 500));
    QCOMPARE(m_window->pos(), QPoint(20, 30));
    QCOMPARE(shownCode(), QStringLiteral("SECOND"));
    QCOMPARE(m_window->view(), DeskView::Value);
    QCOMPARE(m_window->axisMode(), AxisMode::PercentOfQuote);
    QVERIFY(!m_window->isGridVisible());
    QCOMPARE(m_window->smileModel(), Pricing::SmileModel::Svi);
    QVERIFY(m_window->filter() == filter);
    QCOMPARE(m_window->importFolder(), m_folder->path());
    QCOMPARE(m_window->exports()->folder(), m_folder->path());
    QCOMPARE(m_window->exports()->scale(), 3);
    QCOMPARE(m_window->toolBarArea(m_window->findChild<QToolBar*>(QStringLiteral("seriesBar"))),
        Qt::BottomToolBarArea);
    QVERIFY(view() == before);
    QVERIFY(!view().autoScale);
    QVERIFY(view().values == before.values);

    // And once more, without a change.
    stop();
    start();
    QVERIFY(view() == before);
    QCOMPARE(m_window->size(), QSize(700, 500));
}

// The range that a series begins with follows its prices.
void tst_windowsession::aFreshStartKeepsNoZoom()
{
    start();
    const View first = view();
    Q_EMIT m_window->plot()->autoScaleEnabled(false);
    stop();
    QCOMPARE(Settings(path("s.ini")).value(QStringLiteral("session/zoom")).toStringList().size(), 8);
    start();
    QVERIFY(!view().autoScale);
    m_window->plot()->resetView();
    QVERIFY(view() == first);
    stop();
    QVERIFY(Settings(path("s.ini")).value(QStringLiteral("session/zoom")).toStringList().isEmpty());
}

void tst_windowsession::fallsBack_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char* name, const char* key, const QVariant& value) {
        QTest::newRow(name) << QString::fromLatin1(key) << value;
    };
    row("series that is gone", "series", QStringList{"GONE", "2024-04-02"});
    row("expiry that is gone", "series", QStringList{"SECOND", "2030-01-01"});
    row("series of one text", "series", QStringLiteral("SECOND"));
    row("series as bytes", "series", QByteArray("\0\xff", 2));
    row("view", "view", QStringLiteral("gamma"));
    row("smile", "smile", QStringLiteral("cubic"));
    row("filter", "filter", QStringLiteral("otm all of them"));
    row("axis", "axis", 17);
    row("grid", "grid", QStringList{"a", "b"});
    row("scale too large", "exportScale", QStringLiteral("100000"));
    row("scale no number", "exportScale", QStringLiteral("four"));
    row("folder that is gone", "importFolder", QStringLiteral("/none/at/all"));
    row("export folder that is gone", "exportFolder", QStringLiteral("/none/at/all"));
    row("folder that is a file", "importFolder", QStringLiteral("/etc/passwd"));
    row("place", "place", QStringLiteral("everywhere"));
    row("docks without their sum", "docks", QByteArray("\0\0\0\xff\0\0\0\0\xfd", 9));
    row("docks with a wrong sum", "docks", QStringList{"00", "AAAA/wAAAAD9"});
    row("zoom not finite", "zoom",
        QStringList{"FIRST", "2024-04-02", "volatility", "nan", "110", "0.2", "0.4", "auto"});
    row("zoom of another series", "zoom",
        QStringList{"SECOND", "2024-04-02", "volatility", "90", "110", "0.2", "0.4", "auto"});
    row("zoom of another expiry", "zoom",
        QStringList{"FIRST", "2024-05-02", "volatility", "90", "110", "0.2", "0.4", "auto"});
    row("zoom of another view", "zoom",
        QStringList{"FIRST", "2024-04-02", "value", "90", "110", "0.2", "0.4", "auto"});
    row("zoom elsewhere", "zoom",
        QStringList{"FIRST", "2024-04-02", "volatility", "900", "1100", "0.2", "0.4", "auto"});
}

void tst_windowsession::fallsBack()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    start();
    const View first = view();
    const QImage before = m_window->grab().toImage();
    stop();
    QVERIFY(QFile::remove(path("s.ini")));
    store(key, value);
    start();
    QCOMPARE(shownCode(), QStringLiteral("FIRST"));
    QCOMPARE(m_window->view(), DeskView::Volatility);
    QCOMPARE(m_window->axisMode(), AxisMode::Price);
    QVERIFY(m_window->isGridVisible());
    QCOMPARE(m_window->importFolder(), QString());
    QCOMPARE(m_window->exports()->folder(), QString());
    QCOMPARE(m_window->exports()->scale(), 1);
    QVERIFY(view() == first);
    QCOMPARE(m_window->grab().toImage(), before);
}

void tst_windowsession::zoomIsOfItsSeriesAlone()
{
    start();
    m_window->plot()->setAxisScale(QwtPlot::xBottom, 91.25, 107.5, 0.0);
    Q_EMIT m_window->plot()->updateAxisLabels();
    stop();
    CommandLine options;
    options.statesView = true;
    options.view = DeskView::Value;
    start(options);
    QVERIFY(view().prices != QwtInterval(91.25, 107.5));
    m_window->setView(DeskView::Volatility);
    stop();
    store(QStringLiteral("zoom"),
        QStringList{"FIRST", "2024-04-02", "volatility", "91.25", "107.5", "0.2", "0.4", "auto"});
    start();
    QVERIFY(view().prices == QwtInterval(91.25, 107.5));
    QVERIFY(view().autoScale);
}

// Without a put no forward comes of its prices.
void tst_windowsession::seriesThatCannotBeShown()
{
    OptionChain chain = DeskTest::chain(QStringLiteral("TEST"));
    OptionSeries calls = chain.series.first();
    calls.expiry = QDate(2024, 6, 21);
    calls.quotes.erase(std::remove_if(calls.quotes.begin(), calls.quotes.end(),
                           [](const OptionQuote& quote) { return quote.type == OptionType::Put; }),
        calls.quotes.end());
    chain.series.append(calls);
    m_data->import(chain, 0);
    store(QStringLiteral("series"), QStringList{"TEST", "2024-06-21"});
    start();
    QCOMPARE(shownCode(), QStringLiteral("FIRST"));
    stop();
    store(QStringLiteral("series"), QStringList{"TEST", "2024-04-02"});
    start();
    QCOMPARE(shownCode(), QStringLiteral("TEST"));
}

void tst_windowsession::commandLineWins_data()
{
    QTest::addColumn<CommandLine>("options");
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("view");
    QTest::addColumn<int>("axis");
    QTest::addColumn<QSize>("size");
    const int value = int(DeskView::Value);
    const int percent = int(AxisMode::PercentOfQuote);
    const QSize stored(700, 500);
    const QSize usual(600, 400);
    CommandLine none;
    QTest::newRow("nothing stated") << none << "SECOND" << value << percent << stored;
    CommandLine view;
    view.statesView = true;
    QTest::newRow("view") << view << "SECOND" << int(DeskView::Volatility) << percent << stored;
    CommandLine axis;
    axis.statesAxisMode = true;
    QTest::newRow("axis") << axis << "SECOND" << value << int(AxisMode::Price) << stored;
    CommandLine smile;
    smile.statesSmileModel = true;
    QTest::newRow("smile") << smile << "SECOND" << value << percent << stored;
    CommandLine size;
    size.statesSize = true;
    QTest::newRow("size") << size << "SECOND" << value << percent << usual;
    CommandLine chain;
    chain.chainFile = QStringLiteral("c.csv");
    QTest::newRow("chain") << chain << "FIRST" << value << percent << stored;
    CommandLine expiry;
    expiry.expiry = QDate(2024, 4, 2);
    QTest::newRow("expiry") << expiry << "FIRST" << value << percent << stored;
    CommandLine file;
    file.exportFiles << QStringLiteral("a.png");
    QTest::newRow("a file instead of a window") << file << "SECOND" << value << percent << usual;
}

void tst_windowsession::commandLineWins()
{
    store(QStringLiteral("series"), QStringList{"SECOND", "2024-04-02"});
    store(QStringLiteral("view"), QStringLiteral("value"));
    store(QStringLiteral("axis"), QStringLiteral("percent"));
    store(QStringLiteral("smile"), QStringLiteral("sabr"));
    store(QStringLiteral("place"), QStringList{"20", "30", "700", "500", "normal"});
    QFETCH(CommandLine, options);
    start(options);
    QTEST(shownCode(), "code");
    QTEST(int(m_window->view()), "view");
    QTEST(int(m_window->axisMode()), "axis");
    QCOMPARE(m_window->smileModel(),
        options.statesSmileModel ? Pricing::SmileModel::Spline : Pricing::SmileModel::Sabr);
    QTEST(m_window->size(), "size");
}

// Bits that have turned over, and files that end early.
void tst_windowsession::survivesDamagedValues()
{
    start();
    m_window->plot()->setAxisScale(QwtPlot::xBottom, 91.25, 107.5, 0.0);
    Q_EMIT m_window->plot()->updateAxisLabels();
    stop();
    QFile file(path("s.ini"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray good = file.readAll();
    file.close();
    constexpr unsigned seed = 90210;
    std::mt19937_64 random(seed);
    for (int round = 0; round < 60; ++round) {
        QByteArray damaged = good;
        if (round % 3 == 0)
            damaged.truncate(int(random() % quint64(good.size())));
        for (int i = 0; i < round % 5; ++i) {
            const int place = int(random() % quint64(std::max(1, damaged.size())));
            if (place < damaged.size())
                damaged[place] = char(damaged.at(place) ^ (1 << (random() % 8)));
        }
        DeskTest::write(path("s.ini"), damaged);
        // As the program does with a file that is none.
        QVERIFY2(DeskSettings(path("s.ini")).host(),
            qPrintable(QStringLiteral("seed %1, round %2").arg(seed).arg(round)));
        start();
        QVERIFY2(m_window->shownSeries().has_value(),
            qPrintable(QStringLiteral("seed %1, round %2").arg(seed).arg(round)));
        const QwtInterval prices = view().prices;
        QVERIFY(prices.isValid() && prices.width() < 1000.0);
        stop();
    }
}

PLOT2D_TEST_MAIN(tst_windowsession)
#include "tst_windowsession.moc"
