#include "basic_models/strikebybasecodemodel.h"

#include "database/table.h"
#include "directory/optionalfield.h"
#include "directory/securitydirectory.h"
#include "optionstrikes_p.h"

#include <QPointer>

#include <algorithm>
#include <optional>

namespace {

// Each announcement moves the rows behind it and has every listener look at the model.
constexpr int maxAnnouncements = 32;

}

struct StrikeByBaseCodeModel::Private {
    QPointer<Table> table;
    int sectypeColumn = -1;
    int baseCodeColumn = -1;
    int strikeColumn = -1;

    QString baseCode;
    Qt::SortOrder order = Qt::AscendingOrder;
    // What is known of the table; the rows follow it, always between a begin...() and its end...().
    OptionStrikes options;
    int shownRank = 0;
    std::vector<decimal> rows;

    bool isBefore(const decimal& a, const decimal& b) const
    {
        return order == Qt::AscendingOrder ? a < b : b < a;
    }

    /// The row of a strike, or the one before which it would come.
    std::ptrdiff_t position(const decimal& strike) const
    {
        const auto before = [this](const decimal& a, const decimal& b) { return isBefore(a, b); };
        return std::lower_bound(rows.begin(), rows.end(), strike, before) - rows.begin();
    }

    bool isRow(const decimal& strike) const
    {
        const auto row = static_cast<std::size_t>(position(strike));
        return row < rows.size() && rows[row] == strike;
    }

    bool hasOptions(const decimal& strike) const { return options.strikes(shownRank).count(strike) != 0; }

    /// Whether the strike has options and no row yet.
    bool isNew(const decimal& strike) const { return hasOptions(strike) && !isRow(strike); }
    /// Whether the strike has a row and no options any more.
    bool isGone(const decimal& strike) const { return isRow(strike) && !hasOptions(strike); }

    /// Puts strikes into the rows' order, each once and only those that a test holds for.
    void sortUnique(std::vector<decimal>& strikes, bool (Private::*test)(const decimal&) const) const
    {
        strikes.erase(std::remove_if(strikes.begin(), strikes.end(),
                          [&](const decimal& strike) { return !(this->*test)(strike); }),
            strikes.end());
        std::sort(strikes.begin(), strikes.end(),
            [this](const decimal& a, const decimal& b) { return isBefore(a, b); });
        strikes.erase(std::unique(strikes.begin(), strikes.end()), strikes.end());
    }

    /// The number of runs of sorted strikes whose positions follow each other at a distance: 0 for strikes
    /// to insert, 1 for rows to remove.
    int runCount(const std::vector<decimal>& strikes, std::ptrdiff_t distance) const
    {
        int runs = 0;
        std::ptrdiff_t last = 0;
        for (const decimal& strike : strikes) {
            const std::ptrdiff_t now = position(strike);
            if (runs == 0 || now != last + distance)
                ++runs;
            last = now;
        }
        return runs;
    }

    std::optional<OptionStrikes::Option> optionOf(
        const StrikeByBaseCodeModel& model, const Record& record) const
    {
        if (OptionalField::text(record.value(baseCodeColumn)) != baseCode
            || record.field(sectypeColumn).toChar() != 'O')
            return std::nullopt;
        const std::optional<decimal> strike = OptionalField::fixedPoint(record.value(strikeColumn));
        if (!strike || !model.accepts(record))
            return std::nullopt;
        return OptionStrikes::Option{*strike, model.rank(record)};
    }

    /// Takes all options of the table.
    void gather(const StrikeByBaseCodeModel& model)
    {
        options.clear();
        if (!table || baseCode.isEmpty())
            return;
        QVector<Record> all;
        all.reserve(table->rowCount());
        for (const Record& record : table->masterIndex())
            all.append(record);
        qint64 number = options.order().place(*table, all);
        for (const Record& record : all) {
            if (const auto option = optionOf(model, record))
                options.insert(record, *option, number);
            ++number;
        }
    }

    void takeTopRank()
    {
        shownRank = options.topRank();
        rows.clear();
        for (const auto& [strike, records] : options.strikes(shownRank))
            rows.push_back(strike);
        if (order == Qt::DescendingOrder)
            std::reverse(rows.begin(), rows.end());
    }
};

