#include "flow/shownplot.h"
#include "gui/hand.h"
#include "gui/hostplot.h"
#include "gui/screenmain.h"
#include "support/testplot.h"

#include <QAccessible>
#include <QScreen>
#include <QScrollBar>

#include <qwt_plot_layout.h>

namespace {

enum class Part { Box, Icon, Text };

/// The part of the screen on which a widget stands.
QImage picture(const QWidget* widget)
{
    return widget->screen()
        ->grabWindow(widget->window()->winId())
        .toImage()
        .copy(QRect(widget->mapTo(widget->window(), QPoint()), widget->size()));
}

int pixels(const QWidget* widget, const QColor& color)
{
    const QImage image = picture(widget);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == color ? 1 : 0;
    }
    return count;
}

}

Q_DECLARE_METATYPE(Part)

/// The legend of a shown plot under a real pointer and keyboard.
class tst_legendonscreen : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void clicks_data();
    void clicks();
    void twoClicks_data();
    void twoClicks();
    void quoteLine();
    void otherButtons_data();
    void otherButtons();
    void wheel_data();
    void wheel();
    void wheelOverTheScrollBar();
    void slidesOffTheBox();
    void keyboard();
    void accessibility();

private:
    QPoint placeOf(Part part) const;
    QwtInterval prices() { return m_plot->range(QwtPlot::xBottom); }
    QwtInterval values() { return m_plot->range(QwtPlot::yLeft); }

    std::unique_ptr<Hand> m_hand;
    std::unique_ptr<HostPlot> m_plot;
    std::unique_ptr<QSignalSpy> m_visibility;
    std::unique_ptr<QSignalSpy> m_labels;
};

void tst_legendonscreen::initTestCase()
{
    openMarket();
    m_hand = std::make_unique<Hand>();
}

void tst_legendonscreen::cleanupTestCase()
{
    m_hand.reset();
    closeMarket();
}

void tst_legendonscreen::init()
{
    m_plot = std::make_unique<HostPlot>();
    QVERIFY(m_plot->comesUp());
    m_plot->look({0.0, 1000.0}, {0.0, 100.0});
    QVERIFY(m_hand->movesTo(m_plot.get(), QPoint(-20, -20)));
    m_visibility = std::make_unique<QSignalSpy>(m_plot->entries, SIGNAL(visibilityChanged(QString, bool)));
    m_labels = std::make_unique<QSignalSpy>(m_plot.get(), SIGNAL(updateAxisLabels()));
}

void tst_legendonscreen::cleanup()
{
    QApplication::setDoubleClickInterval(0);
    m_plot.reset();
}

/// A place in the plot's coordinates on the entry of the curve "Theory".
QPoint tst_legendonscreen::placeOf(Part part) const
{
    const QCheckBox* box = m_plot->checkBox(m_plot->theory);
    const QwtLegendLabel* label = m_plot->label(m_plot->theory);
    const int middle = label->height() / 2;
    switch (part) {
    case Part::Box:
        return box->mapTo(m_plot.get(), box->rect().center());
    case Part::Icon:
        return label->mapTo(m_plot.get(), QPoint(label->margin() + label->icon().width() / 2, middle));
    case Part::Text:
        break;
    }
    return label->mapTo(m_plot.get(), QPoint(label->width() - 12, middle));
}

void tst_legendonscreen::clicks_data()
{
    QTest::addColumn<Part>("part");
    QTest::newRow("box") << Part::Box;
    QTest::newRow("icon") << Part::Icon;
    QTest::newRow("text") << Part::Text;
}

void tst_legendonscreen::clicks()
{
    QFETCH(Part, part);
    QCheckBox* box = m_plot->checkBox(m_plot->theory);
    const QwtLegendLabel* label = m_plot->label(m_plot->theory);
    QSignalSpy toggles(box, SIGNAL(toggled(bool)));
    QTRY_VERIFY(pixels(m_plot->canvas(), Qt::blue) > 500);
    QTRY_VERIFY(pixels(label, Qt::blue) > 0);
    QCOMPARE(pixels(label, Qt::darkGray), 0);

    QVERIFY(m_hand->clicks(m_plot.get(), placeOf(part)));
    QCOMPARE(toggles.count(), 1);
    QCOMPARE(m_visibility->count(), 1);
    QCOMPARE(m_visibility->first(), QVariantList({QStringLiteral("Theory"), false}));
    QVERIFY(!box->isChecked());
    QVERIFY(!m_plot->theory->isVisible());
    QVERIFY(m_plot->market->isVisible());
    QTRY_COMPARE(pixels(m_plot->canvas(), Qt::blue), 0);
    QTRY_COMPARE(pixels(label, Qt::blue), 0);
    QTRY_VERIFY(pixels(label, Qt::darkGray) > 0);
    COMPARE_RANGES(values(), QwtInterval(20.0, 79.4));

    QVERIFY(m_hand->clicks(m_plot.get(), placeOf(part)));
    QCOMPARE(toggles.count(), 2);
    QCOMPARE(m_visibility->count(), 2);
    QCOMPARE(m_visibility->last(), QVariantList({QStringLiteral("Theory"), true}));
    QVERIFY(box->isChecked());
    QVERIFY(m_plot->theory->isVisible());
    QTRY_VERIFY(pixels(m_plot->canvas(), Qt::blue) > 500);
    QTRY_VERIFY(pixels(label, Qt::blue) > 0);
    QCOMPARE(m_labels->count(), 0);
}

