#include "longchain.h"

#include <database/table.h>

#include <QApplication>
#include <QDate>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QWidget>

#include <algorithm>
#include <cmath>

QByteArray LongChain::text(int expiries, int strikes)
{
    QByteArray lines = "symbol,date,expiry,type,strike,settlement\n";
    for (int i = 0; i < expiries; ++i) {
        const QByteArray expiry = QDate(2024, 2, 2).addDays(7 * i).toString(Qt::ISODate).toLatin1();
        for (int j = 0; j < strikes; ++j) {
            const double strike = 80.0 + 40.0 * j / strikes;
            const double value = (2.0 + 0.1 * i) * std::exp(-0.02 * (strike - 100.0) * (strike - 100.0));
            for (const char type : {'C', 'P'}) {
                const double inner = std::max(0.0, type == 'C' ? 100.0 - strike : strike - 100.0);
                lines += "LONG,2024-01-02," + expiry + ',' + type + ',' + QByteArray::number(strike, 'f', 4)
                    + ',' + QByteArray::number(inner + value, 'f', 4) + '\n';
            }
        }
    }
    return lines;
}

QStringList LongChain::rowsOf(const Table& table)
{
    QStringList rows;
    for (const Record& row : table.masterIndex()) {
        QStringList fields;
        for (int column = 0; column < table.columnCount(); ++column)
            fields.append(row.value(column).isNull() ? QStringLiteral("-") : row.field(column).toString());
        rows.append(fields.join(QLatin1Char(' ')));
    }
    return rows;
}

bool LongChain::drop(QWidget& target, const QList<QUrl>& urls)
{
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(&target, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent event(QPointF(9, 9), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QApplication::sendEvent(&target, &event);
    return event.isAccepted();
}
