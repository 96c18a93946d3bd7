#include "flow/legendplot.h"
#include "support/testmain.h"

#include <QAccessible>

#include <algorithm>
#include <memory>
#include <random>

namespace {

constexpr quint64 seed = 20240712;

const QString one = QStringLiteral("one");
const QString two = QStringLiteral("two");
const QColor grey(Qt::darkGray);

void flushDeletions()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

enum class Victim { CheckBox, Label, Entry, Curve };

}

Q_DECLARE_METATYPE(Victim)

/// The entries of PriceBased2dPlotLegend while widgets and curves come and go, and what a user does to one.
class tst_legendentries : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void othersAreFoundAgain_data();
    void othersAreFoundAgain();
    void survivorsOfRandomDestruction();
    void greyStaysGrey_data();
    void greyStaysGrey();
    void listOutlivesEveryEntry();
    void eachPartToggles_data();
    void eachPartToggles();
    void keyboard();
    void screenReader();
    void listenerDeletesAfterAnother();
    void listenerTogglesAndDeletes();

private:
    void show();
    bool isFound(const QString& text) const;
    bool toggles(const QString& text) const;

    std::unique_ptr<LegendPlot> m_host;
};

void tst_legendentries::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_legendentries::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_legendentries::init()
{
    m_host = std::make_unique<LegendPlot>();
}

void tst_legendentries::cleanup()
{
    m_host.reset();
}

void tst_legendentries::show()
{
    m_host->plot.resize(400, 300);
    m_host->plot.show();
    QVERIFY(QTest::qWaitForWindowActive(&m_host->plot));
}

bool tst_legendentries::isFound(const QString& text) const
{
    bool found = false;
    m_host->legend->isCheckBoxChecked(text, &found);
    return found;
}

// Whether the entry of a text is there, follows the calls, and keeps the record.
bool tst_legendentries::toggles(const QString& text) const
{
    for (const bool checked : {false, true}) {
        m_host->legend->setCheckBoxChecked(text, checked);
        bool found = false;
        if (m_host->legend->isCheckBoxChecked(text, &found) != checked || !found
            || m_host->legend->uncheckedItems().contains(text) == checked)
            return false;
    }
    return true;
}

void tst_legendentries::othersAreFoundAgain_data()
{
    QTest::addColumn<Victim>("victim");
    QTest::addColumn<int>("index");
    for (int index = 0; index < 5; ++index) {
        QTest::addRow("check box %d", index) << Victim::CheckBox << index;
        QTest::addRow("label %d", index) << Victim::Label << index;
        QTest::addRow("entry %d", index) << Victim::Entry << index;
        QTest::addRow("curve %d", index) << Victim::Curve << index;
    }
}

void tst_legendentries::othersAreFoundAgain()
{
    QFETCH(Victim, victim);
    QFETCH(int, index);
    QVector<PriceBased2dPlotCurve*> curves;
    for (int i = 0; i < 5; ++i)
        curves << m_host->add(QString::number(i));
    if (victim == Victim::CheckBox)
        delete m_host->checkBox(curves[index]);
    else if (victim == Victim::Label)
        delete m_host->label(curves[index]);
    else if (victim == Victim::Entry)
        delete m_host->entry(curves[index]);
    else
        delete curves[index];
    flushDeletions();
    for (const bool mapsAreUpToDate : {false, true}) {
        if (mapsAreUpToDate)
            m_host->legend->updateItemMaps();
        for (int i = 0; i < curves.size(); ++i)
            QVERIFY2(i == index ? !isFound(QString::number(i)) : toggles(QString::number(i)),
                qPrintable(QString::number(i)));
    }
}

void tst_legendentries::survivorsOfRandomDestruction()
{
    std::mt19937_64 random(seed);
    for (int round = 0; round < 20; ++round) {
        QVector<QPair<QString, PriceBased2dPlotCurve*>> alive;
        int made = 0;
        for (int step = 0; step < 40; ++step) {
            const bool adds = alive.isEmpty() || random() % 3 != 0;
            if (adds) {
                const QString text = QString::number(made++);
                alive.append({text, m_host->add(text)});
            } else {
                const auto [text, curve] = alive.takeAt(int(random() % quint64(alive.size())));
                if (random() % 2 == 0)
                    m_host->legend->setCheckBoxChecked(text, false);
                delete curve;
                if (random() % 2 == 0)
                    flushDeletions();
            }
            for (const auto& survivor : qAsConst(alive))
                QVERIFY2(toggles(survivor.first),
                    qPrintable(QStringLiteral("seed %1 round %2 step %3 entry %4")
                                   .arg(seed)
                                   .arg(round)
                                   .arg(step)
                                   .arg(survivor.first)));
        }
        init();
    }
}

void tst_legendentries::greyStaysGrey_data()
{
    QTest::addColumn<QString>("change");
    for (const char* change : {"new curve", "removed curve", "other title", "own title", "own symbol",
             "own icon size", "whole legend"})
        QTest::newRow(change) << change;
}

void tst_legendentries::greyStaysGrey()
{
    QFETCH(QString, change);
    PriceBased2dPlotCurve* curve = m_host->add(one);
    PriceBased2dPlotCurve* other = m_host->add(two);
    m_host->checkBox(curve)->setChecked(false);
    QSignalSpy spy(m_host->legend, SIGNAL(visibilityChanged(QString, bool)));
    if (change == "new curve")
        m_host->add(QStringLiteral("three"));
    else if (change == "removed curve")
        delete other;
    else if (change == "other title")
        other->setTitle(QStringLiteral("three"));
    else if (change == "own title")
        curve->setTitle(QStringLiteral("three"));
    else if (change == "own symbol")
        curve->setSymbol(new QwtSymbol(QwtSymbol::UTriangle));
    else if (change == "own icon size")
        curve->setLegendIconSize(QSize(30, 10));
    else
        m_host->plot.updateLegend();
    flushDeletions();
    QVERIFY(!m_host->checkBox(curve)->isChecked());
    QCOMPARE(m_host->color(curve), grey);
    QCOMPARE(m_host->label(curve)->text().text(), curve->title().text());
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList(one));
    QCOMPARE(spy.count(), 0);
    if (change != "removed curve")
        QCOMPARE(m_host->color(other), QColor(Qt::black));
}

