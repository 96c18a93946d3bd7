#pragma once

#include <QString>

#include <optional>

/// How a file states the time of its quotes.
enum class TimeForm {
    /// Milliseconds since the start of the recording.
    Elapsed,
    /// Milliseconds since 1970-01-01 00:00:00 UTC: numbers of 1e11 (March 1973) and more.
    Epoch,
    /// The time of one day.
    Clock,
    /// Date and time, in UTC where no offset is stated.
    DateTime
};

struct QuoteTime {
    TimeForm form = TimeForm::Elapsed;
    /// Since the zero of the form, never negative; that of DateTime is the one of Epoch.
    qint64 milliseconds = 0;
};

/// Reads a time: a number of milliseconds (of 0 to 1e15, fractions are cut off), HH:MM:SS[.zzz], or an ISO
/// date, 'T' or a blank, and such a time, with "Z" or an offset as "+02:00" behind it or without. No value
/// for anything else and for dates before 1970.
std::optional<QuoteTime> parseQuoteTime(const QString& cell);
