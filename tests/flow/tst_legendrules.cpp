#include "flow/legendplot.h"
#include "support/testmain.h"

#include <database/settings.h>

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyleOptionSlider>
#include <QTemporaryDir>
#include <QWheelEvent>

#include <qwt_dyngrid_layout.h>

#include <memory>

namespace {

const QString one = QStringLiteral("one");
constexpr int ownStyle = 2;

QPixmap filled(const QColor& color)
{
    QPixmap pixmap(30, 9);
    pixmap.fill(color);
    return pixmap;
}

/// A legend that adds an icon and chooses styles by itself.
class DerivedLegend : public TestLegend {
public:
    using TestLegend::TestLegend;

    void createResetIcons() override
    {
        resetIcons().insert(ownStyle, filled(Qt::blue));
        TestLegend::createResetIcons();
    }
    int getStyle(const PriceBased2dPlotCurve*) const override { return ownStyle; }
};

void press(QWidget& widget, Qt::MouseButton button)
{
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(1.0, 1.0), QPointF(1.0, 1.0), QCursor::pos(), button,
        button, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

}

/// What a legend looks at to decide, and what it leaves alone.
class tst_legendrules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void derivedLegendAddsIcons();
    void iconsAreAddedToThoseThereAre();
    void firstCurveOfTheTitleDecides();
    void plotHearsOfNewIconsOnly();
    void textsAreExact();
    void entriesStandLeft();
    void storingForgetsBoxesThatLeft();
    void restoringForgetsBoxesThatLeft();
    void newEntriesForgetBoxesThatLeft();
    void firstEntryOfATextIsMeant();
    void entryThatWaitsForItsDeletionIsKnown();
    void ownIconIsForgottenOnceShown();
    void pressNeedsABoxAndALabel_data();
    void pressNeedsABoxAndALabel();
    void pressGoesOn();
    void wheelOverAScrollBar();
    void movesOverTheViewEndThere();
    void scrollBarCanBeDragged();

private:
    std::unique_ptr<LegendPlot> m_host;
};

void tst_legendrules::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_legendrules::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_legendrules::init()
{
    m_host = std::make_unique<LegendPlot>();
}

void tst_legendrules::cleanup()
{
    m_host.reset();
}

void tst_legendrules::derivedLegendAddsIcons()
{
    auto* const legend = new DerivedLegend(&m_host->plot);
    m_host->legend = legend;
    legend->initCore();
    m_host->plot.insertLegend(legend, QwtPlot::RightLegend);
    QCOMPARE(legend->resetIcons().keys(),
        QList<int>({QwtSymbol::Rect, ownStyle, QwtSymbol::DTriangle, QwtSymbol::UTriangle}));
    const auto* curve = m_host->add(one);
    m_host->checkBox(curve)->setChecked(false);
    QCOMPARE(m_host->icon(curve), filled(Qt::blue).toImage());
}

void tst_legendrules::iconsAreAddedToThoseThereAre()
{
    m_host->legend->resetIcons().insert(ownStyle, filled(Qt::blue));
    m_host->legend->createResetIcons();
    QVERIFY(m_host->legend->resetIcons().contains(ownStyle));
}

void tst_legendrules::firstCurveOfTheTitleDecides()
{
    // It need not be valid, and a longer title is another one.
    m_host->add(QStringLiteral("one and more"), 9, QwtSymbol::Star1);
    auto* const first = m_host->add(one, 9, QwtSymbol::UTriangle);
    first->setSamples(QVector<QPointF>());
    m_host->add(one, 10, QwtSymbol::DTriangle);
    QVERIFY(!first->isValid());
    QwtLegendLabel label;
    label.setText(one);
    m_host->legend->setResetIcon(&label);
    QCOMPARE(label.icon().toImage(), m_host->legend->resetIcons().value(QwtSymbol::UTriangle).toImage());
}

