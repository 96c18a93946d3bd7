#include "desk/window/deskrun.h"
#include "support/testmain.h"

#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>

/// What the program tells of its work on standard error.
class tst_logging : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isSilentUnasked();
    void tellsByCategory_data();
    void tellsByCategory();
    void isInTheManual();

private:
    static DeskRun run(const QString& rules);
};

namespace {

const QStringList categories{QStringLiteral("optiondesk.database"), QStringLiteral("optiondesk.import"),
    QStringLiteral("optiondesk.pricing"), QStringLiteral("optiondesk.replay"),
    QStringLiteral("optiondesk.session")};

}

DeskRun tst_logging::run(const QString& rules)
{
    const QTemporaryDir folder;
    QFile settings(folder.filePath(QStringLiteral("settings.ini")));
    settings.open(QIODevice::WriteOnly);
    settings.write("[session]\ngrid=hidden\n");
    settings.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), rules);
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
    environment.remove(QStringLiteral("QT_MESSAGE_PATTERN"));
    return runDesk({"--settings", settings.fileName(), "--picture", folder.filePath("picture.png")},
        folder.path(), environment);
}

void tst_logging::isSilentUnasked()
{
    const DeskRun silent = run(QString());
    QCOMPARE(silent.trouble(), QByteArray());
}

void tst_logging::tellsByCategory_data()
{
    QTest::addColumn<QString>("category");
    for (const QString& category : categories) {
        // Without a window there is nothing to replay into.
        if (!category.endsWith(QLatin1String("replay")))
            QTest::newRow(qPrintable(category)) << category;
    }
}

void tst_logging::tellsByCategory()
{
    QFETCH(QString, category);
    const DeskRun asked = run(category + QStringLiteral(".debug=true"));
    QCOMPARE(asked.exitCode, 0);
    QVERIFY(!asked.errorLines().isEmpty());
    const QList<QByteArray> lines = asked.errorLines();
    for (const QByteArray& line : lines)
        QVERIFY2(line.startsWith(category.toLatin1() + ": "), line.constData());
}

void tst_logging::isInTheManual()
{
    QFile file(QStringLiteral(DESKTOP_DIR "/optiondesk.1"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList named;
    static const QRegularExpression name(QStringLiteral("optiondesk\\.[a-z]{3,}"));
    for (auto found = name.globalMatch(QString::fromUtf8(file.readAll())); found.hasNext();) {
        const QString text = found.next().captured();
        if (text != QLatin1String("optiondesk.sqlite") && !named.contains(text))
            named.append(text);
    }
    named.sort();
    QCOMPARE(named, categories);
}

PLOT2D_TEST_MAIN(tst_logging)
#include "tst_logging.moc"
