#include "chain/columnnames.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace {

// Names that pandas and R give to a second column of the same name rank behind the proper ones.
constexpr int repeatedRank = 1000;

struct Aliases {
    Column column;
    // In the order of their rank; blanks stand where words part, for messages.
    const char* names;
};

const Aliases aliasTable[] = {
    {Column::Strike,
        "strike|strike price|strike px|exercise price|strikes|striking price|strk|strk prc|exercise|k|x"},
    {Column::Type,
        "option type|put call|call put|put or call|call or put|cp flag|put call flag|call put flag|"
        "put call indicator|put call code|opt type|option right|option "
        "kind|cp|pc|right|type|kind|otype|flag"},
    {Column::Expiry,
        "expiry|expiration|expiration date|expiry date|exp date|exdate|expire date|expires|expir date|"
        "option expiry|option expiration|maturity date|maturity|last trading day|contract month|expiry month|"
        "expiration month|delivery month|maturity month|contract date|month|exp"},
    {Column::QuoteDate,
        "quote date|as of|as of date|asof|trade date|trading date|trading day|data date|business date|"
        "valuation date|price date|pricing date|date|quote datetime|datetime|timestamp|quote read time"},
    {Column::Settlement,
        "settle|settlement|settle price|settlement price|settl price|settl|sett|sett price|px settle|close|"
        "close price|closing price|price|option price|premium|option premium|market price|px|option value|"
        "value|mark|mark price|mid|mid price|midpoint|theoretical price"},
    {Column::Bid, "bid|bid price|best bid|bid px|px bid|bid eod|close bid|bid 1545"},
    {Column::Ask,
        "ask|offer|ask price|offer price|best ask|best offer|ask px|px ask|asked|ask eod|close ask|ask 1545"},
    {Column::Last,
        "last|last price|last trade|last traded price|last trade price|trade|trade price|ltp|last px|px last|"
        "last sale"},
    {Column::Volume,
        "volume|traded volume|total volume|trade volume|volume traded|daily volume|px volume|contracts "
        "traded|"
        "contracts"},
    {Column::VolumeOrVolatility, "vol|vols"},
    {Column::OpenInterest, "open interest|open int|oi|op int|opn int|open interest contracts"},
    {Column::Volatility,
        "implied volatility|implied vol|impl volatility|impl vol|imp volatility|imp vol|implied vola|ivol|iv|"
        "mid iv|iv mid|mark iv|settle iv|settlement vol|settle vol|sigma|volatility|vola|"
        "implied volatility 1545"},
    {Column::Forward,
        "forward|forward price|fwd|fwd price|future price|futures price|fut price|future settle|"
        "futures settle|fut settle|future settlement|futures settlement|future settlement price|"
        "futures settlement price|future last|futures last|f"},
    {Column::UnderlyingPrice,
        "underlying price|underlying settle|underlying settlement|underlying close|underlying last|"
        "underlying last price|underlying value|underlying px|und price|undl price|ul price|"
        "active underlying price|active underlying price 1545"},
    {Column::UnderlyingOrCode, "underlying|future|futures|fut"},
    {Column::Code,
        "base code|underlying symbol|underlying code|underlying ticker|und symbol|und sym|act symbol|root|"
        "root symbol|option root|product|product code|product symbol|commodity|commodity code|asset|ticker|"
        "symbol|instrument|contract|contract symbol|option symbol|option code|option ticker|osi symbol"},
};

QHash<QString, ColumnName> makeDictionary()
{
    QHash<QString, ColumnName> dictionary;
    for (const Aliases& aliases : aliasTable) {
        int rank = 0;
        const QStringList names = QString::fromLatin1(aliases.names).split(QLatin1Char('|'));
        for (QString name : names)
            dictionary.insert(name.remove(QLatin1Char(' ')), {aliases.column, Side::Row, rank++, false});
    }
    return dictionary;
}

std::optional<ColumnName> lookUp(const QStringList& words)
{
    static const QHash<QString, ColumnName> dictionary = makeDictionary();
    const auto found = dictionary.constFind(words.join(QString()));
    if (found == dictionary.constEnd())
        return std::nullopt;
    return found.value();
}

std::optional<Side> sideOf(const QString& word)
{
    static const QHash<QString, Side> sides
        = {{QStringLiteral("c"), Side::Call}, {QStringLiteral("call"), Side::Call},
            {QStringLiteral("calls"), Side::Call}, {QStringLiteral("p"), Side::Put},
            {QStringLiteral("put"), Side::Put}, {QStringLiteral("puts"), Side::Put}};
    const auto found = sides.constFind(word);
    if (found == sides.constEnd())
        return std::nullopt;
    return found.value();
}