StrikeByBaseCodeModel::StrikeByBaseCodeModel(Table* table, QObject* parent)
    : QAbstractTableModel(parent)
    , d(std::make_unique<Private>())
{
    d->table = table;
    if (!table)
        return;
    d->sectypeColumn = table->columnIndex(QStringLiteral("sectype"));
    d->baseCodeColumn = table->columnIndex(QStringLiteral("base_code"));
    d->strikeColumn = table->columnIndex(QStringLiteral("strike"));

    // The directory must hear of the table's changes before this model: listeners of the model look there.
    SecurityDirectory::i();
    connect(table, SIGNAL(rowsInserted(QVector<Record>)), SLOT(onRowsInserted(QVector<Record>)));
    connect(table, SIGNAL(rowsRemoved(QVector<Record>)), SLOT(onRowsRemoved(QVector<Record>)));
    connect(table, SIGNAL(rowsChanged(QVector<Record>)), SLOT(onRowsChanged(QVector<Record>)));
    connect(table, SIGNAL(reset()), SLOT(onTableReset()));
    connect(table, SIGNAL(destroyed()), SLOT(onTableReset()));
}

StrikeByBaseCodeModel::~StrikeByBaseCodeModel() = default;

int StrikeByBaseCodeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(d->rows.size());
}

int StrikeByBaseCodeModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant StrikeByBaseCodeModel::data(const QModelIndex& index, int role) const
{
    if (!isOwn(index))
        return QVariant();
    if (role == Qt::DisplayRole)
        return strike(index.row()).toString();
    if (role == Qt::EditRole)
        return QVariant::fromValue(strike(index.row()));
    return QVariant();
}

