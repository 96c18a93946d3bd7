#pragma once

#include "window/shownseries.h"

#include <QString>

/// What the desk says of a series.
namespace Texts {

/// "14 Nov 2012" in the language of the texts; "no expiry" for an invalid date.
QString expiry(const QDate& date);

/// "WTI, expiry 14 Nov 2012", or the base code alone without an expiry.
QString seriesName(const SeriesData& data);

/// "WTI 2012-11-14", or the base code alone without an expiry: a name for documents that sorts by date.
QString documentName(const SeriesData& data);

/// "WTI · expiry 14 Nov 2012 · 44 days"; where the days do not come from dates, it says where from.
QString title(const ShownSeries& series);

/// The forward and its source, the points, the quotes left out by reason, and the smile's error.
QString status(const ShownSeries& series);

/// What the user must know of the numbers, an assumed time to expiry; empty if there is nothing.
QString notice(const ShownSeries& series);

/// The text in one line: line ends and other control characters become blanks.
QString oneLine(const QString& text);

}