void tst_legendrules::plotHearsOfNewIconsOnly()
{
    const auto* curve = m_host->add(one, 9, QwtSymbol::Star1);
    const auto* other = m_host->add(QStringLiteral("two"));
    m_host->plot.calls.clear();
    m_host->checkBox(curve)->setChecked(false);
    QVERIFY(m_host->plot.calls.filter(QStringLiteral("icon reset")).isEmpty());
    m_host->checkBox(other)->setChecked(false);
    QCOMPARE(m_host->plot.calls.filter(QStringLiteral("icon reset")),
        QStringList{QStringLiteral("icon reset two")});
}

void tst_legendrules::textsAreExact()
{
    const auto* curve = m_host->add(one);
    bool found = true;
    for (const char* const text : {"One", "one ", "on", ""}) {
        QVERIFY(!m_host->legend->isCheckBoxChecked(QString::fromLatin1(text), &found));
        QVERIFY2(!found, text);
        m_host->legend->setCheckBoxChecked(QString::fromLatin1(text), false);
    }
    QVERIFY(m_host->checkBox(curve)->isChecked());
}

void tst_legendrules::entriesStandLeft()
{
    const auto* curve = m_host->add(one);
    auto* const layout = qobject_cast<QwtDynGridLayout*>(m_host->legend->contentsWidget()->layout());
    QVERIFY(layout);
    const int index = layout->indexOf(m_host->entry(curve));
    QVERIFY(index >= 0);
    QCOMPARE(int(layout->itemAt(index)->alignment()), int(Qt::AlignLeft | Qt::AlignHCenter));
}

void tst_legendrules::storingForgetsBoxesThatLeft()
{
    const QTemporaryDir folder;
    Settings settings(folder.filePath(QStringLiteral("settings.ini")));
    const auto* curve = m_host->add(one);
    const std::unique_ptr<QCheckBox> box(m_host->checkBox(curve));
    box->setParent(nullptr);
    m_host->legend->store(settings);
    const QSignalSpy changes(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));
    box->setChecked(false);
    QCOMPARE(changes.count(), 0);
}

void tst_legendrules::restoringForgetsBoxesThatLeft()
{
    const QTemporaryDir folder;
    const Settings settings(folder.filePath(QStringLiteral("settings.ini")));
    const auto* curve = m_host->add(one);
    const std::unique_ptr<QCheckBox> box(m_host->checkBox(curve));
    box->setParent(nullptr);
    m_host->legend->restore(settings);
    const QSignalSpy changes(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));
    box->setChecked(false);
    QCOMPARE(changes.count(), 0);
}

void tst_legendrules::newEntriesForgetBoxesThatLeft()
{
    const auto* curve = m_host->add(one);
    const std::unique_ptr<QCheckBox> box(m_host->checkBox(curve));
    box->setParent(nullptr);
    m_host->add(QStringLiteral("two"));
    const QSignalSpy changes(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));
    box->setChecked(false);
    QCOMPARE(changes.count(), 0);
}

void tst_legendrules::firstEntryOfATextIsMeant()
{
    const auto* first = m_host->add(one);
    const auto* second = m_host->add(one);
    m_host->legend->setCheckBoxChecked(one, false);
    QVERIFY(!m_host->checkBox(first)->isChecked());
    QVERIFY(m_host->checkBox(second)->isChecked());
}

void tst_legendrules::entryThatWaitsForItsDeletionIsKnown()
{
    auto* first = m_host->add(one);
    auto* second = m_host->add(one);
    m_host->checkBox(first)->setChecked(false);
    first->detach();
    bool found = false;
    QVERIFY(m_host->legend->isCheckBoxChecked(one, &found) && found);
    // Without a successor the one made first is meant, until it is gone.
    second->detach();
    QVERIFY(!m_host->legend->isCheckBoxChecked(one, &found) && found);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!m_host->legend->isCheckBoxChecked(one, &found) && !found);
    delete first;
    delete second;
}

