#include "database/shared/numberstock_p.h"

#include <algorithm>
#include <iterator>

void NumberStock::add(const QVector<NumberRange>& ranges)
{
    std::copy_if(ranges.cbegin(), ranges.cend(), std::back_inserter(m_ranges),
        [](const NumberRange& range) { return range.size() > 0; });
}

QVector<qint32> NumberStock::take(int count)
{
    QVector<qint32> numbers;
    if (count < 1 || size() < count)
        return numbers;
    numbers.reserve(count);
    while (numbers.size() < count) {
        NumberRange& range = m_ranges.first();
        while (range.size() > 0 && numbers.size() < count)
            numbers.append(static_cast<qint32>(range.first++));
        if (range.size() == 0)
            m_ranges.removeFirst();
    }
    return numbers;
}

qint64 NumberStock::size() const
{
    qint64 size = 0;
    for (const NumberRange& range : m_ranges)
        size += range.size();
    return size;
}
