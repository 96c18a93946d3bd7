#include "messages.h"

#include "support/testmain.h"

#include <translations/language.h>

#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

/// The translations have all texts of the sources and no others, and fit into their places.
class tst_messages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void areThere_data() { addLanguages(); }
    void areThere();
    void areOfTheSources_data() { addLanguages(); }
    void areOfTheSources();
    void areFinished_data() { addLanguages(); }
    void areFinished();
    void keepPlaceholders_data() { addLanguages(); }
    void keepPlaceholders();
    void keepMnemonics_data() { addLanguages(); }
    void keepMnemonics();

private:
    static void addLanguages();
};

namespace {

QString fileOf(const QString& language)
{
    return QStringLiteral(DESK_SOURCES "/translations/optiondesk_%1.ts").arg(language);
}

QString line(const Message& message, const QString& translation)
{
    return QStringLiteral("%1: \"%2\" and \"%3\"").arg(message.context, message.source, translation);
}

QStringList sorted(const QString& text, const char* pattern)
{
    QStringList found;
    const QRegularExpression expression(QString::fromLatin1(pattern));
    for (auto each = expression.globalMatch(text); each.hasNext();)
        found.append(each.next().captured());
    found.sort();
    return found;
}

}

void tst_messages::addLanguages()
{
    QTest::addColumn<QString>("language");
    const QStringList codes = Language::codes().mid(1);
    QVERIFY(!codes.isEmpty());
    for (const QString& code : codes)
        QTest::newRow(qPrintable(code)) << code;
}

void tst_messages::areThere()
{
    QFETCH(QString, language);
    QVERIFY(Messages::of(fileOf(language)).size() > 300);
}

void tst_messages::areOfTheSources()
{
    QFETCH(QString, language);
    const QTemporaryDir folder;
    const QString fresh = folder.filePath(QStringLiteral("optiondesk_%1.ts").arg(language));
    QProcess process;
    process.setWorkingDirectory(QStringLiteral(DESK_SOURCES));
    process.start(QStringLiteral(LUPDATE),
        {QStringLiteral("-silent"), QStringLiteral("-locations"), QStringLiteral("none"), QStringLiteral("."),
            QStringLiteral("-I"), QStringLiteral("."), QStringLiteral("-target-language"), language,
            QStringLiteral("-ts"), fresh});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);

    QHash<QString, bool> wanted;
    const QVector<Message> ofSources = Messages::of(fresh);
    QVERIFY(ofSources.size() > 300);
    for (const Message& message : ofSources)
        wanted.insert(Messages::nameOf(message), message.isNumerus);
    QHash<QString, bool> translated;
    const QVector<Message> ofFile = Messages::of(fileOf(language));
    for (const Message& message : ofFile) {
        translated.insert(Messages::nameOf(message), message.isNumerus);
        QVERIFY2(wanted.contains(Messages::nameOf(message)),
            qPrintable(QStringLiteral("gone from the sources, see tools/update-translations: ")
                + Messages::nameOf(message)));
    }
    for (const Message& message : ofSources)
        QVERIFY2(translated.contains(Messages::nameOf(message)),
            qPrintable(QStringLiteral("not in the file, see tools/update-translations: ")
                + Messages::nameOf(message)));
    QCOMPARE(translated, wanted);
}

void tst_messages::areFinished()
{
    QFETCH(QString, language);
    const QVector<Message> messages = Messages::of(fileOf(language));
    for (const Message& message : messages) {
        QVERIFY2(message.state.isEmpty(), qPrintable(message.state + QLatin1Char(' ') + message.source));
        for (const QString& translation : message.translations)
            QVERIFY2(!translation.trimmed().isEmpty(), qPrintable(message.source));
        QCOMPARE(message.translations.size(), message.isNumerus ? 2 : 1);
    }
}

void tst_messages::keepPlaceholders()
{
    QFETCH(QString, language);
    constexpr auto pattern = "%[0-9n]|<[a-z]+>|--[a-z]+|\\*\\.[a-z]+|\\*|\\.\\.\\.$|\\n";
    const QVector<Message> messages = Messages::of(fileOf(language));
    for (const Message& message : messages) {
        for (const QString& translation : message.translations)
            QVERIFY2(sorted(translation, pattern) == sorted(message.source, pattern),
                qPrintable(line(message, translation)));
    }
}

void tst_messages::keepMnemonics()
{
    QFETCH(QString, language);
    const QVector<Message> messages = Messages::of(fileOf(language));
    for (const Message& message : messages) {
        for (const QString& translation : message.translations)
            QVERIFY2(sorted(translation, "&[^ ]").size() == sorted(message.source, "&[^ ]").size(),
                qPrintable(line(message, translation)));
    }
}

PLOT2D_TEST_MAIN(tst_messages)
#include "tst_messages.moc"
