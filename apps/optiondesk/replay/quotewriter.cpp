#include "replay/quotewriter.h"

#include "replay/replaytexts.h"

#include <chain/securityrows.h>
#include <database/exception.h>
#include <database/table.h>

namespace {

constexpr QuoteField quoteFields[] = {QuoteField::Bid, QuoteField::Ask, QuoteField::Last};

// In the order of the fields of QuoteField, the current quote behind them.
constexpr const char* columnNames[] = {"bid", "ask", "last", "cur_kotir_real"};

// A key that no short name equals: those are of one line.
QString idKey(qint64 isinId)
{
    return QLatin1Char('\n') + QString::number(isinId);
}

}

void QuoteWriter::LiveField::set(const decimal& value)
{
    live = value;
    isPending = true;
}

QuoteWriter::QuoteWriter(Table* securities, const QStringList& instruments, int futureIsinId, QObject* parent)
    : QObject(parent)
    , m_table(securities)
    , m_instruments(instruments)
    , m_futureIsinId(futureIsinId)
{
    if (!securities)
        return;
    const SecurityRows rows(*securities);
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        m_columns[i] = rows.column(columnNames[i]);
        if (securities->fieldDefs().at(m_columns[i])->type != FieldType::Decimal)
            throw Exception(ReplayTexts::tr("The column \"%1\" of the table \"%2\" holds no prices.")
                                .arg(QLatin1String(columnNames[i]), securities->name()));
    }
    connect(securities, SIGNAL(rowsInserted(QVector<Record>)), SLOT(onRowsReplaced()));
    connect(securities, SIGNAL(rowsRemoved(QVector<Record>)), SLOT(onRowsReplaced()));
    connect(securities, SIGNAL(reset()), SLOT(onRowsReplaced()));
}

QuoteWriter::~QuoteWriter()
{
    takeBack();
}

void QuoteWriter::addInstrument(const QString& name)
{
    m_instruments.append(name);
    // Otherwise all are looked up with the next quote.
    if (!m_isStale)
        m_targetOfInstrument.append(
            m_table ? targetFor(SecurityRows(*m_table), m_instruments.size() - 1) : -1);
}

bool QuoteWriter::note(const RecordedQuote& quote)
{
    if (m_isStale)
        resolve();
    const int position = m_targetOfInstrument.value(quote.instrument, -1);
    if (position < 0)
        return false;
    Target& target = m_targets[position];
    for (const QuoteField field : quoteFields) {
        if (quote.has(field))
            target.fields[std::size_t(field)].set(quote.price(field));
    }
    if (target.isFuture && quote.has(QuoteField::Last) && quote.price(QuoteField::Last) > decimal::zero)
        target.fields[futureQuote].set(quote.price(QuoteField::Last));
    if (quote.given != 0)
        queue(position);
    return true;
}

void QuoteWriter::queue(int target)
{
    if (!m_targets.at(target).isQueued)
        m_queue.append(target);
    m_targets[target].isQueued = true;
}

void QuoteWriter::flush()
{
    if (m_isStale)
        resolve();
    if (!m_table || m_queue.isEmpty())
        return;
    QVector<Record> records;
    for (const int position : qAsConst(m_queue)) {
        m_targets[position].isQueued = false;
        records.append(m_targets.at(position).record);
    }
    m_queue.clear();
    m_table->changeRows(records, [this](const Record& record, const Table::FieldAccess& access) {
        Target& target = m_targets[m_targetOfRecord.value(record)];
        for (std::size_t i = 0; i < target.fields.size(); ++i) {
            LiveField& field = target.fields[i];
            if (!field.isPending)
                continue;
            const std::optional<decimal> before = valueOf(record, i);
            if (!field.isLent || before != field.written)
                field.own = before;
            access(m_columns[i]).setDecimal(*field.live);
            field.written = *field.live;
            field.isLent = true;
            field.isPending = false;
        }
    });
}

