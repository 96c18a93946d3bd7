#include "desk/window/deskrun.h"
#include "support/testmain.h"

#include <translations/language.h>

#include <QLibraryInfo>
#include <QProcessEnvironment>
#include <QTemporaryDir>

/// Which language the desk speaks.
class tst_language : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isTheFirstThatIsThere_data();
    void isTheFirstThatIsThere();
    void ofTheProgram_data();
    void ofTheProgram();
    void isUsedUntilTheNext();
    void speaksOfNumbers();
    void reachesTheTextsOfQt();
    void isRefusedIfUnknown();
    void cleanup() { QVERIFY(Language::use(QStringLiteral("en"))); }

private:
    static QString open() { return QCoreApplication::translate("DeskWindow", "&File"); }
    static QString points(int count)
    {
        return QCoreApplication::translate("DeskTexts", "%n points", nullptr, count);
    }
};

void tst_language::isTheFirstThatIsThere_data()
{
    QTest::addColumn<QStringList>("wanted");
    QTest::addColumn<QString>("expected");
    QTest::newRow("German") << QStringList{"de"} << "de";
    QTest::newRow("German of Austria") << QStringList{"de-AT"} << "de";
    QTest::newRow("German second") << QStringList{"fr-FR", "de-DE"} << "de";
    QTest::newRow("English before German") << QStringList{"en-GB", "de-DE"} << "en";
    QTest::newRow("another one") << QStringList{"fr-FR"} << "en";
    QTest::newRow("a longer code") << QStringList{"del"} << "en";
    QTest::newRow("no language") << QStringList{"C"} << "en";
    QTest::newRow("nothing") << QStringList{} << "en";
}

void tst_language::isTheFirstThatIsThere()
{
    QFETCH(QStringList, wanted);
    QFETCH(QString, expected);
    QCOMPARE(Language::among(wanted), expected);
}

void tst_language::ofTheProgram_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray english = "optiondesk: --scale \"9\": a whole number from 1 to 4 is needed\n";
    const QByteArray german = "optiondesk: --scale \"9\": es fehlt eine ganze Zahl von 1 bis 4\n";
    const QStringList bad{"--scale", "9"};
    const QStringList badGerman{"--scale", "9", "--language", "de"};
    const QStringList badEnglish{"--language=en", "--scale", "9"};
    QTest::newRow("of a German") << "de_DE.UTF-8" << bad << german;
    QTest::newRow("of a Frenchman") << "fr_FR.UTF-8" << bad << english;
    QTest::newRow("no locale") << "C" << bad << english;
    QTest::newRow("asked for") << "C" << badGerman << german;
    QTest::newRow("against the locale") << "de_DE.UTF-8" << badEnglish << english;
    QTest::newRow("one that is not there")
        << "C" << QStringList{"--language", "fr"}
        << QByteArray("optiondesk: --language \"fr\": en or de is needed\n");
    QTest::newRow("the same for a German")
        << "de_DE.UTF-8" << QStringList{"--language", "fr"}
        << QByteArray("optiondesk: --language \"fr\": es fehlt en oder de\n");
}

void tst_language::ofTheProgram()
{
    QFETCH(QString, locale);
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, expected);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), locale);
    environment.insert(QStringLiteral("LANGUAGE"), QString());
    const QTemporaryDir folder;
    const DeskRun run = runDesk(arguments, folder.path(), environment);
    QCOMPARE(run.errors, expected);
    QCOMPARE(run.exitCode, 2);
}

void tst_language::isUsedUntilTheNext()
{
    QCOMPARE(open(), QStringLiteral("&File"));
    QVERIFY(Language::use(QStringLiteral("de")));
    QCOMPARE(open(), QStringLiteral("&Datei"));
    QVERIFY(Language::use(QStringLiteral("en")));
    QCOMPARE(open(), QStringLiteral("&File"));
}

void tst_language::speaksOfNumbers()
{
    QCOMPARE(points(2), QStringLiteral("2 points"));
    QVERIFY(Language::use(QStringLiteral("de")));
    QCOMPARE(points(1), QStringLiteral("1 Punkt"));
    QCOMPARE(points(0), QStringLiteral("0 Punkte"));
}

void tst_language::reachesTheTextsOfQt()
{
    const QString file
        = QLibraryInfo::location(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_de.qm");
    if (!QFile::exists(file))
        QSKIP("Qt's own translations are not installed.");
    QVERIFY(Language::use(QStringLiteral("de")));
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"));
}

void tst_language::isRefusedIfUnknown()
{
    QVERIFY(Language::use(QStringLiteral("de")));
    QVERIFY(!Language::use(QStringLiteral("xx")));
    QVERIFY(!Language::use(QString()));
    QCOMPARE(open(), QStringLiteral("&Datei"));
}

PLOT2D_TEST_MAIN(tst_language)
#include "tst_language.moc"
