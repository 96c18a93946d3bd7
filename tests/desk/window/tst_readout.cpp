#include "desktest.h"
#include "livetable.h"
#include "support/testmain.h"

#include <window/curvewalk.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/readout.h>
#include <window/readoutitem.h>

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpicker.h>

#include <qwt_scale_map.h>

/// What is said of the points of the curves, at the mouse and by the keys.
class tst_readout : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void distanceInTheUnitOfTheAxis_data();
    void distanceInTheUnitOfTheAxis();
    void readsThePointAtTheCursor();
    void showsTheCursorsPointAfterAClick();
    void snapsToThePriceStep();
    void takesTheKeyboard();
    void beginsByItsKeys_data();
    void beginsByItsKeys();
    void takesItsKeysOnly_data();
    void takesItsKeysOnly();
    void marksNothingOutOfSight();
    void walksAlongACurve();
    void beginsAtTheCursor();
    void changesTheCurve();
    void ends_data();
    void ends();
    void followsUpdates();
    void drawsThePoint();

private:
    ReadOutItem& item() const;
    QString text() const { return item().text().text(); }
    void press(Qt::Key key) const { QTest::keyClick(m_plot->canvas(), key); }
    void moveMouse(const QPointF& sample) const;
    void showOnly(const QString& title) const;

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskPlot> m_plot;
    int m_futureIsinId = 0;
};

void tst_readout::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_futureIsinId = m_data->import(DeskTest::chain(), 0);
    m_plot = std::make_unique<DeskPlot>();
    m_plot->showSeries(m_futureIsinId, m_data->show(m_futureIsinId, {}), DeskView::Volatility);
    m_plot->setAttribute(Qt::WA_DontShowOnScreen);
    m_plot->resize(1000, 600);
    m_plot->show();
    QCoreApplication::processEvents();
}

void tst_readout::cleanup()
{
    m_plot.reset();
    m_data.reset();
}

ReadOutItem& tst_readout::item() const
{
    const QwtPlotItemList items = m_plot->itemList(QwtPlotItem::Rtti_PlotUserItem + 1);
    auto* found = dynamic_cast<ReadOutItem*>(items.value(0));
    if (!found)
        qFatal("no read-out");
    return *found;
}

void tst_readout::moveMouse(const QPointF& sample) const
{
    const QPointF position(m_plot->canvasMap(QwtPlot::xBottom).transform(sample.x()),
        m_plot->canvasMap(QwtPlot::yLeft).transform(sample.y()));
    QMouseEvent move(
        QEvent::MouseMove, position, position, QCursor::pos(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_plot->canvas(), &move);
}

void tst_readout::showOnly(const QString& title) const
{
    auto* legend = m_plot->findChild<PriceBased2dPlotLegend*>();
    for (const char* other : {"Smile", "Implied volatility"})
        legend->setCheckBoxChecked(QLatin1String(other), title == QLatin1String(other));
}

void tst_readout::distanceInTheUnitOfTheAxis_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<double>("quote");
    QTest::addColumn<double>("price");
    QTest::addColumn<QString>("text");
    QTest::newRow("prices above") << int(AxisMode::Price) << 100.0 << 102.5 << "+2.5";
    QTest::newRow("prices below") << int(AxisMode::Price) << 100.0 << 97.5 << "-2.5";
    QTest::newRow("at the quote") << int(AxisMode::Price) << 100.0 << 100.0 << "0";
    QTest::newRow("points above") << int(AxisMode::PointsFromQuote) << 100.0 << 102.5 << "+2.5";
    QTest::newRow("points below") << int(AxisMode::PointsFromQuote) << 100.0 << 97.5 << "-2.5";
    QTest::newRow("percent above") << int(AxisMode::PercentOfQuote) << 80.0 << 90.0 << "+12.5%";
    QTest::newRow("percent below") << int(AxisMode::PercentOfQuote) << 80.0 << 70.0 << "-12.5%";
    QTest::newRow("four decimals") << int(AxisMode::PercentOfQuote) << 90.0 << 120.0 << "+33.3333%";
}

void tst_readout::distanceInTheUnitOfTheAxis()
{
    QFETCH(int, mode);
    QFETCH(double, quote);
    QFETCH(double, price);
    QFETCH(QString, text);
    SeriesFacts given;
    given.forward = quote;
    m_plot->showSeries(m_futureIsinId, m_data->show(m_futureIsinId, given), DeskView::Volatility);
    m_plot->setAxisMode(AxisMode(mode));
    QCOMPARE(ReadOut::distanceFromQuote(*m_plot, price), text);
}

void tst_readout::readsThePointAtTheCursor()
{
    showOnly(QStringLiteral("Implied volatility"));
    const PriceBased2dPlotCurve* points = m_plot->attachedCurves(13).first();
    const auto* picker = m_plot->findChild<PriceBased2dPlotPicker*>();
    int looked = 0;
    for (int i = 0; i < int(points->dataSize()); ++i) {
        const QPointF sample = points->sample(i);
        if (sample.x() != 95.0 && sample.x() != 105.0)
            continue;
        moveMouse(sample);
        QCOMPARE(picker->trackerText(QPoint()).text(),
            QStringLiteral("Implied volatility\nStrike %1, %2 from the quote\n%3")
                .arg(sample.x())
                .arg(sample.x() < 100.0 ? "-5" : "+5", picker->convertedValue(sample.y())));
        ++looked;
    }
    QCOMPARE(looked, 2);
}

