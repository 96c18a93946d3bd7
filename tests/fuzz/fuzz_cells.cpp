#include "fuzzinput.h"

#include <chain/csvreader.h>
#include <chain/dateparser.h>
#include <chain/numberparser.h>
#include <chain/optioncode.h>
#include <replay/replaytime.h>

#include <QStringList>
#include <QTime>

namespace {

const decimal& limit()
{
    static const decimal value = decimal::fromUnits(1000000000000000, 0);
    return value;
}

/// Characters that cells are made of.
QString takeText(FuzzInput& input)
{
    static const char characters[] = "0123456789.,-+eE%:/ 'TZJanFebMarSeptDecCP#\"|;";
    QString text;
    for (int length = input.takeBelow(26); length > 0; --length)
        text += QLatin1Char(characters[input.takeBelow(int(sizeof(characters)) - 1)]);
    return text;
}

/// A number of 15 digits at the most, in a notation with groups or without.
void expectNumber(FuzzInput& input)
{
    const qint64 digits = input.take<qint64>() % 1000000000000000;
    const auto form = input.take<std::uint8_t>();
    const bool isComma = (form & 0x20U) != 0;
    const decimal value = decimal::fromUnits(digits, short(form & 15U));
    QString text = value.toString();
    if ((form & 0x40U) != 0) {
        const int point = text.indexOf(QLatin1Char('.'));
        for (int i = (point < 0 ? text.size() : point) - 3; i > (digits < 0 ? 1 : 0); i -= 3)
            text.insert(i, QLatin1Char(isComma ? '\'' : ' '));
    }
    if (isComma)
        text.replace(QLatin1Char('.'), QLatin1Char(','));
    const auto number = parseNumber(text, isComma ? DecimalMark::Comma : DecimalMark::Point);
    FUZZ_EXPECT(number && number->value == value && !number->percent && !isMissingValue(text));
    const auto mark = decimalMarkOf(text);
    FUZZ_EXPECT(!mark || *mark == (isComma ? DecimalMark::Comma : DecimalMark::Point)
        || !text.contains(QLatin1Char(isComma ? ',' : '.')));
}

void expectDate(FuzzInput& input)
{
    static const char* const forms[] = {"yyyy-MM-dd", "yyyyMMdd", "dd.MM.yyyy", "yyyy/MM/dd"};
    const QDate date = QDate(1900, 1, 1).addDays(input.take<std::uint16_t>());
    const auto reading = parseDate(date.toString(QLatin1String(input.takeOneOf(forms))));
    FUZZ_EXPECT(reading && reading->monthFirst == date && reading->dayFirst == date);

    const QTime time = QTime(0, 0).addMSecs(int(input.take<std::uint32_t>() % 86400000U));
    const auto read = parseQuoteTime(time.toString(QStringLiteral("HH:mm:ss.zzz")));
    FUZZ_EXPECT(read && read->form == TimeForm::Clock && read->milliseconds == time.msecsSinceStartOfDay());
}

void expectAny(const QString& text)
{
    for (const DecimalMark mark : {DecimalMark::Point, DecimalMark::Comma}) {
        const auto number = parseNumber(text, mark);
        if (!number)
            continue;
        FUZZ_EXPECT(-limit() < number->value && number->value < limit());
        const auto again = parseNumber(number->value.toString(), DecimalMark::Point);
        FUZZ_EXPECT(again && again->value == number->value);
    }
    if (const auto date = parseDate(text)) {
        FUZZ_EXPECT(date->monthFirst.isValid() || date->dayFirst.isValid());
        for (const QDate& reading : {date->monthFirst, date->dayFirst})
            FUZZ_EXPECT(!reading.isValid() || (reading.year() >= 1900 && reading.year() < 2200));
    }
    const auto time = parseQuoteTime(text);
    FUZZ_EXPECT(!time || time->milliseconds >= 0);
    if (const auto code = parseOptionCode(text))
        FUZZ_EXPECT(!code->root.isEmpty() && code->expiry.isValid());
}

void expectCells(FuzzInput& input)
{
    static const char delimiters[] = {',', ';', '\t', '|'};
    const QChar delimiter = QLatin1Char(input.takeOneOf(delimiters));
    QStringList cells;
    QString line;
    do {
        const QString cell = takeText(input).trimmed();
        QString quoted = cell;
        quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
        line += (cells.isEmpty() ? QString() : QString(delimiter)) + QLatin1Char('"') + quoted
            + QLatin1Char('"');
        cells.append(cell);
    } while (!input.isEmpty() && cells.size() < 20);
    QStringList read;
    FUZZ_EXPECT(splitCsv(line, delimiter, &read) && read == cells);
}

}

/// Cells of tables: what is written in any of the usual forms is read, all else is a value within its range
/// or none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    expectNumber(input);
    expectDate(input);
    expectAny(takeText(input));
    expectCells(input);
    return 0;
}
