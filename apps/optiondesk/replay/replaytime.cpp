#include "replay/replaytime.h"

#include <chain/numberparser.h>

#include <QDateTime>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr qint64 firstEpochTime = 100000000000;

// The milliseconds behind the seconds: digits beyond the third are cut off.
int millisecondsOf(const QString& fraction)
{
    constexpr int digits = 3;
    return fraction.left(digits).leftJustified(digits, QLatin1Char('0')).toInt();
}

qint64 offsetOf(const QString& zone)
{
    if (zone.isEmpty() || zone == QLatin1String("Z"))
        return 0;
    const qint64 minutes = zone.mid(1, 2).toInt() * 60 + zone.right(2).toInt();
    return (zone.startsWith(QLatin1Char('-')) ? -minutes : minutes) * 60 * 1000;
}

std::optional<QuoteTime> parseMoment(const QRegularExpressionMatch& parts)
{
    const QTime time(parts.captured(2).toInt(), parts.captured(3).toInt(), parts.captured(4).toInt(),
        millisecondsOf(parts.captured(5)));
    const QString zone = parts.captured(6);
    if (parts.capturedLength(1) == 0) {
        if (!zone.isEmpty())
            return std::nullopt;
        return QuoteTime{TimeForm::Clock, time.msecsSinceStartOfDay()};
    }
    const QDate date = QDate::fromString(parts.captured(1), Qt::ISODate);
    if (!date.isValid())
        return std::nullopt;
    // A recording without an offset has no daylight saving time to jump at.
    const qint64 moment = QDateTime(date, time, Qt::UTC).toMSecsSinceEpoch() - offsetOf(zone);
    if (moment < 0)
        return std::nullopt;
    return QuoteTime{TimeForm::DateTime, moment};
}

QuoteTime timeOf(qint64 milliseconds)
{
    return {milliseconds < firstEpochTime ? TimeForm::Elapsed : TimeForm::Epoch, milliseconds};
}

std::optional<QuoteTime> parseMilliseconds(const QString& cell)
{
    // Millions of cells hold digits alone, for which nothing needs to be taken apart.
    constexpr int safeDigits = 15;
    const auto isDigit
        = [](QChar character) { return character >= QLatin1Char('0') && character <= QLatin1Char('9'); };
    if (!cell.isEmpty() && cell.size() <= safeDigits && std::all_of(cell.begin(), cell.end(), isDigit))
        return timeOf(cell.toLongLong());
    const std::optional<ParsedNumber> number = parseNumber(cell, DecimalMark::Point);
    if (!number || number->percent || number->value < decimal::zero)
        return std::nullopt;
    return timeOf(number->value.toString().section(QLatin1Char('.'), 0, 0).toLongLong());
}

}

std::optional<QuoteTime> parseQuoteTime(const QString& cell)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A(?:([0-9]{4}-[0-9]{2}-[0-9]{2})[T ])?([01][0-9]|2[0-3]):([0-5][0-9]):([0-5][0-9])"
                       "(?:[.,]([0-9]{1,9}))?(Z|[-+][0-9]{2}:?[0-9]{2})?\\z"));
    if (!cell.contains(QLatin1Char(':')))
        return parseMilliseconds(cell);
    const QRegularExpressionMatch match = pattern.match(cell);
    return match.hasMatch() ? parseMoment(match) : std::nullopt;
}
