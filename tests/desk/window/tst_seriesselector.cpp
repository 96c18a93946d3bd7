#include "desktest.h"
#include "livetable.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/elidedlabel.h>
#include <window/seriesselector.h>
#include <window/storedserieswatch.h>

#include <database/table.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QComboBox>

/// The boxes that choose a series, by themselves and in a window whose table changes.
class tst_seriesselector : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void selectsByTheFuture();
    void selectsNothingUnknown();
    void keepsTheItemsThatStay();
    void ordersWhatComes();
    void choosesTheFirstExpiryOfACode();
    void showsASeriesThatComes();
    void choosesASeriesThatCame();
    void dropsASeriesThatGoes();
    void dropsTheShownSeries();
    void refillsOncePerTurn();

private:
    void openWindow();
    QStringList items(const char* box) const;
    QString current(const char* box) const { return find(box)->currentText(); }
    QComboBox* find(const char* box) const;

    std::unique_ptr<SeriesSelector> m_selector;
    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    int m_futureIsinId = 0;
};

namespace {

StoredSeries series(const char* baseCode, int month, int futureIsinId)
{
    StoredSeries result;
    result.baseCode = QString::fromLatin1(baseCode);
    result.expiry = QDate(2024, month, 19);
    result.futureIsinId = futureIsinId;
    return result;
}

}

void tst_seriesselector::init()
{
    m_selector = std::make_unique<SeriesSelector>();
}

void tst_seriesselector::cleanup()
{
    m_selector.reset();
    m_window.reset();
    m_data.reset();
}

void tst_seriesselector::openWindow()
{
    m_selector.reset();
    m_data = std::make_unique<DeskData>(QString());
    m_futureIsinId = m_data->import(DeskTest::chain(), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->setAttribute(Qt::WA_DontShowOnScreen);
    m_window->resize(1000, 600);
    m_window->showSeries(m_futureIsinId, SeriesFacts());
    m_window->show();
    QCoreApplication::processEvents();
}

QComboBox* tst_seriesselector::find(const char* box) const
{
    const QWidget* parent = m_window ? static_cast<QWidget*>(m_window.get()) : m_selector.get();
    return parent->findChild<QComboBox*>(QString::fromLatin1(box));
}

QStringList tst_seriesselector::items(const char* box) const
{
    QStringList texts;
    for (int i = 0; i < find(box)->count(); ++i)
        texts.append(find(box)->itemText(i));
    return texts;
}

void tst_seriesselector::selectsByTheFuture()
{
    const QSignalSpy chosen(m_selector.get(), SIGNAL(chosen(int)));
    const QVector<StoredSeries> all{
        series("A", 4, 1), series("B", 4, 2), series("B", 5, 3), series("C", 4, 4)};
    m_selector->setSeries(all, 3);
    QCOMPARE(items("baseCodes"), (QStringList{"A", "B", "C"}));
    QCOMPARE(current("baseCodes"), QStringLiteral("B"));
    QCOMPARE(items("expiries"), (QStringList{"19 Apr 2024", "19 May 2024"}));
    QCOMPARE(current("expiries"), QStringLiteral("19 May 2024"));
    m_selector->setSeries(all, 4);
    QCOMPARE(current("baseCodes"), QStringLiteral("C"));
    QCOMPARE(items("expiries"), QStringList{"19 Apr 2024"});
    QCOMPARE(find("expiries")->currentData().toInt(), 4);
    m_selector->setSeries({}, 0);
    QVERIFY(items("baseCodes").isEmpty());
    QVERIFY(items("expiries").isEmpty());
    QCOMPARE(chosen.size(), 0);
}

void tst_seriesselector::selectsNothingUnknown()
{
    m_selector->setSeries({series("A", 4, 1), series("B", 4, 2)}, 2);
    m_selector->setSeries({series("A", 4, 1), series("B", 5, 3)}, 2);
    QCOMPARE(current("baseCodes"), QStringLiteral("B"));
    QCOMPARE(items("expiries"), QStringList{"19 May 2024"});
    QCOMPARE(find("expiries")->currentIndex(), -1);
    m_selector->setSeries({series("A", 4, 1)}, 2);
    QCOMPARE(items("baseCodes"), QStringList{"A"});
    QCOMPARE(find("baseCodes")->currentIndex(), -1);
    QVERIFY(items("expiries").isEmpty());
}

void tst_seriesselector::keepsTheItemsThatStay()
{
    m_selector->setSeries({series("B", 4, 2), series("B", 6, 3), series("D", 4, 4)}, 3);
    const QAbstractItemModel* model = find("expiries")->model();
    const QPersistentModelIndex shown(model->index(1, 0));
    const QSignalSpy removed(model, SIGNAL(rowsRemoved(QModelIndex, int, int)));
    m_selector->setSeries(
        {series("A", 4, 1), series("B", 4, 2), series("B", 5, 5), series("B", 6, 3), series("D", 4, 4)}, 3);
    QCOMPARE(removed.size(), 0);
    QCOMPARE(shown.row(), 2);
    QCOMPARE(find("expiries")->currentIndex(), 2);
    QCOMPARE(items("baseCodes"), (QStringList{"A", "B", "D"}));
    m_selector->setSeries({series("B", 6, 3)}, 3);
    QCOMPARE(removed.size(), 2);
    QCOMPARE(shown.row(), 0);
    QCOMPARE(items("baseCodes"), QStringList{"B"});
}

void tst_seriesselector::ordersWhatComes()
{
    m_selector->setSeries({series("A", 5, 1), series("A", 7, 2), series("A", 9, 3)}, 2);
    // One has got another expiry, one has gone, two have come; two series of one expiry stay apart.
    m_selector->setSeries({series("A", 4, 9), series("A", 5, 1), series("A", 5, 8), series("A", 10, 3)}, 8);
    QCOMPARE(items("expiries"), (QStringList{"19 Apr 2024", "19 May 2024", "19 May 2024", "19 Oct 2024"}));
    QVector<int> ids;
    for (int i = 0; i < find("expiries")->count(); ++i)
        ids.append(find("expiries")->itemData(i).toInt());
    QCOMPARE(ids, (QVector<int>{9, 1, 8, 3}));
    QCOMPARE(find("expiries")->currentIndex(), 2);
}

void tst_seriesselector::choosesTheFirstExpiryOfACode()
{
    const QSignalSpy chosen(m_selector.get(), SIGNAL(chosen(int)));
    m_selector->setSeries({series("A", 4, 1), series("B", 4, 2), series("B", 5, 3)}, 1);
    find("baseCodes")->setCurrentIndex(1);
    Q_EMIT find("baseCodes")->activated(1);
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.first().first().toInt(), 2);
    QCOMPARE(current("expiries"), QStringLiteral("19 Apr 2024"));
}

