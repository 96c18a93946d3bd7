#pragma once

#include <chain/chainstore.h>

#include <QVector>
#include <QWidget>

class QComboBox;

/// Two boxes that choose a stored series by base code and expiry.
class SeriesSelector : public QWidget {
    Q_OBJECT

public:
    explicit SeriesSelector(QWidget* parent = nullptr);

    /// Replaces the series to choose from, which stand by base code, then by expiry, and selects one by its
    /// future; none of the expiries where it is not among them. What stays keeps its place in an open list.
    /// Emits nothing.
    void setSeries(const QVector<StoredSeries>& series, int futureIsinId);

Q_SIGNALS:
    /// The user has chosen a series.
    void chosen(int futureIsinId);

private Q_SLOTS:
    void onBaseCodeActivated();
    void onExpiryActivated();

private:
    void fillExpiries();

    QVector<StoredSeries> m_series;
    QComboBox* m_baseCodes;
    QComboBox* m_expiries;
};