void tst_readout::showsTheCursorsPointAfterAClick()
{
    showOnly(QStringLiteral("Implied volatility"));
    const auto picture = [this] {
        moveMouse({120.0, 0.3});
        moveMouse({80.0, 0.3});
        QCoreApplication::processEvents();
        return m_plot->canvas()->grab().toImage();
    };
    const QImage before = picture();
    QTest::mouseClick(m_plot->canvas(), Qt::LeftButton);
    QCoreApplication::processEvents();
    QCOMPARE(picture(), before);
    moveMouse({120.0, 0.3});
    QVERIFY(m_plot->canvas()->grab().toImage() != before);
}

void tst_readout::snapsToThePriceStep()
{
    showOnly(QStringLiteral("Smile"));
    m_plot->setAxisScale(QwtPlot::xBottom, 101.0, 101.02, 0.0);
    m_plot->replot();
    Q_EMIT m_plot->updateAxisLabels();
    press(Qt::Key_F2);
    QSet<QString> strikes;
    for (int i = 0; i < 5; ++i) {
        strikes.insert(text().section(QLatin1Char('\n'), 1).section(QLatin1Char(','), 0, 0));
        press(Qt::Key_Right);
    }
    for (int i = 0; i < 5; ++i) {
        strikes.insert(text().section(QLatin1Char('\n'), 1).section(QLatin1Char(','), 0, 0));
        press(Qt::Key_Left);
    }
    QCOMPARE(strikes, (QSet<QString>{"Strike 101", "Strike 101.01", "Strike 101.02"}));
}

void tst_readout::takesTheKeyboard()
{
    QCOMPARE(m_plot->canvas()->focusPolicy(), Qt::StrongFocus);
    QCOMPARE(m_plot->focusProxy(), m_plot->canvas());
    QVERIFY(!item().isVisible());
    // The plot's own key events count as well.
    QTest::keyClick(m_plot.get(), Qt::Key_F2);
    QVERIFY(item().isVisible());
    const QString before = text();
    QTest::keyClick(m_plot->canvas(), Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(text(), before);
    // Otherwise the picker would move the mouse.
    const auto* picker = m_plot->findChild<PriceBased2dPlotPicker*>();
    const QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    QVERIFY(!picker->keyMatch(QwtEventPattern::KeyRight, &right));
}

void tst_readout::beginsByItsKeys_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("F2") << Qt::Key_F2;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void tst_readout::beginsByItsKeys()
{
    QFETCH(Qt::Key, key);
    showOnly(QStringLiteral("Implied volatility"));
    for (const Qt::Key other : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Escape})
        press(other);
    QVERIFY(!item().isVisible());
    press(key);
    QVERIFY(item().isVisible());
    QCOMPARE(item().point().x(), 100.0);
    press(Qt::Key_Right);
    press(key);
    QCOMPARE(item().point().x(), 102.5);
}

void tst_readout::takesItsKeysOnly_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("whileWalking");
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    QTest::newRow("F2") << Qt::Key_F2 << none << true << true;
    QTest::newRow("Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier) << true << true;
    QTest::newRow("an arrow") << Qt::Key_Left << none << false << true;
    QTest::newRow("Escape") << Qt::Key_Escape << none << false << true;
    QTest::newRow("an arrow with Shift")
        << Qt::Key_Left << Qt::KeyboardModifiers(Qt::ShiftModifier) << false << false;
    QTest::newRow("another key") << Qt::Key_Home << none << false << false;
}

void tst_readout::takesItsKeysOnly()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(bool, before);
    QFETCH(bool, whileWalking);
    // What it takes is no shortcut of the window's.
    const auto takes = [&] {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers);
        event.ignore();
        QCoreApplication::sendEvent(m_plot->canvas(), &event);
        return event.isAccepted();
    };
    QCOMPARE(takes(), before);
    QVERIFY(!item().isVisible());
    press(Qt::Key_F2);
    QCOMPARE(takes(), whileWalking);
    QVERIFY(item().isVisible());
}

void tst_readout::marksNothingOutOfSight()
{
    showOnly(QStringLiteral("Implied volatility"));
    m_plot->setAutoScaleEnabled(false);
    const auto showValues = [this](double low, double high) {
        m_plot->setAxisScale(QwtPlot::yLeft, low, high, 0.0);
        m_plot->updateYAxisScale();
    };
    showValues(5.0, 6.0);
    press(Qt::Key_F2);
    QVERIFY(!m_plot->walk()->isActive());

    showValues(0.0, 1.0);
    press(Qt::Key_F2);
    QVERIFY(item().isVisible());
    press(Qt::Key_Right);
    showValues(5.0, 6.0);
    QVERIFY(!item().isVisible());
    press(Qt::Key_Right);
    showValues(0.0, 1.0);
    QVERIFY(item().isVisible());
    QCOMPARE(item().point().x(), 102.5);

    // Elsewhere in view a point is picked anew: the highest of them lie at the lowest strikes.
    const PriceBased2dPlotCurve* points = m_plot->attachedCurves(13).first();
    const double top = points->sample(0).y();
    showValues(top - 0.01, top + 0.01);
    QVERIFY(!item().isVisible());
    press(Qt::Key_F2);
    QVERIFY(item().isVisible());
    QVERIFY(item().point().y() > top - 0.01);
}

