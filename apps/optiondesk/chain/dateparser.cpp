#include "chain/dateparser.h"

#include <QRegularExpression>

namespace {

constexpr int maxCellLength = 64;

int fullYear(const QString& digits)
{
    const int year = digits.toInt();
    if (digits.size() == 2)
        return year < 80 ? 2000 + year : 1900 + year;
    return year;
}

// The number of a month of an English name of three letters or more, 0 for other words.
int monthOf(const QString& word)
{
    static const QStringList names = {QStringLiteral("january"), QStringLiteral("february"),
        QStringLiteral("march"), QStringLiteral("april"), QStringLiteral("may"), QStringLiteral("june"),
        QStringLiteral("july"), QStringLiteral("august"), QStringLiteral("september"),
        QStringLiteral("october"), QStringLiteral("november"), QStringLiteral("december")};
    const QString lower = word.toLower();
    for (int index = 0; lower.size() >= 3 && index < names.size(); ++index) {
        if (names.at(index).startsWith(lower))
            return index + 1;
    }
    return lower == QLatin1String("sept") ? 9 : 0;
}

QDate calendarDate(int year, int month, int day)
{
    return year >= 1900 && year <= 2199 ? QDate(year, month, day) : QDate();
}

std::optional<DateReading> certain(const QDate& date)
{
    if (!date.isValid())
        return std::nullopt;
    return DateReading{date, date};
}

// The text of the date without what is of no meaning around it.
QString bareDate(const QString& cell)
{
    static const QRegularExpression weekday(QStringLiteral("^(?:mon|tue|wed|thu|fri|sat|sun)[a-z]*[,.]?\\s+"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression time(QStringLiteral("[T: ]+[0-9]{1,2}:[0-9]{2}.*$"));
    static const QRegularExpression zeroDecimals(QStringLiteral("^([0-9]{6}|[0-9]{8})\\.0*$"));
    QString text = cell.trimmed();
    text.remove(weekday);
    text.remove(time);
    text.replace(zeroDecimals, QStringLiteral("\\1"));
    return text.trimmed();
}

struct Form {
    QRegularExpression pattern;
    std::optional<DateReading> (*read)(const QRegularExpressionMatch& match);
};

QRegularExpression whole(const char* pattern)
{
    return QRegularExpression(QLatin1Char('^') + QString::fromLatin1(pattern) + QLatin1Char('$'));
}

std::optional<DateReading> yearMonthDay(const QRegularExpressionMatch& match)
{
    return certain(
        calendarDate(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt()));
}

std::optional<DateReading> yearNameDay(const QRegularExpressionMatch& match)
{
    return certain(
        calendarDate(match.captured(1).toInt(), monthOf(match.captured(2)), match.captured(3).toInt()));
}

std::optional<DateReading> yearMonth(const QRegularExpressionMatch& match)
{
    return certain(thirdFriday(match.captured(1).toInt(), match.captured(2).toInt()));
}

std::optional<DateReading> monthYear(const QRegularExpressionMatch& match)
{
    return certain(thirdFriday(match.captured(2).toInt(), match.captured(1).toInt()));
}

std::optional<DateReading> nameYear(const QRegularExpressionMatch& match)
{
    return certain(thirdFriday(fullYear(match.captured(2)), monthOf(match.captured(1))));
}

std::optional<DateReading> dayMonthYear(const QRegularExpressionMatch& match)
{
    return certain(
        calendarDate(fullYear(match.captured(3)), match.captured(2).toInt(), match.captured(1).toInt()));
}

std::optional<DateReading> dayNameYear(const QRegularExpressionMatch& match)
{
    return certain(
        calendarDate(fullYear(match.captured(3)), monthOf(match.captured(2)), match.captured(1).toInt()));
}

std::optional<DateReading> nameDayYear(const QRegularExpressionMatch& match)
{
    return certain(
        calendarDate(match.captured(3).toInt(), monthOf(match.captured(1)), match.captured(2).toInt()));
}

std::optional<DateReading> eitherOrder(const QRegularExpressionMatch& match)
{
    const int year = fullYear(match.captured(3));
    const int first = match.captured(1).toInt();
    const int second = match.captured(2).toInt();
    const DateReading reading{calendarDate(year, first, second), calendarDate(year, second, first)};
    if (!reading.monthFirst.isValid() && !reading.dayFirst.isValid())
        return std::nullopt;
    return reading;
}

const QVector<Form>& forms()
{
    static const QVector<Form> all = {
        {whole("([0-9]{4})[-/.]([0-9]{1,2})[-/.]([0-9]{1,2})"), yearMonthDay},
        {whole("([0-9]{4})([0-9]{2})([0-9]{2})"), yearMonthDay},
        {whole("([0-9]{4})[-/]?([0-9]{2})"), yearMonth},
        {whole("([0-9]{1,2})[-/]([0-9]{4})"), monthYear},
        {whole("([0-9]{1,2})\\.([0-9]{1,2})\\.([0-9]{4}|[0-9]{2})"), dayMonthYear},
        {whole("([0-9]{1,2})[-/]([0-9]{1,2})[-/]([0-9]{4}|[0-9]{2})"), eitherOrder},
        {whole("([0-9]{1,2})[-/. ]*([A-Za-z]{3,9})[-/.,' ]*([0-9]{4}|[0-9]{2})"), dayNameYear},
        {whole("([A-Za-z]{3,9})[-/. ]+([0-9]{1,2})[-/, ]+([0-9]{4})"), nameDayYear},
        {whole("([A-Za-z]{3,9})[-/.,' ]*([0-9]{4}|[0-9]{2})"), nameYear},
        {whole("([0-9]{4})[-/. ]*([A-Za-z]{3,9})[-/. ]*([0-9]{1,2})"), yearNameDay},
    };
    return all;
}

}

QDate thirdFriday(int year, int month)
{
    const QDate first = calendarDate(year, month, 1);
    if (!first.isValid())
        return {};
    return first.addDays((Qt::Friday - first.dayOfWeek() + 7) % 7 + 14);
}

std::optional<DateReading> parseDate(const QString& cell)
{
    if (cell.size() > maxCellLength)
        return std::nullopt;
    const QString text = bareDate(cell);
    for (const Form& form : forms()) {
        const QRegularExpressionMatch match = form.pattern.match(text);
        if (match.hasMatch())
            return form.read(match);
    }
    return std::nullopt;
}

std::optional<int> DateColumn::add(const QString& cell)
{
    const auto known = m_numbers.constFind(cell);
    if (known != m_numbers.constEnd())
        return known.value();
    const std::optional<DateReading> reading = parseDate(cell);
    if (!reading)
        return std::nullopt;
    const bool monthFirst = m_canBeMonthFirst && reading->monthFirst.isValid();
    const bool dayFirst = m_canBeDayFirst && reading->dayFirst.isValid();
    if (!monthFirst && !dayFirst)
        return std::nullopt;
    m_canBeMonthFirst = monthFirst;
    m_canBeDayFirst = dayFirst;
    const int number = m_readings.size();
    m_readings.append(*reading);
    m_numbers.insert(cell, number);
    return number;
}

QDate DateColumn::date(int number) const
{
    const DateReading& reading = m_readings.at(number);
    return m_canBeMonthFirst ? reading.monthFirst : reading.dayFirst;
}
