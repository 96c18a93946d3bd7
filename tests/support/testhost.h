#pragma once

#include <database/exception.h>
#include <database/record.h>
#include <database/table.h>
#include <database/tablecolumndef.h>
#include <directory/securitiestable.h>

#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>

/// The host as the tests of the library set it up: its tables "securities" and "boards", in memory.
///
/// Everything that a test needs of the host beyond its public headers is here, so that another host is put
/// under the tests by replacing this file's source.
namespace TestHost {

using Columns = QVector<TableColumnDef>;

/// A row by column names. Numbers and texts are converted to the column's type, a decimal is best given as
/// its text, a moment as milliseconds or a QDateTime; an invalid value and a missing column mean null.
using Row = QMap<QString, QVariant>;

/// Drop a table if it is there and make it anew, empty.
Table* createSecurities(const Columns& columns = SecuritiesTable::securitiesColumns());
Table* createBoards(const Columns& columns = SecuritiesTable::boardsColumns());
/// Another table, of any name.
Table* createTable(const QString& name, const Columns& columns);
void dropSecurities();
void dropBoards();
void dropTable(const QString& name);

/// Columns without those of the names.
Columns without(Columns columns, const QStringList& names);
/// Columns of which one has another type.
Columns withType(Columns columns, const QString& name, FieldType type);

/// Append a row to the table of that name and give its record; an unknown column ends the process.
Record addRow(const QString& table, const Row& row);
Record addSecurity(const Row& row);
Record addBoard(int stockId, int boardId, bool anonymous);
/// Writes fields of a row that stands in its table.
void changeRow(const Record& record, const Row& row);

/// A future of the base code "Amber" on the board (1, 2) with ISIN id 10, in a session, and with an expiry;
/// the given fields replace or add to these.
Row future(const Row& changes = Row());

/// The milliseconds since the epoch of a date at midnight UTC.
qint64 moment(int year, int month, int day);

/// The text of the host's exception that a call throws; "nothing thrown" if it returns.
template <typename Call> QString thrownText(Call call);

}

template <typename Call> QString TestHost::thrownText(Call call)
{
    try {
        call();
    } catch (const Exception& exception) {
        return exception.text();
    }
    return QStringLiteral("nothing thrown");
}
