#pragma once

#include <QDate>
#include <QString>

/// The base code after a file's name: its words before the first digit or underscore in capitals, "WTI" for
/// "wti_options_on_futures_2012-10-01.csv". A name that begins otherwise gives its first word of letters,
/// one without letters itself without its extension.
QString baseCodeFromFileName(const QString& fileName);

/// The first date in a file's name, as 2012-10-01 (also parted by '_' or '.') or 20121001, with no further
/// digit at its ends; invalid if there is none.
QDate dateFromFileName(const QString& fileName);
