#include "support/testmain.h"

#include <window/commandoptions.h>

#include <QFile>
#include <QRegularExpression>
#include <QSet>

/// The manual has the options of the command line, all of them and no others.
class tst_manpage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasEveryOption();
};

void tst_manpage::hasEveryOption()
{
    QFile file(QStringLiteral(DESKTOP_DIR "/optiondesk.1"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(file.readAll());
    // A manual writes hyphens that are typed with a backslash.
    text.replace(QStringLiteral("\\-"), QStringLiteral("-"));

    QSet<QString> expected{
        QStringLiteral("--help"), QStringLiteral("--help-all"), QStringLiteral("--version")};
    const QList<QCommandLineOption> options = CommandOptions::all();
    QVERIFY(options.size() > 10);
    for (const QCommandLineOption& option : options)
        expected.insert(QStringLiteral("--") + option.names().constFirst());

    QSet<QString> written;
    static const QRegularExpression name(QStringLiteral("--[a-z][a-z-]*"));
    for (auto found = name.globalMatch(text); found.hasNext();)
        written.insert(found.next().captured());
    QCOMPARE(written, expected);
}

PLOT2D_TEST_MAIN(tst_manpage)
#include "tst_manpage.moc"