void StrikeByBaseCodeModel::sort(int column, Qt::SortOrder order)
{
    if (column != 0)
        return;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    if (order != d->order) {
        d->order = order;
        std::reverse(d->rows.begin(), d->rows.end());
        const QModelIndexList before = persistentIndexList();
        QModelIndexList after;
        after.reserve(before.size());
        for (const QModelIndex& persistent : before)
            after.append(index(rowCount() - 1 - persistent.row(), persistent.column()));
        changePersistentIndexList(before, after);
    }
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

Record StrikeByBaseCodeModel::record(const QModelIndex& index) const
{
    if (!d->table || !isOwn(index))
        return Record();
    return d->options.first(d->shownRank, strike(index.row()), *d->table);
}

QString StrikeByBaseCodeModel::baseCode() const
{
    return d->baseCode;
}

void StrikeByBaseCodeModel::setBaseCode(const QString& baseCode)
{
    d->baseCode = baseCode;
    rebuild();
}

decimal StrikeByBaseCodeModel::strike(int row) const
{
    return row >= 0 && row < rowCount() ? d->rows[static_cast<std::size_t>(row)] : decimal::zero;
}

double StrikeByBaseCodeModel::minStep() const
{
    if (d->rows.size() < 2)
        return 0.0;
    decimal least = decimal::maximum;
    for (std::size_t i = 1; i < d->rows.size(); ++i) {
        const auto [low, high] = std::minmax(d->rows[i - 1], d->rows[i]);
        least = std::min(least, high - low);
    }
    return least.toDouble();
}

bool StrikeByBaseCodeModel::accepts(const Record& option) const
{
    Q_UNUSED(option)
    return true;
}

int StrikeByBaseCodeModel::rank(const Record& option) const
{
    Q_UNUSED(option)
    return 0;
}

int StrikeByBaseCodeModel::shownRank() const
{
    return d->shownRank;
}

void StrikeByBaseCodeModel::rebuild()
{
    beginResetModel();
    d->gather(*this);
    d->takeTopRank();
    endResetModel();
}

bool StrikeByBaseCodeModel::isOwn(const QModelIndex& index) const
{
    return index.model() == this && hasIndex(index.row(), index.column(), index.parent());
}

void StrikeByBaseCodeModel::onRowsInserted(const QVector<Record>& records)
{
    if (!d->table || d->baseCode.isEmpty())
        return;
    // Other listeners, called earlier, may have taken rows out again or may have written them.
    QVector<Record> run;
    run.reserve(records.size());
    for (const Record& record : records) {
        if (record.isInTable() && !d->options.contains(record))
            run.append(record);
    }
    std::vector<decimal> strikes;
    qint64 number = d->options.order().place(*d->table, run);
    for (const Record& record : run) {
        if (const auto option = d->optionOf(*this, record)) {
            d->options.insert(record, *option, number);
            strikes.push_back(option->strike);
        }
        ++number;
    }
    if (d->options.topRank() != d->shownRank)
        showTopRank();
    else
        announceInserted(std::move(strikes));
}

void StrikeByBaseCodeModel::onRowsRemoved(const QVector<Record>& records)
{
    std::vector<decimal> strikes;
    for (const Record& record : records) {
        const OptionStrikes::Option* option = d->options.find(record);
        if (!option)
            continue;
        if (record.isInTable()) {
            // Another listener put the row back, perhaps elsewhere.
            d->options.order().setInexact();
            continue;
        }
        strikes.push_back(option->strike);
        d->options.remove(record);
    }
    if (d->options.topRank() != d->shownRank)
        showTopRank();
    else
        announceRemoved(std::move(strikes));
}

void StrikeByBaseCodeModel::onRowsChanged(const QVector<Record>& records)
{
    if (d->baseCode.isEmpty())
        return;
    bool changed = false;
    for (const Record& record : records) {
        if (!record.isInTable())
            continue;
        const OptionStrikes::Option* before = d->options.find(record);
        const std::optional<OptionStrikes::Option> now = d->optionOf(*this, record);
        if (before ? now && *now == *before : !now)
            continue;
        changed = changed || (before && before->rank == d->shownRank) || (now && now->rank == d->shownRank);
        d->options.update(record, now);
    }
    if (changed || d->options.topRank() != d->shownRank)
        showTopRank();
}

void StrikeByBaseCodeModel::onTableReset()
{
    rebuild();
}

void StrikeByBaseCodeModel::showTopRank()
{
    beginResetModel();
    d->takeTopRank();
    endResetModel();
}

void StrikeByBaseCodeModel::announceInserted(std::vector<decimal> strikes)
{
    d->sortUnique(strikes, &Private::isNew);
    if (d->runCount(strikes, 0) > maxAnnouncements) {
        showTopRank();
        return;
    }
    // A listener may change the table meanwhile, so what is still new is asked again each time; and it may
    // delete the model.
    const QPointer<StrikeByBaseCodeModel> self(this);
    for (std::size_t i = 0; self && i < strikes.size();) {
        if (!d->isNew(strikes[i])) {
            ++i;
            continue;
        }
        const std::ptrdiff_t row = d->position(strikes[i]);
        std::size_t end = i + 1;
        while (end < strikes.size() && d->isNew(strikes[end]) && d->isBefore(strikes[end - 1], strikes[end])
            && d->position(strikes[end]) == row)
            ++end;
        beginInsertRows(
            QModelIndex(), static_cast<int>(row), static_cast<int>(row + std::ptrdiff_t(end - i) - 1));
        d->rows.insert(d->rows.begin() + row, strikes.begin() + std::ptrdiff_t(i),
            strikes.begin() + std::ptrdiff_t(end));
        endInsertRows();
        i = end;
    }
}

void StrikeByBaseCodeModel::announceRemoved(std::vector<decimal> strikes)
{
    d->sortUnique(strikes, &Private::isGone);
    if (d->runCount(strikes, 1) > maxAnnouncements) {
        showTopRank();
        return;
    }
    const QPointer<StrikeByBaseCodeModel> self(this);
    for (std::size_t i = 0; self && i < strikes.size();) {
        if (!d->isGone(strikes[i])) {
            ++i;
            continue;
        }
        const std::ptrdiff_t row = d->position(strikes[i]);
        std::ptrdiff_t endRow = row + 1;
        ++i;
        while (i < strikes.size() && d->isGone(strikes[i]) && d->position(strikes[i]) == endRow) {
            ++endRow;
            ++i;
        }
        beginRemoveRows(QModelIndex(), static_cast<int>(row), static_cast<int>(endRow - 1));
        d->rows.erase(d->rows.begin() + row, d->rows.begin() + endRow);
        endRemoveRows();
    }
}
