#pragma once

#include <chain/chainstore.h>

#include <QAbstractItemModel>
#include <QPen>
#include <QSet>
#include <QStringList>

/// A series that is shown beside the chosen one.
struct SeriesBeside {
    int futureIsinId = 0;
    /// Names its expiry, and no other of the underlying.
    QString title;
    QPen pen;

    friend bool operator==(const SeriesBeside& a, const SeriesBeside& b)
    {
        return a.futureIsinId == b.futureIsinId && a.title == b.title && a.pen == b.pen;
    }
};

/// The stored series as a tree of underlyings and their expiries, each with a box.
///
/// The checked expiries of the chosen series' underlying are shown beside it. All are checked until the user
/// unchecks them; the chosen one counts as checked while it is chosen.
class SeriesTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    explicit SeriesTreeModel(QObject* parent = nullptr);

    /// Replaces the series, which stand by base code, then by expiry. Without other names nothing is reset.
    void setSeries(const QVector<StoredSeries>& series);

    /// Which series is chosen, by its future; an unknown one for none.
    void setChosen(int futureIsinId);
    int chosen() const { return m_chosen; }

    /// The colour of the chosen series' mark, that of its smile.
    void setChosenColor(const QColor& color);

    /// The future of the series at an index, 0 for an underlying.
    int seriesAt(const QModelIndex& index) const;
    QModelIndex indexOf(int futureIsinId) const;

    /// The checked series of the chosen one's underlying but itself, by expiry, and those that are unchecked
    /// by setCheckedBeside().
    QVector<SeriesBeside> beside() const;

    /// The series that the user has unchecked, also those that are not stored now, by names that outlive the
    /// table: base code and expiry, "DAX 2012-03-16". For a session's memory.
    QStringList unchecked() const;
    bool isChecked(int futureIsinId) const;

    /// Checks or unchecks a series where it is shown beside the chosen one, without checksChanged(): it stays
    /// beside that until its box here is unchecked. Whether anything has changed.
    bool setCheckedBeside(int futureIsinId, bool checked);

    void setUnchecked(const QStringList& names);

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    /// Series are checked or unchecked by the user or by setUnchecked().
    void checksChanged();

private:
    struct Expiry {
        int futureIsinId = 0;
        QString title;
        /// See unchecked().
        QString name;
    };
    struct Underlying {
        QString baseCode;
        QVector<Expiry> expiries;
    };

    static QVector<Underlying> grouped(const QVector<StoredSeries>& series);
    const Expiry* find(int futureIsinId) const;
    bool isChecked(const Expiry& expiry) const;
    Qt::CheckState checkState(const Underlying& underlying) const;
    void check(const Expiry& expiry, bool checked);
    QVariant underlyingData(const Underlying& underlying, int role) const;
    QVariant expiryData(const Expiry& expiry, int position, int role) const;
    QString tip(const Expiry& expiry) const;
    void announce(const QVector<int>& roles);

    QVector<Underlying> m_underlyings;
    QSet<QString> m_unchecked;
    /// Those of them that stay beside the chosen one.
    QSet<QString> m_kept;
    int m_chosen = 0;
    QColor m_chosenColor;
};
