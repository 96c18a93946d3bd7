#include "translations/language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

// Outside of any namespace, as the resources themselves are.
static void loadResources()
{
    Q_INIT_RESOURCE(translations);
}

namespace {

const auto english = QStringLiteral("en");

// Replaces what the same translator had; a file that is not there leaves the texts as they are written.
void install(QPointer<QTranslator>& translator, const QString& name, const QString& folder)
{
    delete translator;
    translator = new QTranslator(qApp);
    if (translator->load(name, folder))
        QCoreApplication::installTranslator(translator);
}

}

QStringList Language::codes()
{
    return {english, QStringLiteral("de")};
}

QString Language::among(const QStringList& wanted)
{
    for (const QString& name : wanted) {
        QString code = name.section(QLatin1Char('-'), 0, 0);
        if (codes().contains(code))
            return code;
    }
    return english;
}

QString Language::ofUser()
{
    return among(QLocale::system().uiLanguages());
}

bool Language::use(const QString& code)
{
    static QPointer<QTranslator> ofDesk;
    static QPointer<QTranslator> ofQt;
    if (!codes().contains(code))
        return false;
    loadResources();
    install(ofDesk, QStringLiteral("optiondesk_") + code, QStringLiteral(":/translations"));
    install(ofQt, QStringLiteral("qtbase_") + code, QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    return true;
}
