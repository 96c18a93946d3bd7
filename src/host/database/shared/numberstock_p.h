#pragma once

#include "database/shared/sharedwriting_p.h"

#include <QVector>

/// The numbers that this program may give to new rows.
class NumberStock {
public:
    void add(const QVector<NumberRange>& ranges);
    /// The smallest ones; none, and nothing is taken, if there are not as many.
    QVector<qint32> take(int count);
    qint64 size() const;
    const QVector<NumberRange>& ranges() const { return m_ranges; }

private:
    QVector<NumberRange> m_ranges;
};