void tst_legendentries::listOutlivesEveryEntry()
{
    for (const QString& text : {one, two})
        m_host->checkBox(m_host->add(text))->setChecked(false);
    m_host->plot.detachItems();
    flushDeletions();
    m_host->legend->updateItemMaps();
    m_host->legend->restoreUncheckedItems();
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList({one, two}));
    const auto* second = m_host->add(two);
    const auto* third = m_host->add(QStringLiteral("three"));
    const QImage own = m_host->icon(second);
    QVERIFY(m_host->checkBox(second)->isChecked());
    m_host->legend->restoreUncheckedItems();
    QVERIFY(!m_host->checkBox(second)->isChecked());
    QVERIFY(m_host->checkBox(third)->isChecked());
    QCOMPARE(m_host->color(second), grey);
    // What the list names already counts as an entry that shows its placeholder.
    QCOMPARE(m_host->icon(second), own);
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList({one, two}));
}

void tst_legendentries::eachPartToggles_data()
{
    QTest::addColumn<QString>("part");
    for (const char* part : {"box", "icon", "text", "margin"})
        QTest::newRow(part) << part;
}

void tst_legendentries::eachPartToggles()
{
    QFETCH(QString, part);
    const auto* curve = m_host->add(QStringLiteral("a title of some length"));
    show();
    QCheckBox* box = m_host->checkBox(curve);
    QwtLegendLabel* label = m_host->label(curve);
    QWidget* target = label;
    QPoint point(label->icon().width() / 2, label->height() / 2);
    if (part == "box") {
        target = box;
        point = QPoint(box->height() / 2, box->height() / 2);
    } else if (part == "text") {
        point = label->textRect().center();
        QVERIFY(point.x() > label->icon().width());
    } else if (part == "margin") {
        target = m_host->entry(curve);
        point = QPoint(1, 1);
    }
    for (const bool checked : {false, true}) {
        // Through the window, as the mouse's events come.
        const QPoint place = target->mapTo(&m_host->plot, point);
        QTest::mouseClick(m_host->plot.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
        QCOMPARE(box->isChecked(), checked);
        QCOMPARE(m_host->color(curve), checked ? QColor(Qt::black) : grey);
    }
}

void tst_legendentries::keyboard()
{
    const auto* first = m_host->add(one);
    const auto* second = m_host->add(two);
    show();
    m_host->checkBox(first)->setFocus();
    QVERIFY(m_host->checkBox(first)->hasFocus());
    QTest::keyClick(m_host->plot.windowHandle(), Qt::Key_Space);
    QVERIFY(!m_host->checkBox(first)->isChecked());
    QTest::keyClick(m_host->plot.windowHandle(), Qt::Key_Tab);
    QVERIFY(m_host->checkBox(second)->hasFocus());
    QTest::keyClick(m_host->plot.windowHandle(), Qt::Key_Space);
    QVERIFY(!m_host->checkBox(second)->isChecked());
    QTest::keyClick(m_host->plot.windowHandle(), Qt::Key_Space);
    QVERIFY(m_host->checkBox(second)->isChecked());
    QCOMPARE(m_host->legend->uncheckedItems(), QStringList(one));
}

void tst_legendentries::screenReader()
{
    auto* curve = m_host->add(one);
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(m_host->checkBox(curve));
    QVERIFY(reader);
    QCOMPARE(reader->role(), QAccessible::CheckBox);
    QCOMPARE(reader->text(QAccessible::Name), one);
    QVERIFY(reader->state().checked);
    m_host->legend->setCheckBoxChecked(one, false);
    QVERIFY(!reader->state().checked);
    curve->setTitle(two);
    QCOMPARE(reader->text(QAccessible::Name), two);
}

// The boxes of both entries are telling of their change when the legend goes.
void tst_legendentries::listenerDeletesAfterAnother()
{
    const QPointer<QCheckBox> first = m_host->checkBox(m_host->add(one));
    const QPointer<QCheckBox> second = m_host->checkBox(m_host->add(two));
    connect(m_host->legend, &PriceBased2dPlotLegend::visibilityChanged, this, [&](const QString& text) {
        if (text == one)
            m_host->legend->setCheckBoxChecked(two, false);
        else
            delete m_host->legend;
        flushDeletions();
        QVERIFY(first);
    });
    first->setChecked(false);
    QVERIFY(!m_host->legend);
    flushDeletions();
    QVERIFY(!first && !second);
}

// The box has told of its second change already, and of the first one not yet.
void tst_legendentries::listenerTogglesAndDeletes()
{
    const QPointer<QCheckBox> box = m_host->checkBox(m_host->add(one));
    QVector<bool> told;
    connect(m_host->legend, &PriceBased2dPlotLegend::visibilityChanged, this,
        [&](const QString& text, bool visible) {
            told << visible;
            if (visible)
                return;
            m_host->legend->setCheckBoxChecked(text, true);
            delete m_host->legend;
            flushDeletions();
            QVERIFY(box);
        });
    box->setChecked(false);
    QCOMPARE(told, QVector<bool>({false, true}));
    flushDeletions();
    QVERIFY(!box);
}

PLOT2D_TEST_MAIN(tst_legendentries)
#include "tst_legendentries.moc"
