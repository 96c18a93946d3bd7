#include "tableinput.h"

TableInput::TableInput(FuzzInput& input, const NamedColumn* columns, int columnCount)
    : m_input(input)
    , m_columns(columns)
    , m_columnCount(columnCount)
{
}

QByteArray TableInput::take()
{
    static const char delimiters[] = {',', ';', '\t', '|'};
    static const char* const lineEnds[] = {"\n", "\r\n", "\r"};
    if (!m_input.takeFlag())
        return QByteArray(reinterpret_cast<const char*>(m_input.data()), int(m_input.size()));
    m_delimiter = m_input.takeOneOf(delimiters);
    m_lineEnd = m_input.takeOneOf(lineEnds);
    takeHeader();
    while (!m_input.isEmpty())
        takeRow();
    return m_text;
}

void TableInput::takeHeader()
{
    m_width = 1 + m_input.takeBelow(int(std::size(m_kinds)));
    for (int i = 0; i < m_width; ++i) {
        const NamedColumn& column = m_columns[m_input.takeBelow(m_columnCount)];
        m_kinds[i] = column.kind;
        if (i > 0)
            m_text += m_delimiter;
        m_text += column.name;
    }
    m_text += m_lineEnd;
}

void TableInput::takeRow()
{
    for (int i = 0; i < m_width; ++i) {
        if (i > 0)
            m_text += m_delimiter;
        m_text += takeCell(m_kinds[i]);
    }
    m_text += m_lineEnd;
}

QByteArray TableInput::takeCell(CellKind kind)
{
    static const char* const types[] = {"C", "P", "call", "Put", "CE", "PE"};
    static const char* const missing[] = {"", "-", "NA", "n/a", "null"};
    static const char* const codes[]
        = {"AMB", "AMBER", "AMB231215C00150000", "AMB   231215P00150000", "FUT", "AMBER 2024-04-19 C 81"};
    const auto chance = m_input.take<std::uint8_t>();
    if (chance >= 0xf8)
        return takeBytes();
    if (chance >= 0xe8)
        return m_input.takeOneOf(missing);
    switch (kind) {
    case CellKind::Number:
        return takeNumber(false);
    case CellKind::Count:
        return takeNumber(true);
    case CellKind::Date:
        return takeDate();
    case CellKind::Time:
        return takeTime();
    case CellKind::Type:
        return m_input.takeOneOf(types);
    case CellKind::Code:
        return m_input.takeOneOf(codes);
    case CellKind::Any:
        break;
    }
    return takeBytes();
}

QByteArray TableInput::takeNumber(bool whole)
{
    static const char* const ends[] = {"", "", "", "%", "e2", "E-3"};
    const auto form = m_input.take<std::uint8_t>();
    QByteArray digits = QByteArray::number((form & 1U) != 0 ? qulonglong(m_input.take<std::uint64_t>())
                                                            : qulonglong(m_input.take<std::uint16_t>()));
    const char mark = (form & 0x10U) != 0 ? ',' : '.';
    const int decimals = whole ? 0 : int(form >> 1U & 7U);
    if (decimals > 0) {
        digits = digits.rightJustified(decimals + 1, '0');
        digits.insert(digits.size() - decimals, mark);
    }
    if ((form & 0xe0U) == 0xe0U)
        digits += m_input.takeOneOf(ends);
    if ((form & 0xe0U) == 0xc0U)
        digits.prepend('-');
    return m_delimiter == mark ? quoted(digits) : digits;
}

QByteArray TableInput::takeDate()
{
    static const char* const months[] = {"Jan", "FEB", "march", "Sept", "Dec"};
    const int year = 2010 + m_input.takeBelow(20);
    const int month = 1 + m_input.takeBelow(13);
    const int day = 1 + m_input.takeBelow(32);
    const auto number
        = [](int value, int width) { return QByteArray::number(value).rightJustified(width, '0'); };
    switch (m_input.takeBelow(6)) {
    case 0:
        return number(day, 2) + '.' + number(month, 2) + '.' + number(year, 4);
    case 1:
        return number(month, 1) + '/' + number(day, 1) + '/' + number(year % 100, 2);
    case 2:
        return number(day, 2) + m_input.takeOneOf(months) + number(year % 100, 2);
    case 3:
        return number(year, 4) + number(month, 2) + number(day, 2);
    default:
        return number(year, 4) + '-' + number(month, 2) + '-' + number(day, 2);
    }
}

QByteArray TableInput::takeTime()
{
    const auto form = m_input.take<std::uint8_t>();
    if (form < 0x60)
        return QByteArray::number(m_input.take<std::uint32_t>());
    if (form < 0x80)
        return QByteArray::number(qulonglong(m_input.take<std::uint64_t>() >> 20U));
    static const char* const ends[] = {"", ".5", ".123456", "Z", "+02:00", ",250-0330"};
    const auto two
        = [this](int limit) { return QByteArray::number(m_input.takeBelow(limit)).rightJustified(2, '0'); };
    QByteArray time = two(25);
    time += ':' + two(61);
    time += ':' + two(61);
    time += m_input.takeOneOf(ends);
    if (form >= 0xc0)
        time.prepend("2024-02-" + two(30) + ((form & 1U) != 0 ? 'T' : ' '));
    return time;
}

QByteArray TableInput::takeBytes()
{
    QByteArray bytes;
    for (int length = m_input.takeBelow(12); length > 0 && !m_input.isEmpty(); --length)
        bytes += char(m_input.take<std::uint8_t>());
    return m_input.takeFlag() ? quoted(bytes) : bytes;
}

QByteArray TableInput::quoted(const QByteArray& cell)
{
    QByteArray text = cell;
    text.replace('"', "\"\"");
    return '"' + text + '"';
}
