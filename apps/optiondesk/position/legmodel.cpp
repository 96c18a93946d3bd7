#include "position/legmodel.h"

#include "position/legtexts.h"

#include <algorithm>
#include <cmath>

namespace Position {

namespace {

// Of the numbers that users type.
constexpr int typedDecimals = 10;
constexpr int deltaDecimals = 3;

const auto nothing = QStringLiteral("\u2013");

bool isEditable(const Leg& leg, int column)
{
    return column <= LegModel::Price && !(column == LegModel::Strike && leg.kind == LegKind::Future);
}

}

LegModel::LegModel(const LegMarket& market, QObject* parent)
    : QAbstractTableModel(parent)
    , m_market(market)
{
}

const QVector<LegKind>& LegModel::kinds()
{
    static const QVector<LegKind> all{LegKind::Call, LegKind::Put, LegKind::Future};
    return all;
}

void LegModel::setLegs(const QVector<Leg>& legs)
{
    beginResetModel();
    m_legs = legs;
    m_valued.fill(std::nullopt, legs.size());
    endResetModel();
}

// The profile has the legs in their order, but not all of them.
void LegModel::setProfile(const Profile& profile, int decimals)
{
    m_profile = profile;
    m_decimals = decimals;
    auto next = profile.legs().begin();
    m_valued.fill(std::nullopt, m_legs.size());
    for (int row = 0; row < m_legs.size() && next != profile.legs().end(); ++row) {
        if (next->leg == m_legs[row])
            m_valued[row] = *next++;
    }
    if (!m_legs.isEmpty())
        Q_EMIT dataChanged(index(0, Value), index(m_legs.size() - 1, Delta));
}

int LegModel::addLeg()
{
    const int row = m_legs.size();
    beginInsertRows(QModelIndex(), row, row);
    m_legs.append(m_market.suggestedLeg());
    m_valued.append(std::nullopt);
    endInsertRows();
    Q_EMIT edited();
    return row;
}

void LegModel::removeLeg(int row)
{
    if (row < 0 || row >= m_legs.size())
        return;
    beginRemoveRows(QModelIndex(), row, row);
    m_legs.remove(row);
    m_valued.remove(row);
    endRemoveRows();
    Q_EMIT edited();
}

void LegModel::removeAll()
{
    if (m_legs.isEmpty())
        return;
    setLegs({});
    Q_EMIT edited();
}

int LegModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_legs.size();
}

int LegModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LegModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    struct Header {
        QString text;
        QString tip;
    };
    const Header headers[] = {{tr("Kind"), tr("Call, put or future")},
        {tr("Expiry"), tr("The series that the leg belongs to")},
        {tr("Quantity"), tr("How many are bought; negative for sold")}, {tr("Strike"), tr("Of an option")},
        {tr("Price"), tr("What was paid or got for one; clear it to take the market's")},
        {tr("Value now"), tr("What one is worth by the fitted smile")},
        {tr("Profit now"), tr("Of the whole leg")},
        {tr("Delta"), tr("Of the whole leg, in futures of the series shown")}};
    if (role == Qt::DisplayRole)
        return headers[section].text;
    return role == Qt::ToolTipRole ? headers[section].tip : QVariant();
}

Qt::ItemFlags LegModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags common = QAbstractTableModel::flags(index);
    if (!index.isValid() || !isEditable(m_legs.at(index.row()), index.column()))
        return common;
    return common | Qt::ItemIsEditable;
}

std::optional<ValuedLeg> LegModel::valued(int row) const
{
    return m_valued.value(row);
}

QString LegModel::valueText(const ValuedLeg& leg, int column) const
{
    if (column == Delta) {
        const std::optional<Pricing::Greeks> greeks = unitGreeks(leg);
        return greeks ? LegTexts::signedNumber(greeks->delta * leg.leg.quantity, deltaDecimals) : nothing;
    }
    const std::optional<double> value = unitValue(leg, m_profile.forward(), leg.market.time);
    if (!value)
        return nothing;
    if (column == Value)
        return LegTexts::number(*value, m_decimals);
    return LegTexts::signedNumber((*value - leg.leg.price) * leg.leg.quantity, m_decimals);
}

QString LegModel::editText(const Leg& leg, int column) const
{
    switch (column) {
    case Quantity:
        return LegTexts::number(leg.quantity, 0);
    case Strike:
        return LegTexts::number(leg.strike, typedDecimals);
    default:
        return LegTexts::number(leg.price, typedDecimals);
    }
}