void tst_legendonscreen::twoClicks_data()
{
    clicks_data();
}

/// Both clicks of a double click count.
void tst_legendonscreen::twoClicks()
{
    QFETCH(Part, part);
    QApplication::setDoubleClickInterval(60000);
    QVERIFY(m_hand->movesTo(m_plot.get(), placeOf(part)));
    QVERIFY(m_hand->does({QStringLiteral("click --repeat 2 --delay 0 1")}));
    QCOMPARE(m_visibility->count(), 2);
    QVERIFY(m_plot->checkBox(m_plot->theory)->isChecked());
    QVERIFY(m_hand->does({QStringLiteral("click --repeat 3 --delay 0 1")}));
    QCOMPARE(m_visibility->count(), 5);
    QVERIFY(!m_plot->theory->isVisible());
}

void tst_legendonscreen::quoteLine()
{
    QTRY_VERIFY(pixels(m_plot->canvas(), Qt::red) > 100);
    const QCheckBox* box = m_plot->checkBox(m_plot->quote);
    QVERIFY(m_hand->clicks(box, box->rect().center()));
    QVERIFY(!m_plot->quote->isVisible());
    QTRY_COMPARE(pixels(m_plot->canvas(), Qt::red), 0);
    COMPARE_RANGES(values(), QwtInterval(0.0, 100.0));
    QVERIFY(m_hand->clicks(box, box->rect().center()));
    QTRY_VERIFY(pixels(m_plot->canvas(), Qt::red) > 100);
    QCOMPARE(m_visibility->count(), 2);
}

void tst_legendonscreen::otherButtons_data()
{
    QTest::addColumn<Part>("part");
    QTest::addColumn<int>("button");
    QTest::newRow("box, right") << Part::Box << 3;
    QTest::newRow("icon, right") << Part::Icon << 3;
    QTest::newRow("text, right") << Part::Text << 3;
    QTest::newRow("box, middle") << Part::Box << 2;
    QTest::newRow("text, middle") << Part::Text << 2;
}

void tst_legendonscreen::otherButtons()
{
    QFETCH(Part, part);
    QFETCH(int, button);
    QVERIFY(m_hand->clicks(m_plot.get(), placeOf(part), button));
    QVERIFY(m_hand->clicks(m_plot.get(), placeOf(part), button));
    QVERIFY(m_plot->checkBox(m_plot->theory)->isChecked());
    QCOMPARE(m_visibility->count(), 0);
    QVERIFY(m_plot->theory->isVisible());
    COMPARE_RANGES(prices(), QwtInterval(0.0, 1000.0));
    COMPARE_RANGES(values(), QwtInterval(0.0, 100.0));
}

void tst_legendonscreen::wheel_data()
{
    QTest::addColumn<QString>("modifiers");
    QTest::newRow("none") << "";
    QTest::newRow("Shift") << "shift";
    QTest::newRow("Control") << "ctrl";
    QTest::newRow("Alt") << "alt";
}

void tst_legendonscreen::wheel()
{
    QFETCH(QString, modifiers);
    for (int i = 0; i < 60; ++i)
        addCurve(*m_plot, 11, {{100.0, 30.0}, {200.0, 40.0}}, QStringLiteral("Series %1").arg(i));
    QScrollBar* bar = m_plot->entries->verticalScrollBar();
    QTRY_VERIFY(bar->isVisible() && bar->maximum() > 0);
    bar->setValue(bar->maximum() / 2);
    const int before = bar->value();
    m_plot->look({400.0, 600.0}, {40.0, 60.0});

    // On an entry's box and text, and beside the entries.
    const PriceBased2dPlotCurve* inView = nullptr;
    const QList<PriceBased2dPlotCurve*> curves = m_plot->attachedCurves(11);
    for (const PriceBased2dPlotCurve* curve : curves) {
        const QRect area = m_plot->entries->rect();
        if (area.contains(m_plot->checkBox(curve)->mapTo(m_plot->entries, QPoint(0, 40))))
            inView = curve;
    }
    QVERIFY(inView);
    const QCheckBox* box = m_plot->checkBox(inView);
    const QwtLegendLabel* label = m_plot->label(inView);
    const QPoint places[] = {box->mapTo(m_plot.get(), box->rect().center()),
        label->mapTo(m_plot.get(), label->rect().center()), m_plot->entries->pos() + QPoint(0, 20)};
    for (const QPoint& place : places) {
        QVERIFY(m_plot->entries->geometry().contains(place));
        QVERIFY(m_hand->movesTo(m_plot.get(), place));
        QStringList actions{QStringLiteral("click 4"), QStringLiteral("click --repeat 3 --delay 0 5")};
        if (!modifiers.isEmpty()) {
            actions.prepend(QStringLiteral("keydown ") + modifiers);
            actions.append(QStringLiteral("keyup ") + modifiers);
        }
        QVERIFY(m_hand->does(actions));
        QCOMPARE(bar->value(), before);
        COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
        COMPARE_RANGES(values(), QwtInterval(40.0, 60.0));
    }
    QCOMPARE(m_labels->count(), 0);
    QCOMPARE(m_visibility->count(), 0);
}

