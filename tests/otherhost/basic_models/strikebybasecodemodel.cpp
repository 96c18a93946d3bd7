#include "basic_models/strikebybasecodemodel.h"

#include "database/table.h"

#include <algorithm>
#include <optional>

namespace {

FieldConstValue fieldOf(const Table& table, const Record& record, const char* column)
{
    return table.dataPtr(record.row(), table.columnIndex(QLatin1String(column)));
}

std::optional<decimal> strikeOf(const Table& table, const Record& record)
{
    const FieldConstValue strike = fieldOf(table, record, "strike");
    if (strike.isNull() || strike.type() != FieldType::Decimal)
        return std::nullopt;
    return strike.toDecimal();
}

}

StrikeByBaseCodeModel::StrikeByBaseCodeModel(Table* table, QObject* parent)
    : QAbstractListModel(parent)
    , m_table(table)
{
    if (!table)
        return;
    connect(table, SIGNAL(changed()), this, SLOT(onTableChanged()));
    connect(table, SIGNAL(destroyed()), this, SLOT(onTableChanged()));
}

int StrikeByBaseCodeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_options.size();
}

QVariant StrikeByBaseCodeModel::data(const QModelIndex& index, int role) const
{
    return index.isValid() && role == Qt::DisplayRole ? QVariant(strike(index.row()).toText()) : QVariant();
}

void StrikeByBaseCodeModel::sort(int column, Qt::SortOrder order)
{
    if (column != 0 || order == m_order)
        return;
    Q_EMIT layoutAboutToBeChanged();
    m_order = order;
    std::reverse(m_options.begin(), m_options.end());
    Q_EMIT layoutChanged();
}

Record StrikeByBaseCodeModel::record(const QModelIndex& index) const
{
    return index.isValid() && index.row() < m_options.size() ? m_options.at(index.row()).record : Record();
}

void StrikeByBaseCodeModel::setBaseCode(const QString& baseCode)
{
    QVector<Option> options = readOptions(baseCode);
    beginResetModel();
    m_baseCode = baseCode;
    m_options.swap(options);
    endResetModel();
}

decimal StrikeByBaseCodeModel::strike(int row) const
{
    return row >= 0 && row < m_options.size() ? m_options.at(row).strike : decimal::zero;
}

double StrikeByBaseCodeModel::minStep() const
{
    if (m_options.size() < 2)
        return 0.0;
    decimal least = decimal::maximum;
    for (int i = 1; i < m_options.size(); ++i) {
        const decimal step = m_options.at(i).strike - m_options.at(i - 1).strike;
        least = std::min(least, std::max(step, -step));
    }
    return least.toDouble();
}

QVector<Record> StrikeByBaseCodeModel::chosen(const QVector<Record>& options) const
{
    return options;
}

void StrikeByBaseCodeModel::reread()
{
    setBaseCode(m_baseCode);
}

QVector<StrikeByBaseCodeModel::Option> StrikeByBaseCodeModel::readOptions(const QString& baseCode) const
{
    QVector<Option> options;
    if (!m_table || baseCode.isEmpty())
        return options;
    QVector<Record> records = m_table->masterIndex();
    const auto isOther = [this, &baseCode](const Record& record) {
        return Field(fieldOf(*m_table, record, "sectype")).toChar() != 'O'
            || Field(fieldOf(*m_table, record, "base_code")).toString() != baseCode
            || !strikeOf(*m_table, record);
    };
    records.erase(std::remove_if(records.begin(), records.end(), isOther), records.end());
    const QVector<Record> counting = chosen(records);
    for (const Record& record : counting)
        options.append({*strikeOf(*m_table, record), record});
    std::stable_sort(
        options.begin(), options.end(), [](const Option& a, const Option& b) { return a.strike < b.strike; });
    const auto same = [](const Option& a, const Option& b) { return a.strike == b.strike; };
    options.erase(std::unique(options.begin(), options.end(), same), options.end());
    if (m_order == Qt::DescendingOrder)
        std::reverse(options.begin(), options.end());
    return options;
}

void StrikeByBaseCodeModel::onTableChanged()
{
    QVector<Option> options = readOptions(m_baseCode);
    const auto same = [](const Option& a, const Option& b) { return a.strike == b.strike; };
    const auto front
        = std::mismatch(m_options.cbegin(), m_options.cend(), options.cbegin(), options.cend(), same);
    const int first = int(front.first - m_options.cbegin());
    const auto back = std::mismatch(
        m_options.crbegin(), m_options.crend() - first, options.crbegin(), options.crend() - first, same);
    replaceRun(first, first + int(back.first - m_options.crbegin()), options);
}

// The strikes in front of the first one are common to both lists, and the others of so many at their ends.
void StrikeByBaseCodeModel::replaceRun(int first, int common, const QVector<Option>& options)
{
    const int gone = m_options.size() - common;
    const int come = options.size() - common;
    if (gone == 0 && come == 0) {
        m_options = options;
    } else if (gone == 0) {
        beginInsertRows(QModelIndex(), first, first + come - 1);
        m_options = options;
        endInsertRows();
    } else if (come == 0) {
        beginRemoveRows(QModelIndex(), first, first + gone - 1);
        m_options = options;
        endRemoveRows();
    } else {
        beginResetModel();
        m_options = options;
        endResetModel();
    }
}
