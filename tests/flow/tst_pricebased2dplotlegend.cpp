#include "flow/legendplot.h"
#include "support/testmain.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QWheelEvent>

#include <qwt_dyngrid_layout.h>

#include <memory>

namespace {

const QString one = QStringLiteral("one");
const QString two = QStringLiteral("two");

}

class tst_pricebased2dplotlegend : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void entry();
    void alignment();
    void uncheckAndCheck();
    void signalComesBeforeTheRecord();
    void unknownTexts();
    void equalTitles();
    void partialStateIsIgnored();
    void callWithoutASender();
    void noIconNoToggle();
    void clicks();
    void wheelIsSwallowed();
    void wheelDoesNotScroll();
    void updateKeepsTheColour();
    void rebuiltEntry();
    void setUncheckedItems();
    void hidesTheCurve();

    void listenerDeletes_data();
    void listenerDeletes();
    void plotOfAnotherClass();

private:
    std::unique_ptr<LegendPlot> m_host;
};

void tst_pricebased2dplotlegend::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_pricebased2dplotlegend::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_pricebased2dplotlegend::init()
{
    m_host = std::make_unique<LegendPlot>();
}

void tst_pricebased2dplotlegend::cleanup()
{
    m_host.reset();
}

void tst_pricebased2dplotlegend::entry()
{
    QCOMPARE(PriceBased2dPlotLegend(&m_host->plot).parent(), &m_host->plot);
    const auto* curve = m_host->add(one);
    QWidget* entry = m_host->entry(curve);
    QVERIFY(qobject_cast<LabelWidget*>(entry));
    QVERIFY(qobject_cast<QHBoxLayout*>(entry->layout()));
    QCOMPARE(entry->layout()->count(), 2);
    const auto* checkBox = qobject_cast<QCheckBox*>(entry->layout()->itemAt(0)->widget());
    const auto* label = qobject_cast<QwtLegendLabel*>(entry->layout()->itemAt(1)->widget());
    QVERIFY(checkBox && label);
    QVERIFY(checkBox->isChecked());
    QCOMPARE(checkBox->text(), QString());
    QCOMPARE(label->text().text(), one);
    QCOMPARE(label->text().color(), QColor(Qt::black));
    QVERIFY(!label->icon().isNull());
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList());
}

void tst_pricebased2dplotlegend::alignment()
{
    const auto* curve = m_host->add(one);
    auto* layout = qobject_cast<QwtDynGridLayout*>(m_host->legend->contentsWidget()->layout());
    QVERIFY(layout);
    QCOMPARE(layout->sizeConstraint(), QLayout::SetFixedSize);
    const int index = layout->indexOf(m_host->entry(curve));
    layout->itemAt(index)->setAlignment(Qt::AlignRight | Qt::AlignTop);
    for (const int other : {-1, layout->count(), 1000})
        m_host->legend->updateDynLayoutItemAlignment(other);
    QCOMPARE(layout->itemAt(index)->alignment(), Qt::AlignRight | Qt::AlignTop);
    m_host->legend->updateDynLayoutItemAlignment(index);
    QCOMPARE(layout->itemAt(index)->alignment(), Qt::AlignLeft | Qt::AlignHCenter | Qt::AlignTop);
}

void tst_pricebased2dplotlegend::uncheckAndCheck()
{
    const auto* curve = m_host->add(one);
    m_host->add(two);
    const QImage own = m_host->icon(curve);
    QSignalSpy spy(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));

    m_host->legend->setCheckBoxChecked(one, false);
    QCOMPARE(spy.takeFirst(), QVariantList({one, false}));
    QVERIFY(!m_host->checkBox(curve)->isChecked());
    QCOMPARE(m_host->color(curve), QColor(Qt::darkGray));
    QCOMPARE(m_host->icon(curve), m_host->legend->resetIcons()[QwtSymbol::DTriangle].toImage());
    QVERIFY(m_host->icon(curve) != own);
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList(one));
    QVERIFY(m_host->plot.calls.contains(QStringLiteral("icon reset one")));
    bool found = false;
    QVERIFY(!m_host->legend->isCheckBoxChecked(one, &found) && found);
    QVERIFY(m_host->legend->isCheckBoxChecked(two, &found) && found);

    m_host->legend->setCheckBoxChecked(one, false);
    QCOMPARE(spy.count(), 0);

    m_host->legend->setCheckBoxChecked(one, true);
    QCOMPARE(spy.takeFirst(), QVariantList({one, true}));
    QCOMPARE(m_host->color(curve), QColor(Qt::black));
    QCOMPARE(m_host->icon(curve), own);
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList());
}

void tst_pricebased2dplotlegend::signalComesBeforeTheRecord()
{
    const auto* curve = m_host->add(one);
    QStringList seen;
    connect(m_host->legend, &PriceBased2dPlotLegend::visibilityChanged, this,
        [&] { seen << m_host->color(curve).name() << m_host->legend->uncheckedItems().join(' '); });
    m_host->checkBox(curve)->setChecked(false);
    m_host->checkBox(curve)->setChecked(true);
    QCOMPARE(seen, QStringList({QColor(Qt::black).name(), QString(), QColor(Qt::darkGray).name(), one}));
}

