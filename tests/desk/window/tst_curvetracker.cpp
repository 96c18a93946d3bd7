#include "desktest.h"
#include "livetable.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/seriesfollower.h>

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpicker.h>

#include <qwt_scale_map.h>

/// The read-out at a mouse that stands still while the plot changes under it.
class tst_curvetracker : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void followsTheQuote();
    void followsTheValues();
    void followsTheScales();
    void followsTheUnitOfTheAxis();
    void showsTheNewText();
    void goesWithItsCurve();
    void staysAwayWithTheMouse_data();
    void staysAwayWithTheMouse();
    void givesWayToTheKeys();

private:
    DeskPlot& plot() const { return *m_window->plot(); }
    PriceBased2dPlotPicker& picker() const { return *plot().findChild<PriceBased2dPlotPicker*>(); }
    QStringList lines() const { return picker().trackerText(QPoint()).text().split(QLatin1Char('\n')); }
    QVector<Record> options() const { return LiveTable::options(m_futureIsinId); }
    void moveMouse(double strike) const;
    void moveMarket(double quote) const;
    void check(const QString& title, bool checked) const;

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    std::unique_ptr<QSignalSpy> m_updates;
    int m_futureIsinId = 0;
};

namespace {

const auto points = QStringLiteral("Implied volatility");
const auto smile = QStringLiteral("Smile");

}

void tst_curvetracker::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_futureIsinId = m_data->import(DeskTest::chain(), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->setAttribute(Qt::WA_DontShowOnScreen);
    m_window->resize(1000, 600);
    m_window->showSeries(m_futureIsinId, SeriesFacts());
    m_window->show();
    QCoreApplication::processEvents();
    m_updates = std::make_unique<QSignalSpy>(m_window->findChild<SeriesFollower*>(), SIGNAL(changed()));
    check(smile, false);
}

void tst_curvetracker::cleanup()
{
    m_updates.reset();
    m_window.reset();
    m_data.reset();
}

// To where the points have a strike in the test chains.
void tst_curvetracker::moveMouse(double strike) const
{
    const QPointF position(plot().canvasMap(QwtPlot::xBottom).transform(strike),
        plot().canvasMap(QwtPlot::yLeft).transform(DeskTest::volatility(strike)));
    QMouseEvent move(
        QEvent::MouseMove, position, position, QCursor::pos(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(plot().canvas(), &move);
}

// The volatilities stay.
void tst_curvetracker::moveMarket(double quote) const
{
    LiveTable::price(options(), quote, 0.0);
    LiveTable::setQuote(m_futureIsinId, quote);
}

void tst_curvetracker::check(const QString& title, bool checked) const
{
    plot().findChild<PriceBased2dPlotLegend*>()->setCheckBoxChecked(title, checked);
}

void tst_curvetracker::followsTheQuote()
{
    moveMouse(95.0);
    QCOMPARE(lines().value(1), QStringLiteral("Strike 95, -5 from the quote"));
    moveMarket(101.25);
    QTRY_COMPARE(m_updates->size(), 1);
    QCOMPARE(lines().value(1), QStringLiteral("Strike 95, -6.25 from the quote"));
    moveMarket(92.0);
    QTRY_COMPARE(m_updates->size(), 2);
    QCOMPARE(lines().value(1), QStringLiteral("Strike 95, +3 from the quote"));
}

void tst_curvetracker::followsTheValues()
{
    moveMouse(95.0);
    const auto value = [this] { return lines().value(2).remove(QLatin1Char('%')).toDouble(); };
    const double before = value();
    QVERIFY(std::abs(before - 100.0 * DeskTest::volatility(95.0)) < 0.2);
    LiveTable::price(options(), DeskTest::forward, 0.05);
    QTRY_COMPARE(m_updates->size(), 1);
    QCOMPARE(lines().value(0), points);
    QVERIFY2(std::abs(value() - before - 5.0) < 0.2, qPrintable(lines().value(2)));
}

// The mouse stands on the same pixel, over another strike.
void tst_curvetracker::followsTheScales()
{
    moveMouse(95.0);
    QCOMPARE(lines().value(1), QStringLiteral("Strike 95, -5 from the quote"));
    const QwtInterval prices = plot().axisScaleDiv(QwtPlot::xBottom).interval();
    plot().setAxisScale(QwtPlot::xBottom, prices.minValue() + 10.0, prices.maxValue() + 10.0, 0.0);
    plot().replot();
    QCOMPARE(lines().value(1), QStringLiteral("Strike 105, +5 from the quote"));
}

void tst_curvetracker::followsTheUnitOfTheAxis()
{
    moveMouse(95.0);
    plot().setAxisMode(AxisMode::PercentOfQuote);
    plot().replot();
    QCOMPARE(lines().value(1), QStringLiteral("Strike 95, -5% from the quote"));
}

// The picture is the one that a mouse gives that comes anew.
void tst_curvetracker::showsTheNewText()
{
    const auto picture = [this] {
        QCoreApplication::processEvents();
        return plot().canvas()->grab().toImage();
    };
    moveMouse(95.0);
    const QImage before = picture();
    moveMarket(93.0625);
    QTRY_COMPARE(m_updates->size(), 1);
    const QImage after = picture();
    QVERIFY(after != before);
    moveMouse(120.0);
    QVERIFY(picture() != after);
    moveMouse(95.0);
    QCOMPARE(picture(), after);
}

void tst_curvetracker::goesWithItsCurve()
{
    moveMouse(95.0);
    check(points, false);
    QCOMPARE(lines(), QStringList(QString()));
    check(smile, true);
    QCOMPARE(lines().value(0), smile);
}

void tst_curvetracker::staysAwayWithTheMouse_data()
{
    QTest::addColumn<bool>("beenThere");
    QTest::newRow("left") << true;
    QTest::newRow("never there") << false;
}

void tst_curvetracker::staysAwayWithTheMouse()
{
    QFETCH(bool, beenThere);
    if (beenThere) {
        moveMouse(95.0);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(plot().canvas(), &leave);
    }
    const QString text = lines().join(QLatin1Char('\n'));
    const QPointF position = picker().position();
    moveMarket(101.0);
    QTRY_COMPARE(m_updates->size(), 1);
    QCOMPARE(lines().join(QLatin1Char('\n')), text);
    QCOMPARE(picker().position(), position);
    QVERIFY(picker().trackerRect(picker().trackerFont()).isEmpty());
}

void tst_curvetracker::givesWayToTheKeys()
{
    moveMouse(95.0);
    QTest::keyClick(plot().canvas(), Qt::Key_F2);
    QCOMPARE(lines(), QStringList(QString()));
    moveMarket(101.0);
    QTRY_COMPARE(m_updates->size(), 1);
    QCOMPARE(lines(), QStringList(QString()));
    QTest::keyClick(plot().canvas(), Qt::Key_Escape);
    QCOMPARE(lines().value(1), QStringLiteral("Strike 95, -6 from the quote"));
}

PLOT2D_TEST_MAIN(tst_curvetracker)
#include "tst_curvetracker.moc"