void tst_legendrules::ownIconIsForgottenOnceShown()
{
    const auto* curve = m_host->add(one);
    QCheckBox* const box = m_host->checkBox(curve);
    box->setChecked(false);
    box->setChecked(true);
    // Known as unchecked already, the entry is given no placeholder and keeps no icon for later.
    m_host->legend->setUncheckedItems({one});
    m_host->legend->setCheckBoxIcon(one, filled(Qt::green));
    box->setChecked(false);
    box->setChecked(true);
    QCOMPARE(m_host->icon(curve), filled(Qt::green).toImage());
}

void tst_legendrules::pressNeedsABoxAndALabel_data()
{
    QTest::addColumn<int>("boxes");
    QTest::addColumn<int>("labels");
    QTest::addColumn<bool>("left");
    QTest::addColumn<bool>("toggles");

    QTest::newRow("an entry") << 1 << 1 << true << true;
    QTest::newRow("another button") << 1 << 1 << false << false;
    QTest::newRow("one item") << 1 << 0 << true << false;
    QTest::newRow("three items") << 1 << 2 << true << false;
    QTest::newRow("no box") << 0 << 2 << true << false;
}

void tst_legendrules::pressNeedsABoxAndALabel()
{
    QFETCH(int, boxes);
    QFETCH(int, labels);
    QFETCH(bool, left);
    LabelWidget widget(nullptr);
    auto* const layout = new QHBoxLayout(&widget);
    if (boxes > 0)
        layout->addWidget(new QCheckBox(&widget));
    for (int i = 0; i < labels; ++i)
        layout->addWidget(new QwtLegendLabel(&widget));
    press(widget, left ? Qt::LeftButton : Qt::RightButton);
    const auto* const inside = widget.findChild<QCheckBox*>();
    QTEST(inside && inside->isChecked(), "toggles");
}

void tst_legendrules::pressGoesOn()
{
    LabelWidget widget(nullptr);
    auto* const layout = new QHBoxLayout(&widget);
    auto* const box = new QCheckBox(&widget);
    layout->addWidget(box);
    layout->addWidget(new QwtLegendLabel(&widget));
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(1.0, 1.0), QPointF(1.0, 1.0), QCursor::pos(),
        Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
    QVERIFY(box->isChecked());
    QVERIFY(!event.isAccepted());
}

void tst_legendrules::movesOverTheViewEndThere()
{
    QWidget* const view = m_host->legend->contentsWidget()->parentWidget();
    QMouseEvent event(QEvent::MouseMove, QPointF(1.0, 1.0), QPointF(1.0, 1.0), QCursor::pos(), Qt::NoButton,
        Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QApplication::sendEvent(view, &event);
    QVERIFY(event.isAccepted());
}

void tst_legendrules::scrollBarCanBeDragged()
{
    m_host->plot.resize(400, 200);
    for (int i = 0; i < 60; ++i)
        m_host->add(QString::number(i));
    m_host->plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m_host->plot));
    QScrollBar* const bar = m_host->legend->verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    QStyleOptionSlider option;
    option.initFrom(bar);
    option.orientation = Qt::Vertical;
    option.maximum = bar->maximum();
    option.pageStep = bar->pageStep();
    option.subControls = QStyle::SC_All;
    const QPoint slider = bar->style()
                              ->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, bar)
                              .center();
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, slider);
    QMouseEvent move(QEvent::MouseMove, slider + QPoint(0, 30), slider + QPoint(0, 30), QCursor::pos(),
        Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(bar, &move);
    QVERIFY(bar->value() > 0);
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, slider + QPoint(0, 30));
}

void tst_legendrules::wheelOverAScrollBar()
{
    for (QScrollBar* bar : {m_host->legend->horizontalScrollBar(), m_host->legend->verticalScrollBar()}) {
        bar->setMaximum(100);
        QWheelEvent event(QPointF(1.0, 1.0), QPointF(1.0, 1.0), QPoint(), QPoint(-120, -120), Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        event.ignore();
        QApplication::sendEvent(bar, &event);
        QVERIFY(event.isAccepted());
        QCOMPARE(bar->value(), 0);
    }
}

PLOT2D_TEST_MAIN(tst_legendrules)
#include "tst_legendrules.moc"