void tst_pricebased2dplotlegend::unknownTexts()
{
    m_host->add(one);
    QSignalSpy spy(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));
    m_host->legend->setCheckBoxChecked(two, false);
    bool found = true;
    QVERIFY(!m_host->legend->isCheckBoxChecked(two, &found));
    QVERIFY(!found);
    QCOMPARE(spy.count(), 0);
}

void tst_pricebased2dplotlegend::equalTitles()
{
    const auto* first = m_host->add(one);
    const auto* second = m_host->add(one);
    const QImage own = m_host->icon(second);
    m_host->checkBox(first)->setChecked(false);
    m_host->checkBox(second)->setChecked(false);
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList(one));
    QVERIFY(m_host->icon(first) != own);
    QCOMPARE(m_host->icon(second), own);
    QCOMPARE(m_host->color(second), QColor(Qt::darkGray));
    m_host->checkBox(second)->setChecked(true);
    QCOMPARE(m_host->icon(second), own);
    m_host->checkBox(first)->setChecked(true);
    QCOMPARE(m_host->icon(first), own);
}

void tst_pricebased2dplotlegend::partialStateIsIgnored()
{
    const auto* curve = m_host->add(one);
    QSignalSpy spy(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));
    m_host->checkBox(curve)->setTristate(true);
    m_host->checkBox(curve)->setCheckState(Qt::PartiallyChecked);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(m_host->color(curve), QColor(Qt::black));
}

void tst_pricebased2dplotlegend::callWithoutASender()
{
    const auto* curve = m_host->add(one);
    QSignalSpy spy(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));
    m_host->legend->onCheckBoxChecked(Qt::Unchecked);
    QCheckBox other;
    connect(&other, SIGNAL(stateChanged(int)), m_host->legend, SLOT(onCheckBoxChecked(int)));
    other.setChecked(true);
    other.setChecked(false);
    // Nor is the box of an entry that has gone taken for the missing sender.
    delete m_host->entry(m_host->add(two));
    m_host->legend->onCheckBoxChecked(Qt::Unchecked);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(m_host->color(curve), QColor(Qt::black));
}

void tst_pricebased2dplotlegend::noIconNoToggle()
{
    auto* curve = m_host->add(one);
    QSignalSpy spy(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));
    m_host->label(curve)->setIcon(QPixmap());
    m_host->checkBox(curve)->setChecked(false);
    auto* untitled = m_host->add(QString());
    m_host->checkBox(untitled)->setChecked(false);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList());
}

void tst_pricebased2dplotlegend::clicks()
{
    const auto* curve = m_host->add(one);
    m_host->plot.resize(400, 300);
    m_host->plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m_host->plot));
    const QCheckBox* checkBox = m_host->checkBox(curve);
    QTest::mouseClick(m_host->label(curve), Qt::LeftButton);
    QVERIFY(!checkBox->isChecked());
    QTest::mouseClick(m_host->entry(curve), Qt::LeftButton, Qt::NoModifier, QPoint(1, 1));
    QVERIFY(checkBox->isChecked());
    QTest::mouseClick(m_host->label(curve), Qt::RightButton);
    QVERIFY(checkBox->isChecked());

    LabelWidget other(m_host->legend);
    auto* layout = new QHBoxLayout(&other);
    layout->addWidget(new QWidget(&other));
    layout->addWidget(new QCheckBox(&other));
    QTest::mouseClick(&other, Qt::LeftButton, Qt::NoModifier, QPoint(1, 1));
    QVERIFY(!other.findChild<QCheckBox*>()->isChecked());
}

void tst_pricebased2dplotlegend::wheelIsSwallowed()
{
    m_host->add(one);
    m_host->plot.createPicker();
    QSignalSpy spy(&m_host->plot, SIGNAL(updateAxisLabels()));
    QWheelEvent event(QPointF(1.0, 1.0), QPointF(1.0, 1.0), QPoint(), QPoint(0, 120), Qt::NoButton,
        Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(m_host->legend, &event);
    QVERIFY(event.isAccepted());
    QCOMPARE(spy.count(), 0);
}

void tst_pricebased2dplotlegend::wheelDoesNotScroll()
{
    const PriceBased2dPlotCurve* curve = nullptr;
    for (int i = 0; i < 60; ++i)
        curve = m_host->add(QStringLiteral("curve %1").arg(i));
    m_host->plot.resize(400, 200);
    m_host->plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m_host->plot));
    QScrollBar* bar = m_host->legend->verticalScrollBar();
    QVERIFY(bar && bar->maximum() > 0);
    QWidget* viewport = m_host->legend->contentsWidget()->parentWidget();
    for (QWidget* target : {m_host->entry(curve), viewport, static_cast<QWidget*>(m_host->legend)}) {
        QWheelEvent event(QPointF(1.0, 1.0), target->mapToGlobal(QPoint(1, 1)), QPoint(), QPoint(0, -120),
            Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(target, &event);
        QCOMPARE(bar->value(), 0);
        QVERIFY(event.isAccepted());
    }
}

