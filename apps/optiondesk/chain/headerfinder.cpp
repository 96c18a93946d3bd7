#include "chain/headerfinder.h"

#include "chain/chainerror.h"
#include "chain/chaintexts.h"
#include "chain/csvreader.h"
#include "chain/textdecoder.h"

namespace {

constexpr int maxPreambleLines = 50;
constexpr int maxNamesInMessage = 20;
constexpr int maxNameLength = 40;
// A header of a few hundred cells at most; a line of delimiters only is none.
constexpr int maxHeaderCells = 1000;

ChainHeader headerOf(const QString& text, QChar delimiter)
{
    ChainHeader header;
    header.delimiter = delimiter;
    splitCsv(text, delimiter, &header.names);
    if (header.names.size() <= maxHeaderCells)
        header.columns = ColumnMap(header.names);
    return header;
}

// The reading of a line under the delimiter that finds the most columns.
ChainHeader bestReading(QString text)
{
    while (text.startsWith(QLatin1Char('#')))
        text = text.mid(1).trimmed();
    ChainHeader best;
    for (const char delimiter : {',', ';', '\t', '|'}) {
        const ChainHeader header = headerOf(text, QLatin1Char(delimiter));
        const auto worth = [](const ChainHeader& candidate) {
            return candidate.columns.knownCount() + (candidate.columns.isComplete() ? maxHeaderCells : 0);
        };
        if (best.names.isEmpty() || worth(header) > worth(best)
            || (worth(header) == worth(best) && header.names.size() > best.names.size()))
            best = header;
    }
    return best;
}

QString lookedFor()
{
    return ChainTexts::tr("a strike (%1), the option's type (%2) or columns of calls and puts (call_..., "
                          "put_...), and a price (%3; %4; %5) or an implied volatility (%6)")
        .arg(columnExamples(Column::Strike), columnExamples(Column::Type), columnExamples(Column::Settlement),
            columnExamples(Column::Bid), columnExamples(Column::Last), columnExamples(Column::Volatility));
}

QString found(const QStringList& names)
{
    QStringList shown;
    for (const QString& name : names.mid(0, maxNamesInMessage))
        shown.append(QLatin1Char('"') + name.left(maxNameLength) + QLatin1Char('"'));
    if (names.size() > maxNamesInMessage)
        shown.append(ChainTexts::tr("and %1 more").arg(names.size() - maxNamesInMessage));
    return shown.join(QStringLiteral(", "));
}

}

ChainHeader findHeader(TextDecoder& text)
{
    ChainHeader best;
    QString line;
    for (int others = 0; others < maxPreambleLines && text.readLine(&line);) {
        if (line.trimmed().isEmpty())
            continue;
        ChainHeader header = bestReading(line);
        header.line = text.lineNumber();
        if (header.columns.isComplete()) {
            if (!header.columns.ambiguity().isEmpty())
                throw ChainError(text.name(), header.line, header.columns.ambiguity());
            return header;
        }
        if (best.line == 0 || header.columns.knownCount() > best.columns.knownCount())
            best = header;
        ++others;
    }
    if (best.line == 0)
        throw ChainError(text.name(), 0, ChainTexts::tr("the file is empty"));
    throw ChainError(text.name(), best.line,
        ChainTexts::tr("no header of an option chain: looked for %1; found %2")
            .arg(lookedFor(), found(best.names)));
}
