#include "quotes/quotesmodel.h"

#include <QFont>
#include <QGuiApplication>
#include <QLocale>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace {

struct ColumnText {
    const char* title;
    const char* tip;
};

constexpr ColumnText columnTexts[] = {
    {QT_TRANSLATE_NOOP("QuotesModel", "Strike"), QT_TRANSLATE_NOOP("QuotesModel", "The strike of the row")},
    {QT_TRANSLATE_NOOP("QuotesModel", "Implied\nvol."),
        QT_TRANSLATE_NOOP("QuotesModel", "The implied volatility of the point on the plot")},
    {QT_TRANSLATE_NOOP("QuotesModel", "Delta"),
        QT_TRANSLATE_NOOP("QuotesModel",
            "The change of the option's value with the forward, of the option whose volatility is shown")},
    {QT_TRANSLATE_NOOP("QuotesModel", "Call\nbid"), QT_TRANSLATE_NOOP("QuotesModel", "The call's best bid")},
    {QT_TRANSLATE_NOOP("QuotesModel", "Call\nask"), QT_TRANSLATE_NOOP("QuotesModel", "The call's best ask")},
    {QT_TRANSLATE_NOOP("QuotesModel", "Call\nmiddle"),
        QT_TRANSLATE_NOOP("QuotesModel", "The middle of the call's bid and ask")},
    {QT_TRANSLATE_NOOP("QuotesModel", "Call\nsettle"),
        QT_TRANSLATE_NOOP("QuotesModel", "The call's settlement price")},
    {QT_TRANSLATE_NOOP("QuotesModel", "Put\nbid"), QT_TRANSLATE_NOOP("QuotesModel", "The put's best bid")},
    {QT_TRANSLATE_NOOP("QuotesModel", "Put\nask"), QT_TRANSLATE_NOOP("QuotesModel", "The put's best ask")},
    {QT_TRANSLATE_NOOP("QuotesModel", "Put\nmiddle"),
        QT_TRANSLATE_NOOP("QuotesModel", "The middle of the put's bid and ask")},
    {QT_TRANSLATE_NOOP("QuotesModel", "Put\nsettle"),
        QT_TRANSLATE_NOOP("QuotesModel", "The put's settlement price")},
};
static_assert(sizeof(columnTexts) / sizeof(columnTexts[0]) == quotesColumnCount);

// How many decimals all strikes need, up to those of the prices.
int decimalsOf(const QVector<QuotesRow>& rows, int most)
{
    constexpr double rounding = 1e-6;
    int decimals = 0;
    for (const QuotesRow& row : rows) {
        while (decimals < most) {
            const double shifted = row.strike * std::pow(10.0, decimals);
            if (std::abs(shifted - std::round(shifted)) < rounding)
                break;
            ++decimals;
        }
    }
    return decimals;
}

// A light tone of the selection, on which text stays readable.
QColor atTheMoneyColor()
{
    const QColor base = qGuiApp->palette().color(QPalette::Base);
    const QColor highlight = qGuiApp->palette().color(QPalette::Highlight);
    constexpr double part = 0.2;
    const auto mixed = [](int a, int b) { return qRound(a + (b - a) * part); };
    return QColor(mixed(base.red(), highlight.red()), mixed(base.green(), highlight.green()),
        mixed(base.blue(), highlight.blue()));
}

}

QuotesModel::QuotesModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void QuotesModel::show(int futureIsinId, const ShownSeries& series)
{
    const QVector<QuotesRow> fresh = QuotesRows::of(series);
    const int priceDecimals = series.data.decimals;
    const int strikeDecimals = decimalsOf(fresh, priceDecimals);
    const bool isOther = futureIsinId != m_futureIsinId || priceDecimals != m_priceDecimals
        || strikeDecimals != m_strikeDecimals;
    if (!isOther) {
        fitRows(fresh);
        changeRows(fresh);
        return;
    }
    beginResetModel();
    m_futureIsinId = futureIsinId;
    m_priceDecimals = priceDecimals;
    m_strikeDecimals = strikeDecimals;
    m_rows = fresh;
    endResetModel();
}