void tst_pricebased2dplotlegend::updateKeepsTheColour()
{
    auto* curve = m_host->add(one);
    m_host->checkBox(curve)->setChecked(false);
    curve->setTitle(two);
    QCOMPARE(m_host->label(curve)->text().text(), two);
    QCOMPARE(m_host->color(curve), QColor(Qt::darkGray));
    m_host->checkBox(curve)->setChecked(true);
    curve->setTitle(one);
    QCOMPARE(m_host->color(curve), QColor(Qt::black));
}

void tst_pricebased2dplotlegend::rebuiltEntry()
{
    auto* curve = m_host->add(one);
    m_host->checkBox(curve)->setChecked(false);
    curve->detach();
    curve->attach(&m_host->plot);
    QVERIFY(m_host->checkBox(curve)->isChecked());
    bool found = false;
    QVERIFY(m_host->legend->isCheckBoxChecked(one, &found) && found);
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList(one));
    QSignalSpy spy(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));
    m_host->legend->restoreUncheckedItems();
    QCOMPARE(spy.count(), 1);
    QVERIFY(!m_host->checkBox(curve)->isChecked());
    QCOMPARE(m_host->color(curve), QColor(Qt::darkGray));
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList(one));
}

void tst_pricebased2dplotlegend::setUncheckedItems()
{
    const auto* curve = m_host->add(one);
    m_host->legend->setUncheckedItems({two, one});
    QVERIFY(m_host->checkBox(curve)->isChecked());
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList({two, one}));
    m_host->legend->restoreUncheckedItems();
    QVERIFY(!m_host->checkBox(curve)->isChecked());
    m_host->legend->setUncheckedItems({one, two, one});
    m_host->checkBox(curve)->setChecked(true);
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList({two, one}));
}

void tst_pricebased2dplotlegend::hidesTheCurve()
{
    const auto* curve = m_host->add(one);
    connect(m_host->legend, SIGNAL(visibilityChanged(QString, bool)), &m_host->plot,
        SLOT(setCurveVisible(QString, bool)));
    m_host->legend->setCheckBoxChecked(one, false);
    QVERIFY(!curve->isVisible());
    m_host->legend->setCheckBoxChecked(one, true);
    QVERIFY(curve->isVisible());
}

void tst_pricebased2dplotlegend::listenerDeletes_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<bool>("atOnce");
    for (const char* what : {"detach", "curve", "all curves", "legend", "other legend"}) {
        QTest::addRow("%s", what) << what << false;
        QTest::addRow("%s, at once", what) << what << true;
    }
}

void tst_pricebased2dplotlegend::listenerDeletes()
{
    QFETCH(QString, what);
    QFETCH(bool, atOnce);
    PriceBased2dPlotCurve* curve = m_host->add(one);
    m_host->add(two);
    const QPointer<QCheckBox> checkBox = m_host->checkBox(curve);
    TestPlot& plot = m_host->plot;
    plot.resize(400, 300);
    plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&plot));
    int calls = 0;
    connect(m_host->legend, &PriceBased2dPlotLegend::visibilityChanged, this, [&] {
        ++calls;
        if (what == "detach")
            curve->detach();
        else if (what == "curve")
            delete curve;
        else if (what == "all curves")
            plot.detachItems();
        else if (what == "legend")
            delete m_host->legend;
        else
            plot.insertLegend(new TestLegend(&plot), QwtPlot::LeftLegend);
        if (atOnce)
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(checkBox);
    });
    QTest::mousePress(m_host->label(curve), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(calls, 1);
    QVERIFY(!checkBox);
    if (what == "detach")
        delete curve;
    if (m_host->legend) {
        bool found = false;
        m_host->legend->updateItemMaps();
        m_host->legend->setCheckBoxChecked(one, true);
        QVERIFY(!m_host->legend->isCheckBoxChecked(one, &found));
        QVERIFY(!found);
        QCOMPARE(m_host->legend->uncheckedItems(), QStringList(one));
    }
}

void tst_pricebased2dplotlegend::plotOfAnotherClass()
{
    QwtPlot plot;
    auto* legend = new PriceBased2dPlotLegend(&plot);
    legend->initCore();
    plot.insertLegend(legend);
    auto* curve = new PriceBased2dPlotCurve(nullptr, one);
    curve->setDataType(13);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve->attach(&plot);
    QCOMPARE(legend->getStyle(curve), -1);
    QSignalSpy spy(legend, SIGNAL(visibilityChanged(QString, bool)));
    legend->setCheckBoxChecked(one, false);
    QCOMPARE(spy.count(), 1);
}

PLOT2D_TEST_MAIN(tst_pricebased2dplotlegend)
#include "tst_pricebased2dplotlegend.moc"