void tst_legendonscreen::wheelOverTheScrollBar()
{
    for (int i = 0; i < 60; ++i)
        addCurve(*m_plot, 11, {{100.0, 30.0}, {200.0, 40.0}}, QStringLiteral("Series %1").arg(i));
    QScrollBar* bar = m_plot->entries->verticalScrollBar();
    QTRY_VERIFY(bar->isVisible() && bar->maximum() > 0);
    m_plot->look({400.0, 600.0}, {40.0, 60.0});
    QVERIFY(m_hand->movesTo(bar, bar->rect().center()));
    for (const char* const turns : {"click --repeat 3 --delay 0 5", "click --repeat 3 --delay 0 4"}) {
        QVERIFY(m_hand->does({QString::fromLatin1(turns)}));
        QCOMPARE(bar->value(), 0);
    }
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
    COMPARE_RANGES(values(), QwtInterval(40.0, 60.0));
    QCOMPARE(m_labels->count(), 0);
}

/// The box hands on the moves of a drag that has left it, though the plot never saw the press.
void tst_legendonscreen::slidesOffTheBox()
{
    m_plot->setAutoScaleEnabled(false);
    const QPoint scale = m_plot->plotLayout()->scaleRect(QwtPlot::xBottom).center().toPoint();
    QVERIFY(m_hand->drags(m_plot.get(), scale, scale + QPoint(-10, 0), 1));
    COMPARE_RANGES(prices(), QwtInterval(50.0, 950.0));
    const QPoint box = placeOf(Part::Box);
    QVERIFY(m_hand->drags(m_plot.get(), box, box + QPoint(-90, 40), 6));
    COMPARE_RANGES(prices(), QwtInterval(50.0, 950.0));
    QVERIFY(m_plot->checkBox(m_plot->theory)->isChecked());
    QCOMPARE(m_visibility->count(), 0);
}

void tst_legendonscreen::keyboard()
{
    const auto boxOf = [this](const PriceBased2dPlotCurve* curve) { return m_plot->checkBox(curve); };
    for (const PriceBased2dPlotCurve* curve : {m_plot->theory, m_plot->market, m_plot->quote}) {
        QVERIFY(m_hand->does({QStringLiteral("key Tab")}));
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(boxOf(curve)));
    }
    QVERIFY(m_hand->does({QStringLiteral("key shift+Tab")}));
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(boxOf(m_plot->market)));

    QVERIFY(m_hand->does({QStringLiteral("key space")}));
    QVERIFY(!boxOf(m_plot->market)->isChecked());
    QVERIFY(!m_plot->market->isVisible());
    QCOMPARE(m_visibility->count(), 1);
    QTRY_COMPARE(pixels(m_plot->canvas(), Qt::darkGreen), 0);
    QVERIFY(m_hand->does({QStringLiteral("key space")}));
    QVERIFY(m_plot->market->isVisible());
    QCOMPARE(m_visibility->count(), 2);
    QTRY_VERIFY(pixels(m_plot->canvas(), Qt::darkGreen) > 500);
    QVERIFY(m_plot->theory->isVisible());
}

void tst_legendonscreen::accessibility()
{
    QAccessibleInterface* box = QAccessible::queryAccessibleInterface(m_plot->checkBox(m_plot->theory));
    QVERIFY(box);
    QCOMPARE(box->text(QAccessible::Name), QStringLiteral("Theory"));
    QCOMPARE(box->role(), QAccessible::CheckBox);
    QVERIFY(box->state().checked);
    QVERIFY(m_hand->clicks(m_plot.get(), placeOf(Part::Text)));
    QVERIFY(!box->state().checked);

    // As a screen reader does it.
    box->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(box->state().checked);
    QCOMPARE(m_visibility->count(), 2);
    m_plot->theory->setTitle(QStringLiteral("Model"));
    QCOMPARE(box->text(QAccessible::Name), QStringLiteral("Model"));
    QCOMPARE(QAccessible::queryAccessibleInterface(m_plot->checkBox(m_plot->quote))->text(QAccessible::Name),
        QStringLiteral("Quote"));
}

PLOT2D_SCREEN_TEST_MAIN(tst_legendonscreen)
#include "tst_legendonscreen.moc"
