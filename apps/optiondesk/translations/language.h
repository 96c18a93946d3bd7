#pragma once

#include <QString>
#include <QStringList>

/// The language of the desk's texts. Numbers are not its affair: they follow the locale.
namespace Language {

/// The codes of those there are, "en" first, which the texts are written in.
QStringList codes();

/// The first of the wanted ones, such as "de-AT", that is there; "en" if there is none.
QString among(const QStringList& wanted);

/// The one that the user's locale asks for.
QString ofUser();

/// Lets the desk, and Qt where its translations are installed, speak this language from now on: texts that
/// are already on the screen stay. Needs the application object. False, and nothing changes, for a code
/// that is not one of codes().
bool use(const QString& code);

}
