#pragma once

#include "replay/quotestream.h"

#include <database/record.h>

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QVector>

#include <optional>

class SecurityRows;

/// Writes live quotes into rows of the host's table "securities", many at once.
///
/// An instrument is named by the short name of its row on the chains' board, "AMBER 2024-04-19 C 81" or, for
/// a future, "AMBER 2024-04-19"; by its ISIN id in digits where no row has that short name; or by "FUT" for
/// the future that the constructor is given. A future's last price, if positive, becomes its current quote
/// (cur_kotir_real) as well, which is where a plot looks for it.
///
/// The quotes are no data of the chain and are not to be stored: when rows come or go, as before the commit
/// of an import, and at the end of the writer all fields get back the values that they had before, except
/// those that somebody else has written since, with another value than the quote's. After the import, or the
/// rollback that replaces the rows, the live values go in again as soon as the event loop runs. What commits
/// without rows coming or going calls takeBack() first.
class QuoteWriter : public QObject {
    Q_OBJECT

public:
    /// Throws Exception if the table lacks a column for the prices. A null table is allowed: all instruments
    /// are unknown then.
    QuoteWriter(
        Table* securities, const QStringList& instruments, int futureIsinId, QObject* parent = nullptr);
    ~QuoteWriter() override;

    /// How many instruments there are.
    int instrumentCount() const { return m_instruments.size(); }
    /// Puts another one at the end of the constructor's list.
    void addInstrument(const QString& name);

    /// Whether the table is still there.
    bool hasTable() const { return !m_table.isNull(); }

    /// Takes a quote for the next flush(); later prices replace earlier ones. Its instrument is a position in
    /// the constructor's list. False if the table has no such instrument.
    bool note(const RecordedQuote& quote);

    /// Writes what note() took in one Table::changeRows().
    void flush();

    /// Gives all fields their own values back. They stay until the next quote or rows come or go.
    void takeBack();

private Q_SLOTS:
    void onRowsReplaced();
    void writeAgain();

private:
    /// A field of a row that live values are written to.
    struct LiveField {
        std::optional<decimal> live;
        bool isPending = false;
        /// The value in the row while isLent, and the one to give back: none for null.
        decimal written;
        std::optional<decimal> own;
        bool isLent = false;

        void set(const decimal& value);
    };
    static constexpr int liveFieldCount = quoteFieldCount + 1;
    static constexpr std::size_t futureQuote = quoteFieldCount;

    struct Target {
        Record record;
        /// The first of the instruments that mean the row.
        int instrument = 0;
        bool isFuture = false;
        bool isQueued = false;
        std::array<LiveField, liveFieldCount> fields;
    };

    void resolve();
    QHash<QString, Record> recordsByName(const SecurityRows& rows) const;
    Record recordOf(const QString& instrument) const;
    int targetFor(const SecurityRows& rows, int instrument);
    void carryOver(const QVector<Target>& before);
    void queue(int target);
    std::optional<decimal> valueOf(const Record& record, std::size_t field) const;

    QPointer<Table> m_table;
    QStringList m_instruments;
    const int m_futureIsinId;
    std::array<int, liveFieldCount> m_columns = {};
    /// Those that instruments may mean: see recordsByName().
    QHash<QString, Record> m_records;
    QVector<Target> m_targets;
    QHash<Record, int> m_targetOfRecord;
    /// For each instrument a position in m_targets, -1 for none.
    QVector<int> m_targetOfInstrument;
    QVector<int> m_queue;
    bool m_isStale = true;
};
