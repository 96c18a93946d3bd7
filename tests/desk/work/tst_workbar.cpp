#include "support/testmain.h"

#include <work/work.h>
#include <work/workbar.h>

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QProgressBar>
#include <QSignalSpy>
#include <QStatusBar>
#include <QToolButton>

/// The bar that shows long work and stops it.
class tst_workbar : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void percentagesAscend();
    void staysAwayForShortWork();
    void showsWhatGoesOn();
    void cutsLongTexts();
    void cancelsByItsButton();
    void cancelsByTheAction();
    void cancelsByEscape();
    void leavesEscapeToOthers();
    void showsTheLatestOfSeveral();
    void survivesItsWork();
    void hasNames();

private:
    QMainWindow* window() const { return m_window.get(); }

    std::unique_ptr<QMainWindow> m_window;
    WorkBar* m_bar = nullptr;
    QLineEdit* m_edit = nullptr;
    QAction* m_action = nullptr;
    QAction* m_escape = nullptr;
    Work* m_work = nullptr;
};

void tst_workbar::init()
{
    m_window = std::make_unique<QMainWindow>();
    // The platform of the tests says that it takes no hints for sizes.
    m_window->setMinimumSize(1, 1);
    m_edit = new QLineEdit(window());
    m_window->setCentralWidget(m_edit);
    m_bar = new WorkBar(window());
    m_window->statusBar()->addPermanentWidget(m_bar);
    m_work = new Work(window());
    m_bar->add(m_work);
    m_action = new QAction(QStringLiteral("Cancel"), window());
    m_bar->setCancelAction(m_action);
    // A command of the window's own on the same key.
    m_escape = new QAction(QStringLiteral("Leave"), window());
    m_escape->setShortcut(Qt::Key_Escape);
    window()->addAction(m_escape);
    m_window->show();
    m_edit->setFocus();
    QApplication::setActiveWindow(window());
    QVERIFY(QTest::qWaitForWindowActive(window()));
}

void tst_workbar::cleanup()
{
    m_window.reset();
}

void tst_workbar::percentagesAscend()
{
    QSignalSpy reached(m_work, SIGNAL(reached(int)));
    m_work->reach(10);
    QVERIFY(reached.isEmpty());
    m_work->begin(QStringLiteral("one"));
    QCOMPARE(m_work->percent(), int(Work::unknownPercent));
    for (const int percent : {0, 40, 30, 40, 41, 1000, 50})
        m_work->reach(percent);
    QList<int> heard;
    for (const QList<QVariant>& signal : qAsConst(reached))
        heard.append(signal.first().toInt());
    QCOMPARE(heard, (QList<int>{0, 40, 41, 100}));
    QSignalSpy ended(m_work, SIGNAL(ended()));
    m_work->end();
    m_work->end();
    QCOMPARE(ended.size(), 1);
}

void tst_workbar::staysAwayForShortWork()
{
    m_work->begin(QStringLiteral("short"));
    QVERIFY(!m_bar->isVisible());
    QCOMPARE(m_bar->current(), m_work);
    m_work->end();
    QCOMPARE(m_bar->current(), nullptr);
    // Were the end not heard, the next work would be shown too early.
    m_work->begin(QStringLiteral("long"));
    QVERIFY(!m_bar->isVisible());
    QTRY_VERIFY(m_bar->isVisible());
    m_work->end();
    QVERIFY(!m_bar->isVisible());
}

void tst_workbar::showsWhatGoesOn()
{
    auto* const progress = m_bar->findChild<QProgressBar*>();
    m_work->begin(QStringLiteral("<b>x</b>"));
    QTRY_VERIFY(m_bar->isVisible());
    QCOMPARE(m_bar->findChild<QLabel*>()->text(), QStringLiteral("<b>x</b>"));
    QCOMPARE(m_bar->findChild<QLabel*>()->textFormat(), Qt::PlainText);
    QCOMPARE(progress->maximum(), 0);
    m_work->reach(37);
    QCOMPARE(progress->maximum(), 100);
    QCOMPARE(progress->value(), 37);
}

