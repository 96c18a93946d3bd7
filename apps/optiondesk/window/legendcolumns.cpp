#include "window/legendcolumns.h"

#include <algorithm>
#include <numeric>

int LegendColumns::thatFit(const QVector<int>& entryWidths, int spacing, int width)
{
    for (int columns = entryWidths.size(); columns > 1; --columns) {
        QVector<int> columnWidths(columns, 0);
        for (int i = 0; i < entryWidths.size(); ++i)
            columnWidths[i % columns] = std::max(columnWidths[i % columns], entryWidths[i]);
        if (std::accumulate(columnWidths.begin(), columnWidths.end(), (columns - 1) * spacing) <= width)
            return columns;
    }
    return 1;
}