void QuotesModel::clear()
{
    if (m_futureIsinId == 0)
        return;
    beginResetModel();
    m_futureIsinId = 0;
    m_rows.clear();
    endResetModel();
}

// Takes out the strikes that are gone and puts in those that are new.
void QuotesModel::fitRows(const QVector<QuotesRow>& fresh)
{
    const auto removeAt = [this](int row) {
        beginRemoveRows(QModelIndex(), row, row);
        m_rows.removeAt(row);
        endRemoveRows();
    };
    for (int i = 0; i < fresh.size(); ++i) {
        while (i < m_rows.size() && m_rows.at(i).strike < fresh.at(i).strike)
            removeAt(i);
        if (i < m_rows.size() && m_rows.at(i).strike == fresh.at(i).strike)
            continue;
        beginInsertRows(QModelIndex(), i, i);
        m_rows.insert(i, fresh.at(i));
        endInsertRows();
    }
    while (m_rows.size() > fresh.size())
        removeAt(m_rows.size() - 1);
}

void QuotesModel::changeRows(const QVector<QuotesRow>& fresh)
{
    int first = -1;
    for (int i = 0; i <= fresh.size(); ++i) {
        const bool changes = i < fresh.size() && m_rows.at(i) != fresh.at(i);
        if (changes) {
            m_rows[i] = fresh.at(i);
            first = first < 0 ? i : first;
        } else if (first >= 0) {
            Q_EMIT dataChanged(index(first, 0), index(i - 1, quotesColumnCount - 1));
            first = -1;
        }
    }
}

bool QuotesModel::hasValues(QuotesColumn column) const
{
    return std::any_of(
        m_rows.begin(), m_rows.end(), [column](const QuotesRow& row) { return row[column].has_value(); });
}

int QuotesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int QuotesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : quotesColumnCount;
}

QVariant QuotesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const QuotesRow& row = m_rows.at(index.row());
    const auto column = QuotesColumn(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return row[column] ? text(column, *row[column]) : QString();
    case Qt::TextAlignmentRole:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::BackgroundRole:
        return row.isAtTheMoney ? QVariant(atTheMoneyColor()) : QVariant();
    case Qt::FontRole: {
        QFont font;
        font.setBold(true);
        return row.isAtTheMoney ? QVariant(font) : QVariant();
    }
    case Qt::ToolTipRole:
        return row.isAtTheMoney ? QVariant(tr("At the money: the strike nearest to the forward"))
                                : QVariant();
    default:
        return QVariant();
    }
}

QString QuotesModel::text(QuotesColumn column, double value) const
{
    constexpr int volatilityDecimals = 2;
    constexpr int deltaDecimals = 3;
    constexpr double smallestDelta = 0.0005;
    const QLocale locale;
    switch (column) {
    case QuotesColumn::Strike:
        return locale.toString(value, 'f', m_strikeDecimals);
    case QuotesColumn::CallMiddle:
    case QuotesColumn::PutMiddle:
        return locale.toString(value, 'f', m_priceDecimals + 1);
    case QuotesColumn::Volatility:
        return locale.toString(value * 100.0, 'f', volatilityDecimals) + locale.percent();
    case QuotesColumn::Delta:
        // No zero has a sign.
        return locale.toString(std::abs(value) < smallestDelta ? 0.0 : value, 'f', deltaDecimals);
    default:
        return locale.toString(value, 'f', m_priceDecimals);
    }
}

QVariant QuotesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= quotesColumnCount)
        return QVariant();
    const ColumnText& column = columnTexts[section];
    switch (role) {
    case Qt::DisplayRole:
        return tr(column.title);
    case Qt::ToolTipRole:
        return tr(column.tip);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    default:
        return QVariant();
    }
}