bool isPercent(const QString& text)
{
    return text.contains(QLatin1Char('%')) || text == QLatin1String("pct")
        || text == QLatin1String("percent");
}

// A name's words in lower case, parted at blanks, punctuation and a capital after a small letter.
QStringList wordsOf(QString name)
{
    static const QRegularExpression hump(QStringLiteral("(?<=[a-z])(?=[A-Z])"));
    static const QRegularExpression punctuation(QStringLiteral("[^a-z0-9%]+"));
    name.replace(hump, QStringLiteral(" "));
    return name.toLower().split(punctuation, Qt::SkipEmptyParts);
}

// A name's words, with the words in brackets told apart from the others.
struct NameParts {
    QStringList words;
    bool percent = false;
};

NameParts dissect(const QString& header)
{
    static const QRegularExpression brackets(QStringLiteral("[(\\[{]([^)\\]}]*)[)\\]}]"));
    NameParts parts;
    QString outside = header;
    outside.remove(brackets);
    if (wordsOf(outside).isEmpty())
        outside = header;
    parts.words = wordsOf(outside);
    QRegularExpressionMatchIterator matches = brackets.globalMatch(header);
    while (outside != header && matches.hasNext()) {
        const QStringList inside = wordsOf(matches.next().captured(1));
        if (inside.size() == 1 && sideOf(inside.first()))
            parts.words.append(inside);
        parts.percent = parts.percent || std::any_of(inside.begin(), inside.end(), isPercent);
    }
    for (int index = parts.words.size() - 1; index >= 0; --index) {
        if (!isPercent(parts.words.at(index)))
            continue;
        parts.percent = true;
        parts.words.removeAt(index);
    }
    return parts;
}

std::optional<ColumnName> withoutPrefix(QStringList words)
{
    std::optional<ColumnName> name = lookUp(words);
    if (name || words.size() < 2)
        return name;
    if (words.first() == QLatin1String("option") || words.first() == QLatin1String("opt"))
        return lookUp(words.mid(1));
    if (words.last() != QLatin1String("1"))
        return std::nullopt;
    words.removeLast();
    name = lookUp(words);
    if (name)
        name->rank += repeatedRank;
    return name;
}

std::optional<ColumnName> withSide(const QStringList& words, Side side)
{
    if (words.isEmpty())
        return ColumnName{Column::SidePrice, side, 0, false};
    std::optional<ColumnName> name = withoutPrefix(words);
    if (name)
        name->side = side;
    return name;
}

// "callbid", as it comes from a header in capitals or small letters only.
std::optional<ColumnName> fromOneWord(const QString& word)
{
    for (const char* sideWord : {"calls", "call", "puts", "put"}) {
        const QString text = QString::fromLatin1(sideWord);
        const Side side = *sideOf(text);
        if (word.size() > text.size() && word.startsWith(text)) {
            if (const auto name = withSide({word.mid(text.size())}, side))
                return name;
        }
        if (word.size() > text.size() && word.endsWith(text)) {
            if (const auto name = withSide({word.left(word.size() - text.size())}, side))
                return name;
        }
    }
    return std::nullopt;
}

std::optional<ColumnName> fromWords(const QStringList& words)
{
    if (words.isEmpty())
        return std::nullopt;
    if (const auto name = withoutPrefix(words))
        return name;
    if (const auto side = sideOf(words.first())) {
        if (const auto name = withSide(words.mid(1), *side))
            return name;
    }
    if (const auto side = sideOf(words.last())) {
        if (const auto name = withSide(words.mid(0, words.size() - 1), *side))
            return name;
    }
    return words.size() == 1 ? fromOneWord(words.first()) : std::nullopt;
}

}

std::optional<ColumnName> recogniseColumn(const QString& header)
{
    const NameParts parts = dissect(header);
    std::optional<ColumnName> name = fromWords(parts.words);
    if (name)
        name->percent = parts.percent;
    return name;
}

QString columnExamples(Column column)
{
    QStringList names;
    for (const Aliases& aliases : aliasTable) {
        if (aliases.column == column)
            names = QString::fromLatin1(aliases.names)
                        .replace(QLatin1Char(' '), QLatin1Char('_'))
                        .split(QLatin1Char('|'));
    }
    return names.mid(0, 4).join(QStringLiteral(", "));
}
