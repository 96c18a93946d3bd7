#include "seriestree/seriestreemodel.h"

#include "seriestree/expirylook.h"

#include <window/texts.h>

#include <QFont>
#include <QGuiApplication>
#include <QIcon>

#include <algorithm>

namespace {

// The internal id of an index: this for an underlying, the row of the underlying for an expiry.
constexpr quintptr topLevel = ~quintptr(0);

QString nameOf(const StoredSeries& series)
{
    const QString day = series.expiry.isValid() ? series.expiry.toString(Qt::ISODate) : QStringLiteral("-");
    return series.baseCode + QLatin1Char(' ') + day;
}

}

SeriesTreeModel::SeriesTreeModel(QObject* parent)
    : QAbstractItemModel(parent)
{
}

QVector<SeriesTreeModel::Underlying> SeriesTreeModel::grouped(const QVector<StoredSeries>& series)
{
    QVector<Underlying> result;
    for (const StoredSeries& one : series) {
        if (result.isEmpty() || result.last().baseCode != one.baseCode)
            result.append({one.baseCode, {}});
        QVector<Expiry>& expiries = result.last().expiries;
        Expiry expiry{one.futureIsinId, Texts::expiry(one.expiry), nameOf(one)};
        const bool isTaken = std::any_of(expiries.cbegin(), expiries.cend(),
            [&expiry](const Expiry& other) { return other.title == expiry.title; });
        if (isTaken)
            expiry.title += QStringLiteral(" (%1)").arg(one.futureIsinId);
        expiries.append(expiry);
    }
    return result;
}

void SeriesTreeModel::setSeries(const QVector<StoredSeries>& series)
{
    const QVector<Underlying> fresh = grouped(series);
    const auto sameExpiry = [](const Expiry& a, const Expiry& b) {
        return a.futureIsinId == b.futureIsinId && a.title == b.title;
    };
    const auto sameUnderlying = [&sameExpiry](const Underlying& a, const Underlying& b) {
        return a.baseCode == b.baseCode
            && std::equal(
                a.expiries.begin(), a.expiries.end(), b.expiries.begin(), b.expiries.end(), sameExpiry);
    };
    if (std::equal(fresh.begin(), fresh.end(), m_underlyings.begin(), m_underlyings.end(), sameUnderlying))
        return;
    beginResetModel();
    m_underlyings = fresh;
    endResetModel();
}

void SeriesTreeModel::setChosen(int futureIsinId)
{
    if (futureIsinId == m_chosen)
        return;
    m_chosen = futureIsinId;
    announce({});
}

void SeriesTreeModel::setChosenColor(const QColor& color)
{
    m_chosenColor = color;
    announce({Qt::DecorationRole});
}

int SeriesTreeModel::seriesAt(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == topLevel)
        return 0;
    return m_underlyings.at(int(index.internalId())).expiries.at(index.row()).futureIsinId;
}

QModelIndex SeriesTreeModel::indexOf(int futureIsinId) const
{
    for (int i = 0; i < m_underlyings.size(); ++i) {
        const QVector<Expiry>& expiries = m_underlyings.at(i).expiries;
        for (int j = 0; j < expiries.size(); ++j) {
            if (expiries.at(j).futureIsinId == futureIsinId)
                return createIndex(j, 0, quintptr(i));
        }
    }
    return QModelIndex();
}

QVector<SeriesBeside> SeriesTreeModel::beside() const
{
    QVector<SeriesBeside> result;
    const QModelIndex chosen = indexOf(m_chosen);
    if (!chosen.isValid())
        return result;
    const QVector<Expiry>& expiries = m_underlyings.at(int(chosen.internalId())).expiries;
    for (int i = 0; i < expiries.size(); ++i) {
        const bool isBeside = isChecked(expiries.at(i)) || m_kept.contains(expiries.at(i).name);
        if (i != chosen.row() && isBeside)
            result.append({expiries.at(i).futureIsinId, expiries.at(i).title, ExpiryLook::pen(i)});
    }
    return result;
}

QStringList SeriesTreeModel::unchecked() const
{
    QStringList names = m_unchecked.values();
    names.sort();
    return names;
}

void SeriesTreeModel::setUnchecked(const QStringList& names)
{
    const QSet<QString> fresh(names.begin(), names.end());
    if (fresh == m_unchecked)
        return;
    m_unchecked = fresh;
    m_kept.clear();
    announce({Qt::CheckStateRole});
    Q_EMIT checksChanged();
}

QModelIndex SeriesTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return QModelIndex();
    return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) : topLevel);
}

QModelIndex SeriesTreeModel::parent(const QModelIndex& child) const
{
    if (!child.isValid() || child.internalId() == topLevel)
        return QModelIndex();
    return createIndex(int(child.internalId()), 0, topLevel);
}

int SeriesTreeModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return m_underlyings.size();
    return parent.internalId() == topLevel ? m_underlyings.at(parent.row()).expiries.size() : 0;
}

int SeriesTreeModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant SeriesTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    if (index.internalId() == topLevel)
        return underlyingData(m_underlyings.at(index.row()), role);
    return expiryData(m_underlyings.at(int(index.internalId())).expiries.at(index.row()), index.row(), role);
}

QVariant SeriesTreeModel::underlyingData(const Underlying& underlying, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return underlying.baseCode;
    case Qt::CheckStateRole:
        return checkState(underlying);
    case Qt::ToolTipRole:
        return tr("The box checks or unchecks all expiries of %1").arg(underlying.baseCode);
    default:
        return QVariant();
    }
}

QVariant SeriesTreeModel::expiryData(const Expiry& expiry, int position, int role) const
{
    const bool isChosen = expiry.futureIsinId == m_chosen;
    switch (role) {
    case Qt::DisplayRole:
        return expiry.title;
    case Qt::CheckStateRole:
        return isChecked(expiry) ? Qt::Checked : Qt::Unchecked;
    case Qt::FontRole: {
        QFont font;
        font.setBold(isChosen);
        return isChosen ? QVariant(font) : QVariant();
    }
    case Qt::DecorationRole: {
        const double ratio = qGuiApp->devicePixelRatio();
        const QPixmap picture = isChosen ? ExpiryLook::chosenMark(m_chosenColor, ratio)
                                         : ExpiryLook::swatch(ExpiryLook::pen(position), ratio);
        // The same in a selected row, which would be painted over in its colour.
        QIcon icon(picture);
        icon.addPixmap(picture, QIcon::Selected);
        return icon;
    }
    case Qt::ToolTipRole:
        return tip(expiry);
    case Qt::AccessibleTextRole:
        return isChosen ? tr("%1, chosen").arg(expiry.title) : expiry.title;
    default:
        return QVariant();
    }
}

QString SeriesTreeModel::tip(const Expiry& expiry) const
{
    if (expiry.futureIsinId == m_chosen)
        return tr("The chosen expiry: all its curves are shown");
    return tr("Click or press Enter to show all curves of this expiry; "
              "the box shows its smile beside those of the chosen one");
}

bool SeriesTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole)
        return false;
    const bool checked = value.toInt() != Qt::Unchecked;
    if (index.internalId() == topLevel) {
        for (const Expiry& expiry : qAsConst(m_underlyings.at(index.row()).expiries))
            check(expiry, checked);
    } else {
        check(m_underlyings.at(int(index.internalId())).expiries.at(index.row()), checked);
    }
    announce({Qt::CheckStateRole});
    Q_EMIT checksChanged();
    return true;
}

Qt::ItemFlags SeriesTreeModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const bool isChosen = m_chosen > 0 && seriesAt(index) == m_chosen;
    return isChosen ? flags : flags | Qt::ItemIsUserCheckable;
}

bool SeriesTreeModel::isChecked(const Expiry& expiry) const
{
    return expiry.futureIsinId == m_chosen || !m_unchecked.contains(expiry.name);
}

Qt::CheckState SeriesTreeModel::checkState(const Underlying& underlying) const
{
    const auto checked = std::count_if(underlying.expiries.begin(), underlying.expiries.end(),
        [this](const Expiry& expiry) { return isChecked(expiry); });
    if (checked == 0)
        return Qt::Unchecked;
    return checked == underlying.expiries.size() ? Qt::Checked : Qt::PartiallyChecked;
}

const SeriesTreeModel::Expiry* SeriesTreeModel::find(int futureIsinId) const
{
    const QModelIndex index = indexOf(futureIsinId);
    return index.isValid() ? &m_underlyings.at(int(index.internalId())).expiries.at(index.row()) : nullptr;
}

bool SeriesTreeModel::isChecked(int futureIsinId) const
{
    const Expiry* const expiry = find(futureIsinId);
    return expiry && isChecked(*expiry);
}

bool SeriesTreeModel::setCheckedBeside(int futureIsinId, bool checked)
{
    const Expiry* const expiry = find(futureIsinId);
    if (!expiry || isChecked(*expiry) == checked)
        return false;
    check(*expiry, checked);
    if (!checked)
        m_kept.insert(expiry->name);
    announce({Qt::CheckStateRole});
    return true;
}

void SeriesTreeModel::check(const Expiry& expiry, bool checked)
{
    m_kept.remove(expiry.name);
    if (checked)
        m_unchecked.remove(expiry.name);
    else
        m_unchecked.insert(expiry.name);
}

void SeriesTreeModel::announce(const QVector<int>& roles)
{
    if (m_underlyings.isEmpty())
        return;
    Q_EMIT dataChanged(index(0, 0), index(m_underlyings.size() - 1, 0), roles);
    for (int i = 0; i < m_underlyings.size(); ++i) {
        const QModelIndex parent = index(i, 0);
        Q_EMIT dataChanged(index(0, 0, parent), index(rowCount(parent) - 1, 0, parent), roles);
    }
}