void tst_seriesselector::showsASeriesThatComes()
{
    openWindow();
    DeskPlot& plot = *m_window->plot();
    plot.setAxisScale(QwtPlot::xBottom, 92.0, 109.0, 0.0);
    plot.resetAutoScale();
    plot.replot();
    const QList<PriceBased2dPlotCurve*> curves = plot.attachedCurves(-1);
    const QString title = plot.title().text();

    LiveTable::addSeries(m_futureIsinId, QStringLiteral("FRESH"));
    LiveTable::addSeries(m_futureIsinId, QStringLiteral("TEST"));
    QCoreApplication::processEvents();
    QCOMPARE(items("baseCodes"), (QStringList{"FRESH", "TEST"}));
    QCOMPARE(current("baseCodes"), QStringLiteral("TEST"));
    QCOMPARE(items("expiries"), (QStringList{"2 Apr 2024", "2 Apr 2024"}));
    QCOMPARE(find("expiries")->currentData().toInt(), m_futureIsinId);
    QCOMPARE(plot.attachedCurves(-1), curves);
    QCOMPARE(plot.title().text(), title);
    QCOMPARE(plot.axisScaleDiv(QwtPlot::xBottom).interval(), QwtInterval(92.0, 109.0));
    QVERIFY(!plot.autoScaleEnabled());
}

void tst_seriesselector::choosesASeriesThatCame()
{
    openWindow();
    const int fresh = LiveTable::addSeries(m_futureIsinId, QStringLiteral("FRESH"));
    LiveTable::setQuote(fresh, 104.0);
    QCoreApplication::processEvents();
    find("baseCodes")->setCurrentIndex(0);
    Q_EMIT find("baseCodes")->activated(0);
    QCOMPARE(m_window->shownSeries()->data.baseCode, QStringLiteral("FRESH"));
    QCOMPARE(m_window->shownSeries()->market.forward, 104.0);
    QCOMPARE(items("baseCodes"), (QStringList{"FRESH", "TEST"}));
}

void tst_seriesselector::dropsASeriesThatGoes()
{
    openWindow();
    const int fresh = LiveTable::addSeries(m_futureIsinId, QStringLiteral("FRESH"));
    QCoreApplication::processEvents();
    const QList<PriceBased2dPlotCurve*> curves = m_window->plot()->attachedCurves(-1);
    LiveTable::removeSeries(fresh);
    QCOMPARE(items("baseCodes").size(), 2);
    QCoreApplication::processEvents();
    QCOMPARE(items("baseCodes"), QStringList{"TEST"});
    QCOMPARE(find("expiries")->currentData().toInt(), m_futureIsinId);
    QCOMPARE(m_window->plot()->attachedCurves(-1), curves);
}

void tst_seriesselector::dropsTheShownSeries()
{
    openWindow();
    LiveTable::addSeries(m_futureIsinId, QStringLiteral("FRESH"));
    const QVector<Record> rows = LiveTable::removeSeries(m_futureIsinId);
    QTRY_VERIFY(!m_window->shownSeries().has_value());
    QCOMPARE(items("baseCodes"), QStringList{"FRESH"});
    QCOMPARE(find("baseCodes")->currentIndex(), -1);
    QCOMPARE(find("expiries")->count(), 0);
    QCOMPARE(
        m_window->findChild<ElidedLabel*>()->fullText(), QStringLiteral("the series is not stored any more"));

    rows.first().table()->appendRows(rows);
    QTRY_VERIFY(m_window->shownSeries().has_value());
    QCOMPARE(current("baseCodes"), QStringLiteral("TEST"));
    QCOMPARE(find("expiries")->currentData().toInt(), m_futureIsinId);
}

void tst_seriesselector::refillsOncePerTurn()
{
    openWindow();
    const QSignalSpy refills(m_window->findChild<StoredSeriesWatch*>(), SIGNAL(changed()));
    for (int turn = 1; turn <= 3; ++turn) {
        for (int i = 0; i < 5; ++i)
            LiveTable::addSeries(m_futureIsinId, QStringLiteral("S%1%2").arg(turn).arg(i));
        QCOMPARE(items("baseCodes").size(), 5 * (turn - 1) + 1);
        QCoreApplication::processEvents();
        QCOMPARE(refills.size(), turn);
        QCOMPARE(items("baseCodes").size(), 5 * turn + 1);
    }
}

PLOT2D_TEST_MAIN(tst_seriesselector)
#include "tst_seriesselector.moc"
