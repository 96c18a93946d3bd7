#pragma once

#include "position/legmarket.h"
#include "position/profile.h"

#include <QAbstractTableModel>
#include <QVector>

#include <optional>

namespace Position {

/// The legs of a position as rows of a table that the user edits, with what they are worth.
///
/// A leg whose kind, expiry or strike is changed is another instrument: it takes the market's price of that,
/// where there is one.
class LegModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Kind, Expiry, Quantity, Strike, Price, Value, Profit, Delta, ColumnCount };

    /// The market must outlive this object.
    explicit LegModel(const LegMarket& market, QObject* parent = nullptr);

    /// Replaces all legs; nobody has edited them then.
    void setLegs(const QVector<Leg>& legs);
    const QVector<Leg>& legs() const { return m_legs; }

    /// What the legs are worth, and the decimals to say it with.
    void setProfile(const Profile& profile, int decimals);

    /// Adds the market's suggestion at the end; its row.
    int addLeg();
    /// Nothing for a row outside.
    void removeLeg(int row);
    void removeAll();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Takes a kind as int, an expiry as date, and numbers as the text that the user types; an empty price
    /// asks for the market's. Refuses what makes no valid leg, and says so by refused().
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    /// The kinds that the user may choose from, in their order.
    static const QVector<LegKind>& kinds();
    QVector<QDate> expiries() const { return m_market.expiries(); }

Q_SIGNALS:
    /// The user has changed the legs.
    void edited();
    /// Why the last input was not taken.
    void refused(const QString& reason);

private:
    QString text(int row, int column) const;
    QString valueText(const ValuedLeg& leg, int column) const;
    QString editText(const Leg& leg, int column) const;
    QString changed(Leg* leg, int column, const QVariant& value) const;
    QString changedQuantity(Leg* leg, const QString& text) const;
    QString changedStrike(Leg* leg, const QString& text) const;
    QString changedPrice(Leg* leg, const QString& text) const;
    void changeKind(Leg* leg, LegKind kind) const;
    void takePrice(Leg* leg) const;
    std::optional<ValuedLeg> valued(int row) const;

    const LegMarket& m_market;
    QVector<Leg> m_legs;
    /// What is known of the value of each leg.
    QVector<std::optional<ValuedLeg>> m_valued;
    Profile m_profile;
    int m_decimals = 2;
};

}
