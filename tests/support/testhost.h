#pragma once

#include <basic_models/filterparams.h>
#include <database/exception.h>
#include <database/record.h>
#include <database/table.h>
#include <database/tablecolumndef.h>

#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>

/// The host as the tests of the library set it up: its tables "securities" and "boards", in memory.
///
/// Everything that a test needs of the host beyond what the library needs is here, and each host has its own
/// source for what is different: referencehost.cpp, or testhost.cpp in the folder of another host.
namespace TestHost {

using Columns = QVector<TableColumnDef>;

/// A row by column names. Numbers and texts are converted to the column's type, a decimal is best given as
/// its text, a moment as milliseconds or a QDateTime; an invalid value and a missing column mean null.
using Row = QMap<QString, QVariant>;

/// The columns of "securities" and of "boards".
Columns securitiesColumns();
Columns boardsColumns();

/// Drop a table if it is there and make it anew, empty.
Table* createSecurities(const Columns& columns = securitiesColumns());
Table* createBoards(const Columns& columns = boardsColumns());
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
/// Append rows at once: they are told of as one change.
QVector<Record> addRows(const QString& table, const QVector<Row>& rows);
QVector<Record> addSecurities(const QVector<Row>& rows);
Record addSecurity(const Row& row);
Record addBoard(int stockId, int boardId, bool anonymous);
/// Writes fields of a row that stands in its table.
void changeRow(const Record& record, const Row& row);

/// Rows that are not in the table any more come back, in front of the others or behind them.
void prependRow(Table* table, const Record& record);
void appendRow(Table* table, const Record& record);
/// Take rows out of their table.
void removeRows(const QVector<Record>& records);
void clear(Table* table);

/// A row of a table by its number from 0.
Record recordAt(const Table* table, int number);
int rowCount(const Table* table);

/// The number that a text in C notation says, which must be one, and the text of a number without zeros at
/// its end.
decimal number(const QString& text);
QString text(const decimal& number);
decimal sum(const decimal& a, const decimal& b);
decimal difference(const decimal& a, const decimal& b);

/// A filter of options by what is given, -1 standing for any.
FilterParams filter(int stockId, int boardId, int futIsinId, int optionType);

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
