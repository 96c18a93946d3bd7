#include "chain/numberparser.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace {

constexpr int significantDigits = 15;
constexpr int maxIntegerDigits = 15;
// Longer cells are no numbers; the pattern need not try them.
constexpr int maxCellLength = 64;

// The parts of a number's text; the body holds digits, marks and group characters.
struct Anatomy {
    bool negative = false;
    bool percent = false;
    QString body;
    int exponent = 0;
};

std::optional<Anatomy> dissect(const QString& cell)
{
    // Blanks here are the ordinary, the no-break, the thin and the narrow no-break one.
    static const QRegularExpression pattern(QStringLiteral(
        "^([-+\\x{2212}]?)\\s*([0-9.,' \\x{2019}\\x{A0}\\x{2009}\\x{202F}]*[0-9][0-9.,]*|[0-9]+[.,]?)"
        "(?:[eE]([-+]?[0-9]{1,3}))?\\s*(%?)$"));
    if (cell.size() > maxCellLength)
        return std::nullopt;
    const QRegularExpressionMatch match = pattern.match(cell.trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    Anatomy parts;
    parts.negative = !match.captured(1).isEmpty() && match.captured(1) != QLatin1String("+");
    parts.body = match.captured(2);
    parts.exponent = match.captured(3).toInt();
    parts.percent = !match.captured(4).isEmpty();
    return parts;
}

bool isGrouped(const QString& text, QChar group)
{
    // Groups of two digits before the last one are India's lakh and crore.
    const QStringList groups = text.split(group);
    for (int index = 1; index < groups.size(); ++index) {
        const int size = groups.at(index).size();
        if (size != 3 && (size != 2 || index + 1 == groups.size()))
            return false;
    }
    return !groups.first().isEmpty() && groups.first().size() <= 3;
}

// The digits of an integer part with its groups joined; empty optional if it is not well grouped.
std::optional<QString> joinGroups(const QString& text, QChar foreignMark)
{
    QChar group;
    QString digits;
    for (const QChar character : text) {
        if (character.isDigit()) {
            digits += character;
            continue;
        }
        const bool isMark = character == QLatin1Char('.') || character == QLatin1Char(',');
        if ((isMark && character != foreignMark) || (!group.isNull() && character != group))
            return std::nullopt;
        group = character;
    }
    if (!group.isNull() && !isGrouped(text, group))
        return std::nullopt;
    return digits;
}

void dropLeadingZeros(QString* digits)
{
    int count = 0;
    while (count < digits->size() && digits->at(count) == QLatin1Char('0'))
        ++count;
    digits->remove(0, count);
}

// digits * 10^shift, rounded to the significant digits.
std::optional<decimal> toDecimal(QString digits, int shift)
{
    dropLeadingZeros(&digits);
    if (digits.isEmpty())
        return decimal::zero;
    if (digits.size() > significantDigits) {
        const bool up = digits.at(significantDigits) >= QLatin1Char('5');
        shift += digits.size() - significantDigits;
        digits = QString::number(digits.left(significantDigits).toLongLong() + (up ? 1 : 0));
    }
    if (digits.size() + shift > maxIntegerDigits)
        return std::nullopt;
    if (shift >= 0)
        return decimal::fromString(digits + QString(shift, QLatin1Char('0')));
    const QString padded = digits.rightJustified(1 - shift, QLatin1Char('0'));
    return decimal::fromString(padded.left(padded.size() + shift) + QLatin1Char('.') + padded.right(-shift));
}

std::optional<DecimalMark> markOfSingle(const QString& body, QChar mark, DecimalMark asDecimal)
{
    const int position = body.indexOf(mark);
    const QString before = body.left(position);
    const bool canBeGrouped = body.size() - position - 1 == 3 && !before.isEmpty() && before.size() <= 3
        && before != QLatin1String("0");
    if (canBeGrouped)
        return std::nullopt;
    return asDecimal;
}

}

bool isMissingValue(const QString& cell)
{
    static const QStringList words
        = QStringLiteral("|-|--|---|.|\u2013|\u2014|na|n/a|n.a.|#n/a|#na|<na>|nan|null|none|nil|missing")
              .split(QLatin1Char('|'));
    return words.contains(cell.trimmed().toLower());
}

std::optional<ParsedNumber> parseNumber(const QString& cell, DecimalMark mark)
{
    const std::optional<Anatomy> parts = dissect(cell);
    if (!parts)
        return std::nullopt;
    const QChar decimalMark = QLatin1Char(mark == DecimalMark::Point ? '.' : ',');
    const QChar groupMark = QLatin1Char(mark == DecimalMark::Point ? ',' : '.');
    const int position = parts->body.lastIndexOf(decimalMark);
    const QString decimals = position < 0 ? QString() : parts->body.mid(position + 1);
    const std::optional<QString> integer = joinGroups(parts->body.left(position), groupMark);
    const auto isDigit = [](QChar character) { return character.isDigit(); };
    if (!integer || !std::all_of(decimals.begin(), decimals.end(), isDigit))
        return std::nullopt;
    if (integer->isEmpty() && decimals.isEmpty())
        return std::nullopt;
    const std::optional<decimal> magnitude
        = toDecimal(*integer + decimals, parts->exponent - decimals.size());
    if (!magnitude)
        return std::nullopt;
    return ParsedNumber{parts->negative ? -*magnitude : *magnitude, parts->percent};
}

std::optional<DecimalMark> decimalMarkOf(const QString& cell)
{
    const std::optional<Anatomy> parts = dissect(cell);
    if (!parts)
        return std::nullopt;
    const QChar point = QLatin1Char('.');
    const QChar comma = QLatin1Char(',');
    const int points = parts->body.count(point);
    const int commas = parts->body.count(comma);
    if (points > 0 && commas > 0)
        return parts->body.lastIndexOf(point) > parts->body.lastIndexOf(comma) ? DecimalMark::Point
                                                                               : DecimalMark::Comma;
    if (points == 1)
        return markOfSingle(parts->body, point, DecimalMark::Point);
    if (commas == 1)
        return markOfSingle(parts->body, comma, DecimalMark::Comma);
    if (points > 1)
        return DecimalMark::Comma;
    if (commas > 1)
        return DecimalMark::Point;
    return std::nullopt;
}