QString LegModel::text(int row, int column) const
{
    const Leg& leg = m_legs.at(row);
    switch (column) {
    case Kind:
        return LegTexts::kind(leg.kind);
    case Expiry:
        return LegTexts::expiry(leg.expiry);
    case Quantity:
        return LegTexts::signedNumber(leg.quantity, 0);
    case Strike:
        return leg.kind == LegKind::Future ? nothing : editText(leg, column);
    case Price:
        return editText(leg, column);
    default:
        break;
    }
    const std::optional<ValuedLeg> known = valued(row);
    return known ? valueText(*known, column) : nothing;
}

QVariant LegModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_legs.size())
        return QVariant();
    const Leg& leg = m_legs.at(index.row());
    const bool isNumber = index.column() > Expiry;
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row(), index.column());
    case Qt::EditRole:
        if (index.column() == Kind)
            return int(leg.kind);
        return index.column() == Expiry ? QVariant(leg.expiry) : editText(leg, index.column());
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::AccessibleTextRole:
        return QStringLiteral("%1: %2").arg(
            headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString(),
            text(index.row(), index.column()));
    default:
        return QVariant();
    }
}

void LegModel::takePrice(Leg* leg) const
{
    if (const std::optional<double> price = m_market.price(*leg))
        leg->price = *price;
    else if (leg->kind != LegKind::Future)
        leg->price = std::max(leg->price, 0.0);
}

void LegModel::changeKind(Leg* leg, LegKind kind) const
{
    if (leg->kind == kind)
        return;
    leg->kind = kind;
    if (!(leg->strike > 0.0))
        leg->strike = m_market.suggestedLeg().strike;
    takePrice(leg);
}

QString LegModel::changedQuantity(Leg* leg, const QString& text) const
{
    const double quantity = LegTexts::number(text).value_or(0.0);
    if (quantity == 0.0 || quantity != std::floor(quantity) || std::abs(quantity) > largestQuantity)
        return tr("Quantity: a whole number other than 0 is needed, negative for sold");
    leg->quantity = int(quantity);
    return QString();
}

QString LegModel::changedStrike(Leg* leg, const QString& text) const
{
    const double strike = LegTexts::number(text).value_or(0.0);
    if (!(strike > 0.0) || strike > largestPrice)
        return tr("Strike: a positive number is needed");
    if (strike == leg->strike)
        return QString();
    leg->strike = strike;
    takePrice(leg);
    return QString();
}

QString LegModel::changedPrice(Leg* leg, const QString& text) const
{
    if (text.trimmed().isEmpty()) {
        const std::optional<double> price = m_market.price(*leg);
        if (!price)
            return tr("Price: the market has none for this leg");
        leg->price = *price;
        return QString();
    }
    const std::optional<double> price = LegTexts::number(text);
    if (!price || std::abs(*price) > largestPrice)
        return tr("Price: a number is needed, or nothing for the market's");
    if (*price < 0.0 && leg->kind != LegKind::Future)
        return tr("Price: an option's cannot be negative; sold legs have a negative quantity");
    leg->price = *price;
    return QString();
}

// Empty, or why the value is refused.
QString LegModel::changed(Leg* leg, int column, const QVariant& value) const
{
    switch (column) {
    case Kind:
        changeKind(leg, LegKind(value.toInt()));
        return kinds().contains(leg->kind) ? QString() : tr("Kind: call, put or future is needed");
    case Expiry:
        if (leg->expiry != value.toDate()) {
            leg->expiry = value.toDate();
            takePrice(leg);
        }
        return QString();
    case Quantity:
        return changedQuantity(leg, value.toString());
    case Strike:
        return changedStrike(leg, value.toString());
    default:
        return changedPrice(leg, value.toString());
    }
}

bool LegModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !flags(index).testFlag(Qt::ItemIsEditable))
        return false;
    Leg leg = m_legs.at(index.row());
    const QString reason = changed(&leg, index.column(), value);
    if (!reason.isEmpty() || !isValid(leg)) {
        Q_EMIT refused(reason.isEmpty() ? tr("Kind: there is no strike for an option") : reason);
        return false;
    }
    if (leg == m_legs.at(index.row()))
        return true;
    m_legs[index.row()] = leg;
    m_valued[index.row()].reset();
    Q_EMIT dataChanged(this->index(index.row(), 0), this->index(index.row(), ColumnCount - 1));
    Q_EMIT edited();
    return true;
}

}