void QuoteWriter::takeBack()
{
    if (!m_table)
        return;
    QVector<Record> records;
    QHash<Record, Target> lent;
    for (Target& target : m_targets) {
        const auto isLent = [](const LiveField& field) { return field.isLent; };
        if (std::none_of(target.fields.begin(), target.fields.end(), isLent))
            continue;
        records.append(target.record);
        lent.insert(target.record, target);
        for (LiveField& field : target.fields)
            field.isLent = false;
    }
    // A listener may end this object, so nothing of it is needed behind this.
    const std::array<int, liveFieldCount> columns = m_columns;
    m_table->changeRows(records, [&](const Record& record, const Table::FieldAccess& access) {
        const Target target = lent.value(record);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const LiveField& field = target.fields[i];
            const FieldConstValue current = record.value(columns[i]);
            if (!field.isLent || current.isNull() || current.toDecimal() != field.written)
                continue;
            FieldValue value = access(columns[i]);
            if (field.own)
                value.setDecimal(*field.own);
            else
                value.setNull();
        }
    });
}

void QuoteWriter::onRowsReplaced()
{
    m_isStale = true;
    QMetaObject::invokeMethod(this, "writeAgain", Qt::QueuedConnection);
    takeBack();
}

void QuoteWriter::writeAgain()
{
    if (m_isStale)
        flush();
}

std::optional<decimal> QuoteWriter::valueOf(const Record& record, std::size_t field) const
{
    const FieldConstValue value = record.value(m_columns[field]);
    return value.isNull() ? std::nullopt : std::optional<decimal>(value.toDecimal());
}

void QuoteWriter::resolve()
{
    m_isStale = false;
    const QVector<Target> before = m_targets;
    m_targets.clear();
    m_targetOfRecord.clear();
    m_queue.clear();
    m_targetOfInstrument.fill(-1, m_instruments.size());
    m_records.clear();
    if (!m_table)
        return;
    const SecurityRows rows(*m_table);
    m_records = recordsByName(rows);
    for (int i = 0; i < m_instruments.size(); ++i)
        m_targetOfInstrument[i] = targetFor(rows, i);
    carryOver(before);
}

// By short name, and by idKey(); of several rows the first.
QHash<QString, Record> QuoteWriter::recordsByName(const SecurityRows& rows) const
{
    QHash<QString, Record> records;
    const auto insert = [&records](const QString& name, const Record& record) {
        if (!name.isEmpty() && !records.contains(name))
            records.insert(name, record);
    };
    for (const Record& record : m_table->masterIndex()) {
        if (!rows.isOnChainBoard(record))
            continue;
        insert(rows.text(record, "short_name"), record);
        if (const std::optional<qint64> isinId = rows.integer(record, "isin_id"))
            insert(idKey(*isinId), record);
    }
    return records;
}

// Null for an unknown instrument.
Record QuoteWriter::recordOf(const QString& instrument) const
{
    if (instrument.compare(QLatin1String("FUT"), Qt::CaseInsensitive) == 0)
        return m_records.value(idKey(m_futureIsinId));
    const auto named = m_records.constFind(instrument);
    if (named != m_records.constEnd())
        return *named;
    bool isNumber = false;
    const qint64 isinId = instrument.toLongLong(&isNumber);
    return isNumber ? m_records.value(idKey(isinId)) : Record();
}

// The position of a new or a known target, -1 for an unknown instrument.
int QuoteWriter::targetFor(const SecurityRows& rows, int instrument)
{
    const Record record = recordOf(m_instruments.at(instrument));
    if (record.isNull())
        return -1;
    const auto known = m_targetOfRecord.constFind(record);
    if (known != m_targetOfRecord.constEnd())
        return *known;
    Target target;
    target.record = record;
    target.instrument = instrument;
    target.isFuture = rows.text(record, "sectype") == QLatin1String("F");
    m_targetOfRecord.insert(record, m_targets.size());
    m_targets.append(target);
    return m_targets.size() - 1;
}

// The rows of the instruments may be other ones now; their prices are the same.
void QuoteWriter::carryOver(const QVector<Target>& before)
{
    for (const Target& old : before) {
        const int position = m_targetOfInstrument.value(old.instrument, -1);
        if (position < 0)
            continue;
        for (std::size_t i = 0; i < old.fields.size(); ++i) {
            if (!old.fields[i].live)
                continue;
            m_targets[position].fields[i].set(*old.fields[i].live);
            queue(position);
        }
    }
}
