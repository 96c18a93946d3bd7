#pragma once

#include <QDate>
#include <QHash>
#include <QString>
#include <QVector>

#include <optional>

/// A date as a cell states it: read with the month before the day and with the day before the month. Both
/// are the same where the text says which is which; one is invalid where it is not in the calendar.
struct DateReading {
    QDate monthFirst;
    QDate dayFirst;
};

/// Reads a date; a time behind it, a weekday before it and the ".0" of a number are passed over.
///
/// 2012-03-16 (also with '/' and '.'), 20120316, 16.03.2012, 03/16/2012, 16/03/2012 (also with '-'),
/// 16-Mar-2012, 16MAR12, Mar 16, 2012, 2012-Mar-16. A month alone is its third Friday: 201203, 2012-03,
/// 03/2012, Mar-12, March 2012. Years of two digits lie in 1980 to 2079, others must lie in 1900 to 2199.
/// No value for anything else.
std::optional<DateReading> parseDate(const QString& cell);

/// The third Friday of a month, the usual expiry of its options; invalid outside of the calendar.
QDate thirdFriday(int year, int month);

/// The dates of one column, which share one order of day and month.
class DateColumn {
public:
    /// Takes a cell and gives the number of its text, the same for the same text; empty for a text that is no
    /// date, or none in any order that the earlier ones allow.
    std::optional<int> add(const QString& cell);

    /// The date of a number that add() gave, of meaning when all cells are in. Where both orders fit all of
    /// the column the month comes first.
    QDate date(int number) const;

    /// How many different texts there are.
    int size() const { return m_readings.size(); }

private:
    QHash<QString, int> m_numbers;
    QVector<DateReading> m_readings;
    bool m_canBeMonthFirst = true;
    bool m_canBeDayFirst = true;
};