void tst_workbar::cutsLongTexts()
{
    const QString text = QStringLiteral("Importing ") + QString(500, QLatin1Char('x'));
    m_work->begin(text);
    QTRY_VERIFY(m_bar->isVisible());
    QVERIFY(m_bar->width() < 500);
    QCOMPARE(m_bar->findChild<QLabel*>()->toolTip(), text);
    QCOMPARE(m_bar->findChild<QProgressBar*>()->accessibleDescription(), text);
}

void tst_workbar::cancelsByItsButton()
{
    QSignalSpy wanted(m_work, SIGNAL(cancelWanted()));
    m_work->begin(QStringLiteral("one"));
    QTRY_VERIFY(m_bar->isVisible());
    QTest::mouseClick(m_bar->findChild<QToolButton*>(), Qt::LeftButton);
    QCOMPARE(wanted.size(), 1);
}

void tst_workbar::cancelsByTheAction()
{
    QSignalSpy wanted(m_work, SIGNAL(cancelWanted()));
    QVERIFY(!m_action->isEnabled());
    m_work->begin(QStringLiteral("one"));
    QVERIFY(m_action->isEnabled());
    m_action->trigger();
    QCOMPARE(wanted.size(), 1);
    m_work->end();
    QVERIFY(!m_action->isEnabled());
}

void tst_workbar::cancelsByEscape()
{
    QSignalSpy wanted(m_work, SIGNAL(cancelWanted()));
    QSignalSpy other(m_escape, SIGNAL(triggered()));
    m_work->begin(QStringLiteral("one"));
    QTest::keyClick(m_edit, Qt::Key_Escape);
    QCOMPARE(wanted.size(), 1);
    QCOMPARE(other.size(), 0);
}

void tst_workbar::leavesEscapeToOthers()
{
    QSignalSpy wanted(m_work, SIGNAL(cancelWanted()));
    QSignalSpy other(m_escape, SIGNAL(triggered()));
    QTest::keyClick(m_edit, Qt::Key_Escape);
    QCOMPARE(other.size(), 1);
    m_work->begin(QStringLiteral("one"));
    QTest::mousePress(m_edit, Qt::LeftButton);
    QTest::keyClick(m_edit, Qt::Key_Escape);
    QTest::mouseRelease(m_edit, Qt::LeftButton);
    QCOMPARE(wanted.size(), 0);
    QTest::keyClick(m_edit, Qt::Key_Escape, Qt::ShiftModifier);
    QCOMPARE(wanted.size(), 0);
    QWidget dialog;
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(wanted.size(), 0);
}

void tst_workbar::showsTheLatestOfSeveral()
{
    Work second;
    m_bar->add(&second);
    m_work->begin(QStringLiteral("first"));
    second.begin(QStringLiteral("second"));
    QCOMPARE(m_bar->current(), &second);
    QCOMPARE(m_bar->findChild<QLabel*>()->text(), QStringLiteral("second"));
    QSignalSpy firstWanted(m_work, SIGNAL(cancelWanted()));
    m_bar->cancel();
    QCOMPARE(firstWanted.size(), 0);
    second.end();
    QCOMPARE(m_bar->findChild<QLabel*>()->text(), QStringLiteral("first"));
    m_bar->cancel();
    QCOMPARE(firstWanted.size(), 1);
}

void tst_workbar::survivesItsWork()
{
    m_work->begin(QStringLiteral("one"));
    QTRY_VERIFY(m_bar->isVisible());
    delete m_work;
    QCOMPARE(m_bar->current(), nullptr);
    QVERIFY(!m_bar->isVisible());
    m_bar->cancel();
}

void tst_workbar::hasNames()
{
    for (QWidget* const widget : {static_cast<QWidget*>(m_bar->findChild<QProgressBar*>()),
             static_cast<QWidget*>(m_bar->findChild<QToolButton*>())}) {
        const QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(face && !face->text(QAccessible::Name).isEmpty());
    }
    QVERIFY(!m_bar->findChild<QToolButton*>()->toolTip().isEmpty());
}

PLOT2D_TEST_MAIN(tst_workbar)
#include "tst_workbar.moc"
