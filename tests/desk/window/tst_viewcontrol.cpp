#include "shownview.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotcurve.h>

namespace {

using Place = ShownView::Place;

constexpr int notch = 120;
// The data has strikes from 60 to 140 and volatilities from 0.294 to 0.455.
const QwtInterval somePrices(90.0, 120.0);
const QwtInterval someValues(0.29, 0.31);
const QwtInterval allPrices(60.0 - 0.02 * 80.0, 140.0 + 0.02 * 80.0);

}

Q_DECLARE_METATYPE(Place)

/// The wheel and the double click on the desk's plot.
class tst_viewcontrol : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void smallAnglesAddUp_data();
    void smallAnglesAddUp();
    void restOfANotchIsDropped_data();
    void restOfANotchIsDropped();
    void wholeNotchesKeepTheirSize();
    void doubleClickFits_data();
    void doubleClickFits();
    void fitsWithAutoScaleOn_data();
    void fitsWithAutoScaleOn();
    void doubleClickForgivesAJolt();
    void leavesOtherButtonsAlone();
    void nothingToFit_data();
    void nothingToFit();
    void fitsTheVisibleCurves();

private:
    QwtInterval fittingValues() const;

    std::unique_ptr<ShownView> m_shown;
};

void tst_viewcontrol::init()
{
    m_shown = std::make_unique<ShownView>();
    QVERIFY(m_shown->isShown());
    m_shown->show(somePrices, someValues);
}

void tst_viewcontrol::cleanup()
{
    m_shown.reset();
}

/// Those of the visible prices.
QwtInterval tst_viewcontrol::fittingValues() const
{
    const auto [low, high] = m_shown->plot().minMaxYAtXRange();
    return QwtInterval(low, high);
}

void tst_viewcontrol::smallAnglesAddUp_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    QTest::newRow("canvas") << Place::Canvas << none;
    QTest::newRow("canvas, Shift") << Place::Canvas << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("canvas, Control") << Place::Canvas << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("prices") << Place::Prices << none;
    QTest::newRow("values") << Place::Values << none;
}

void tst_viewcontrol::smallAnglesAddUp()
{
    QFETCH(Place, place);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    m_shown->putCursor(m_shown->middle(place) + QPoint(30, 20));
    for (const int direction : {1, -1}) {
        const View before = m_shown->view();
        m_shown->turn(direction * notch, modifiers);
        const View expected = m_shown->view();
        QVERIFY(expected != before);
        m_shown->control().undo();
        COMPARE_VIEWS(m_shown->view(), before);

        for (int i = 1; i < notch; ++i) {
            m_shown->turn(direction, modifiers);
            COMPARE_VIEWS(m_shown->view(), before);
        }
        QVERIFY(!m_shown->control().canUndo());
        m_shown->turn(direction, modifiers);
        COMPARE_VIEWS(m_shown->view(), expected);
        m_shown->control().undo();
    }
}

void tst_viewcontrol::restOfANotchIsDropped_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<int>("angle");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<int>("time");
    QTest::addColumn<bool>("dropped");
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const int pause = int(WheelNotches::longestPause);
    QTest::newRow("at once") << Place::Canvas << 60 << none << 1000 << false;
    QTest::newRow("before the pause") << Place::Canvas << 60 << none << 1000 + pause << false;
    QTest::newRow("after the pause") << Place::Canvas << 60 << none << 1001 + pause << true;
    QTest::newRow("other direction") << Place::Canvas << -60 << none << 1000 << true;
    QTest::newRow("Shift") << Place::Canvas << 60 << Qt::KeyboardModifiers(Qt::ShiftModifier) << 1000 << true;
    QTest::newRow("prices") << Place::Prices << 60 << none << 1000 << true;
    QTest::newRow("values") << Place::Values << 60 << none << 1000 << true;
}

void tst_viewcontrol::restOfANotchIsDropped()
{
    QFETCH(Place, place);
    QFETCH(int, angle);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(int, time);
    QFETCH(bool, dropped);
    const View before = m_shown->view();
    m_shown->putCursor(m_shown->middle(Place::Canvas));
    m_shown->turn(60);
    m_shown->putCursor(m_shown->middle(place));
    m_shown->turn(angle, modifiers, time);
    QCOMPARE(m_shown->view() == before, dropped);
}

void tst_viewcontrol::wholeNotchesKeepTheirSize()
{
    m_shown->putCursor(m_shown->middle(Place::Canvas));
    m_shown->turn(notch);
    QCOMPARE(m_shown->view().prices.width(), 0.9 * somePrices.width());
    m_shown->show(somePrices, someValues);
    m_shown->turn(3 * notch + 1);
    QCOMPARE(m_shown->view().prices.width(), 0.89 * somePrices.width());
}

void tst_viewcontrol::doubleClickFits_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<bool>("fitsPrices");
    QTest::addColumn<bool>("fitsValues");
    QTest::newRow("canvas") << Place::Canvas << true << true;
    QTest::newRow("prices") << Place::Prices << true << false;
    QTest::newRow("values") << Place::Values << false << true;
}

