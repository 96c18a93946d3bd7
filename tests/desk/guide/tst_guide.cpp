#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <quotes/quotesdock.h>
#include <seriestree/seriesdock.h>
#include <translations/language.h>
#include <window/commandoptions.h>
#include <window/deskdata.h>
#include <window/deskwindow.h>

#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

/// The guide says what the program has: its pictures, options and commands, all of them and no others.
class tst_guide : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void linksEveryPicture();
    void linksFilesThatAreThere();
    void namesEveryOption();
    void namesEveryCommand();
    void drawsItsPictures();

private:
    QString m_guide;
    QString m_readme;
};

namespace {

QString textOf(const char* name)
{
    QFile file(QStringLiteral(PROJECT_DIR "/") + QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList captures(const QString& text, const QString& pattern)
{
    QStringList all;
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    for (auto found = expression.globalMatch(text); found.hasNext();)
        all.append(found.next().captured(1));
    all.removeDuplicates();
    all.sort();
    return all;
}

// As the guide writes them: "View > Pan > Left", and the keys.
void collectCommands(const QMenu& menu, const QString& path, QStringList& rows)
{
    const QList<QAction*> actions = menu.actions();
    for (const QAction* const action : actions) {
        const QString name = path + QStringLiteral(" > ") + action->text().remove(QLatin1Char('&'));
        if (action->menu()) {
            collectCommands(*action->menu(), name, rows);
            continue;
        }
        if (action->isSeparator())
            continue;
        QStringList keys;
        const QList<QKeySequence> all = action->shortcuts();
        for (const QKeySequence& key : all)
            keys.append(QLatin1Char('`') + key.toString(QKeySequence::PortableText) + QLatin1Char('`'));
        rows.append(QStringLiteral("| %1 | %2 |").arg(name, keys.join(QStringLiteral(", "))));
    }
}

QStringList commandsOfWindow()
{
    DeskData data{QString()};
    const int futureIsinId = data.import(DeskTest::quotedChain(), 0);
    DeskWindow window(data, DeskView::Volatility);
    new SeriesDock(&window);
    new QuotesDock(&window);
    window.showSeries(futureIsinId, SeriesFacts());
    QStringList rows;
    const QList<QAction*> menus = window.menuBar()->actions();
    for (const QAction* const menu : menus)
        collectCommands(*menu->menu(), menu->text().remove(QLatin1Char('&')), rows);
    rows.sort();
    return rows;
}

}

void tst_guide::initTestCase()
{
    QVERIFY(Language::use(QStringLiteral("en")));
    m_guide = textOf("docs/desk.md");
    m_readme = textOf("README.md");
    QVERIFY(!m_guide.isEmpty() && !m_readme.isEmpty());
}

void tst_guide::linksEveryPicture()
{
    QStringList linked = captures(m_guide, QStringLiteral("!\\[[^\\]]+\\]\\(pictures/([^)]+)\\)"))
        + captures(m_readme, QStringLiteral("!\\[[^\\]]+\\]\\(docs/pictures/([^)]+)\\)"));
    linked.removeDuplicates();
    linked.sort();
    QVERIFY(linked.size() > 5);
    const QDir folder(QStringLiteral(PROJECT_DIR "/docs/pictures"));
    QCOMPARE(linked, folder.entryList(QDir::Files | QDir::Hidden, QDir::Name));
    constexpr int largest = 150 * 1024;
    for (const QString& name : linked) {
        QVERIFY2(!QImage(folder.filePath(name)).isNull(), qPrintable(name));
        QVERIFY2(QFileInfo(folder, name).size() < largest, qPrintable(name));
    }
}

void tst_guide::linksFilesThatAreThere()
{
    const QString link = QStringLiteral("\\]\\(([a-z][^):#]*)(?:#[^)]*)?\\)");
    for (const auto& [folder, text] : {std::make_pair("/docs/", m_guide), std::make_pair("/", m_readme)}) {
        const QStringList links = captures(text, link);
        QVERIFY(links.size() > 1);
        for (const QString& target : links)
            QVERIFY2(QFile::exists(QStringLiteral(PROJECT_DIR) + QLatin1String(folder) + target),
                qPrintable(target));
    }
}

void tst_guide::namesEveryOption()
{
    QStringList expected{QStringLiteral("--help"), QStringLiteral("--help-all"), QStringLiteral("--version")};
    const QList<QCommandLineOption> options = CommandOptions::all();
    for (const QCommandLineOption& option : options)
        expected.append(QStringLiteral("--") + option.names().constFirst());
    expected.sort();
    // What other programs take is no option of the desk.
    QString text = m_guide;
    text.remove(QRegularExpression(QStringLiteral("^.*tools/make_.*$"), QRegularExpression::MultilineOption));
    QCOMPARE(captures(text, QStringLiteral("(--[a-z][a-z-]*)")), expected);
}

void tst_guide::namesEveryCommand()
{
    const QStringList expected = commandsOfWindow();
    QVERIFY(expected.size() > 40);
    const QStringList written = captures(m_guide, QStringLiteral("^(\\| \\w+ > .*\\|)$"));
    for (const QString& row : expected)
        QVERIFY2(written.contains(row), qPrintable(QStringLiteral("not in the guide: ") + row));
    for (const QString& row : written)
        QVERIFY2(expected.contains(row), qPrintable(QStringLiteral("not in the program: ") + row));
}

// Other machines have other fonts, so the pixels may differ.
void tst_guide::drawsItsPictures()
{
    const QTemporaryDir folder;
    QProcess script;
    script.start(QStringLiteral(PROJECT_DIR "/tools/remake-pictures"),
        {"--desk", QStringLiteral(OPTIONDESK_PROGRAM), "--into", folder.path(), "zoom", "position"});
    constexpr int patience = 120000;
    QVERIFY(script.waitForFinished(patience));
    const QByteArray said = script.readAllStandardOutput() + script.readAllStandardError();
    QVERIFY2(script.exitStatus() == QProcess::NormalExit && script.exitCode() == 0, said);
    QCOMPARE(said, QByteArray());
    for (const char* name : {"zoom.png", "position.png"}) {
        const QImage drawn(folder.filePath(QString::fromLatin1(name)));
        QVERIFY(!drawn.isNull());
        QCOMPARE(drawn.size(),
            QImage(QStringLiteral(PROJECT_DIR "/docs/pictures/") + QString::fromLatin1(name)).size());
        QVERIFY(DeskTest::countPixels(drawn, qRgb(0x00, 0x72, 0xb2)) > 300);
    }
}

PLOT2D_TEST_MAIN(tst_guide)
#include "tst_guide.moc"