void tst_readout::walksAlongACurve()
{
    showOnly(QStringLiteral("Implied volatility"));
    press(Qt::Key_F2);
    QVERIFY2(text().startsWith(QStringLiteral("Implied volatility\nStrike 100, 0 from the quote\n")),
        qPrintable(text()));
    press(Qt::Key_Right);
    QVERIFY2(text().contains(QStringLiteral("\nStrike 102.5, +2.5 from")), qPrintable(text()));
    QCOMPARE(item().point().x(), 102.5);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    QCOMPARE(item().point().x(), 97.5);
    QVERIFY(std::abs(item().point().y() - DeskTest::volatility(97.5)) < 2e-3);
    // No further than what is visible.
    for (int i = 0; i < 100; ++i)
        press(Qt::Key_Left);
    const QwtInterval prices = m_plot->axisScaleDiv(QwtPlot::xBottom).interval();
    QVERIFY(prices.contains(item().point().x()));
    QVERIFY(item().point().x() < prices.minValue() + 2.5);
}

void tst_readout::beginsAtTheCursor()
{
    showOnly(QStringLiteral("Implied volatility"));
    moveMouse({115.1, DeskTest::volatility(115.0)});
    press(Qt::Key_F2);
    QCOMPARE(item().point().x(), 115.0);
}

void tst_readout::changesTheCurve()
{
    press(Qt::Key_F2);
    const QString first = text().section(QLatin1Char('\n'), 0, 0);
    const double strike = item().point().x();
    press(Qt::Key_Down);
    const QString second = text().section(QLatin1Char('\n'), 0, 0);
    QVERIFY(first != second);
    QVERIFY(std::abs(item().point().x() - strike) <= 1.25);
    press(Qt::Key_Down);
    QCOMPARE(text().section(QLatin1Char('\n'), 0, 0), first);
    press(Qt::Key_Up);
    QCOMPARE(text().section(QLatin1Char('\n'), 0, 0), second);
    QCOMPARE((QSet<QString>{first, second}), (QSet<QString>{"Smile", "Implied volatility"}));
}

void tst_readout::ends_data()
{
    QTest::addColumn<QString>("by");
    for (const char* by : {"escape", "mouse", "legend"})
        QTest::newRow(by) << by;
}

void tst_readout::ends()
{
    QFETCH(QString, by);
    showOnly(QStringLiteral("Smile"));
    QSignalSpy changes(m_plot->walk(), SIGNAL(activeChanged(bool)));
    press(Qt::Key_F2);
    QVERIFY(item().isVisible());
    if (by == QLatin1String("escape"))
        press(Qt::Key_Escape);
    else if (by == QLatin1String("mouse"))
        moveMouse({100.0, 0.3});
    else
        m_plot->findChild<PriceBased2dPlotLegend*>()->setCheckBoxChecked(QStringLiteral("Smile"), false);
    QVERIFY(!item().isVisible());
    QVERIFY(!m_plot->walk()->isActive());
    QCOMPARE(changes, (QList<QVariantList>{{true}, {false}}));
}

void tst_readout::followsUpdates()
{
    showOnly(QStringLiteral("Implied volatility"));
    press(Qt::Key_F2);
    const double before = item().point().y();
    LiveTable::price(LiveTable::options(m_futureIsinId), 100.0, 0.05);
    m_plot->updateSeries(m_data->show(m_futureIsinId, {}));
    QVERIFY(item().isVisible());
    QCOMPARE(item().point().x(), 100.0);
    QVERIFY(std::abs(item().point().y() - before - 0.05) < 2e-3);
}

void tst_readout::drawsThePoint()
{
    showOnly(QStringLiteral("Smile"));
    const QImage before = m_plot->grab().toImage();
    press(Qt::Key_F2);
    const QImage after = m_plot->grab().toImage();
    const QPointF center = m_plot->canvas()->geometry().topLeft()
        + QPointF(m_plot->canvasMap(QwtPlot::xBottom).transform(item().point().x()),
            m_plot->canvasMap(QwtPlot::yLeft).transform(item().point().y()));
    const QRect around(center.toPoint() - QPoint(8, 8), QSize(17, 17));
    const QRgb black = qRgb(0, 0, 0);
    const auto count = [&](const QImage& image) { return DeskTest::countPixels(image.copy(around), black); };
    QVERIFY(count(after) > count(before) + 15);
}

PLOT2D_TEST_MAIN(tst_readout)
#include "tst_readout.moc"
