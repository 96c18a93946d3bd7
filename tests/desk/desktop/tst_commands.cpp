#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <quotes/quotesdock.h>
#include <seriestree/seriesdock.h>
#include <translations/language.h>
#include <window/deskdata.h>
#include <window/deskwindow.h>

#include <QAccessible>
#include <QMenu>
#include <QMenuBar>
#include <QSet>

/// The commands of the whole window, with all its parts, in every language.
class tst_commands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void init();
    void areWhole();
    void haveTheirOwnKeys();
    void haveTheirOwnMnemonics();
    void areInTheMenu();
    void partsHaveNames();
    void cleanup();
    void cleanupTestCase();

private:
    QList<QAction*> m_commands;
    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
};

namespace {

QString plainText(const QAction& action)
{
    return action.text().remove(QLatin1Char('&'));
}

void collect(const QMenu& menu, QList<QAction*>& commands)
{
    const QList<QAction*> actions = menu.actions();
    for (QAction* const action : actions) {
        if (action->menu())
            collect(*action->menu(), commands);
        else if (!action->isSeparator())
            commands.append(action);
    }
}

QVector<QMenu*> menus(const QWidget& window)
{
    return window.findChildren<QMenu*>().toVector();
}

}

void tst_commands::initTestCase_data()
{
    QTest::addColumn<QString>("language");
    const QStringList codes = Language::codes();
    for (const QString& code : codes)
        QTest::newRow(qPrintable(code)) << code;
}

void tst_commands::init()
{
    QFETCH_GLOBAL(QString, language);
    QVERIFY(Language::use(language));
    m_data = std::make_unique<DeskData>(QString());
    const int futureIsinId = m_data->import(DeskTest::quotedChain(QStringLiteral("FIRST")), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    new SeriesDock(m_window.get());
    new QuotesDock(m_window.get());
    m_window->showSeries(futureIsinId, SeriesFacts());
    m_window->resize(1000, 640);
    m_window->show();
    const QList<QAction*> menus = m_window->menuBar()->actions();
    for (QAction* const menu : menus)
        collect(*menu->menu(), m_commands);
    QVERIFY(m_commands.size() > 40);
}

void tst_commands::areWhole()
{
    for (const QAction* command : qAsConst(m_commands)) {
        QVERIFY(!plainText(*command).isEmpty());
        QVERIFY2(!command->shortcuts().isEmpty(), qPrintable(plainText(*command)));
        QVERIFY2(!command->shortcuts().constFirst().isEmpty(), qPrintable(plainText(*command)));
        QVERIFY2(!command->statusTip().isEmpty(), qPrintable(plainText(*command)));
    }
}

void tst_commands::haveTheirOwnKeys()
{
    QHash<QKeySequence, QString> owners;
    for (const QAction* command : qAsConst(m_commands)) {
        const QList<QKeySequence> keys = command->shortcuts();
        for (const QKeySequence& key : keys) {
            QVERIFY2(!owners.contains(key),
                qPrintable(QStringLiteral("%1: %2 and %3")
                               .arg(key.toString(), owners.value(key), plainText(*command))));
            owners.insert(key, plainText(*command));
        }
    }
}

void tst_commands::haveTheirOwnMnemonics()
{
    const QVector<QMenu*> all = menus(*m_window);
    for (const QMenu* menu : all) {
        QHash<QChar, QString> owners;
        const QList<QAction*> actions = menu->actions();
        for (const QAction* action : actions) {
            const QKeySequence mnemonic = QKeySequence::mnemonic(action->text());
            if (mnemonic.isEmpty())
                continue;
            const QChar letter = mnemonic.toString().back();
            QVERIFY2(!owners.contains(letter),
                qPrintable(QStringLiteral("%1 > %2: %3 and %4")
                               .arg(menu->title(), letter, owners.value(letter), action->text())));
            owners.insert(letter, action->text());
        }
    }
}

void tst_commands::areInTheMenu()
{
    const QList<QAction*> all = m_window->findChildren<QAction*>();
    for (QAction* const action : all) {
        const bool isCommand = !action->shortcuts().isEmpty() && !action->shortcut().isEmpty();
        QVERIFY2(!isCommand || m_commands.contains(action), qPrintable(plainText(*action)));
    }
}

void tst_commands::partsHaveNames()
{
    const QList<QWidget*> widgets = m_window->findChildren<QWidget*>();
    int found = 0;
    for (QWidget* const widget : widgets) {
        const bool isReachable = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisible();
        if (!isReachable || widget->focusProxy())
            continue;
        const QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(face);
        QVERIFY2(!face->text(QAccessible::Name).isEmpty(),
            qPrintable(QStringLiteral("%1 %2").arg(widget->metaObject()->className(), widget->objectName())));
        ++found;
    }
    QVERIFY(found > 5);
}

void tst_commands::cleanup()
{
    m_commands.clear();
    m_window.reset();
    m_data.reset();
}

void tst_commands::cleanupTestCase()
{
    QVERIFY(Language::use(QStringLiteral("en")));
}

PLOT2D_TEST_MAIN(tst_commands)
#include "tst_commands.moc"