void tst_viewcontrol::doubleClickFits()
{
    QFETCH(Place, place);
    QFETCH(bool, fitsPrices);
    QFETCH(bool, fitsValues);
    const View before = m_shown->view();
    m_shown->doubleClick(m_shown->middle(place));
    const View fitted = m_shown->view();
    QVERIFY2(isAbout(fitted.prices, fitsPrices ? allPrices : somePrices), inWords(fitted.prices));
    QVERIFY2(isAbout(fitted.values, fitsValues ? fittingValues() : someValues), inWords(fitted.values));
    QVERIFY(fittingValues() != someValues);
    QVERIFY(!fitted.autoScale);

    m_shown->control().undo();
    COMPARE_VIEWS(m_shown->view(), before);
    QVERIFY(!m_shown->control().canUndo());
    m_shown->control().redo();
    COMPARE_VIEWS(m_shown->view(), fitted);
}

void tst_viewcontrol::fitsWithAutoScaleOn_data()
{
    doubleClickFits_data();
}

void tst_viewcontrol::fitsWithAutoScaleOn()
{
    QFETCH(Place, place);
    QFETCH(bool, fitsPrices);
    m_shown->show(somePrices);
    m_shown->doubleClick(m_shown->middle(place));
    const View fitted = m_shown->view();
    QVERIFY(fitted.autoScale);
    QVERIFY2(isAbout(fitted.prices, fitsPrices ? allPrices : somePrices), inWords(fitted.prices));
    QVERIFY2(isAbout(fitted.values, fittingValues()), inWords(fitted.values));
    QCOMPARE(m_shown->control().canUndo(), fitsPrices);
}

void tst_viewcontrol::doubleClickForgivesAJolt()
{
    m_shown->show(somePrices);
    const View before = m_shown->view();
    m_shown->press(m_shown->middle(Place::Canvas));
    m_shown->move(m_shown->middle(Place::Canvas) + QPoint(4, 0));
    m_shown->release(m_shown->middle(Place::Canvas) + QPoint(4, 0));
    QVERIFY(!m_shown->view().autoScale);
    m_shown->control().undo();
    COMPARE_VIEWS(m_shown->view(), before);

    m_shown->doubleClick(m_shown->middle(Place::Canvas), QPoint(4, 0));
    QVERIFY(m_shown->view().autoScale);
    QVERIFY(isAbout(m_shown->view().prices, allPrices));
    m_shown->control().undo();
    COMPARE_VIEWS(m_shown->view(), before);
    QVERIFY(!m_shown->control().canUndo());
}

void tst_viewcontrol::leavesOtherButtonsAlone()
{
    const View before = m_shown->view();
    const QPoint middle = m_shown->middle(Place::Prices);
    QTest::mouseDClick(&m_shown->plot(), Qt::RightButton, Qt::NoModifier, middle);
    COMPARE_VIEWS(m_shown->view(), before);
    QTest::mousePress(&m_shown->plot(), Qt::RightButton, Qt::NoModifier, middle);
    m_shown->control().zoomIn();
    QVERIFY(m_shown->control().canUndo());
    QTest::mouseRelease(&m_shown->plot(), Qt::RightButton, Qt::NoModifier, middle);
    m_shown->control().undo();
    QVERIFY(!m_shown->control().canUndo());
}

void tst_viewcontrol::nothingToFit_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<bool>("withCurves");
    QTest::newRow("title") << Place::Title << true;
    QTest::newRow("prices of hidden curves") << Place::Prices << false;
    QTest::newRow("values of hidden curves") << Place::Values << false;
    QTest::newRow("hidden curves") << Place::Canvas << false;
}

void tst_viewcontrol::nothingToFit()
{
    QFETCH(Place, place);
    QFETCH(bool, withCurves);
    const QList<PriceBased2dPlotCurve*> curves = m_shown->plot().attachedCurves(-1);
    for (PriceBased2dPlotCurve* const curve : curves)
        curve->setVisible(withCurves);
    const View before = m_shown->view();
    m_shown->doubleClick(m_shown->middle(place));
    COMPARE_VIEWS(m_shown->view(), before);
    QVERIFY(!m_shown->control().canUndo());
}

void tst_viewcontrol::fitsTheVisibleCurves()
{
    m_shown->plot().attachedCurves(9).first()->setSamples(QVector<QPointF>{{40.0, 0.5}, {200.0, 0.6}});
    m_shown->doubleClick(m_shown->middle(Place::Prices));
    QVERIFY(isAbout(m_shown->view().prices, QwtInterval(40.0 - 3.2, 200.0 + 3.2)));
    m_shown->plot().attachedCurves(9).first()->setVisible(false);
    m_shown->doubleClick(m_shown->middle(Place::Prices));
    QVERIFY2(isAbout(m_shown->view().prices, allPrices), inWords(m_shown->view().prices));
}

PLOT2D_TEST_MAIN(tst_viewcontrol)
#include "tst_viewcontrol.moc"
