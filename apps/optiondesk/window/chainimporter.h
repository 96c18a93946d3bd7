#pragma once

#include <chain/optionchain.h>

#include <QObject>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>

class ChainRows;
class QThread;
class Work;

/// Imports chains' files beside all else that the window does, one at a time.
///
/// A thread of its own reads, parses and checks the file: it works on values that nobody else knows, and what
/// it shares is a flag that stops it. The thread of the widgets then makes the rows, a few in each turn of
/// the event loop; they stand in no table until all are made, and go into it, and into the database, in one
/// step. An import that is cancelled or fails before that has changed nothing; in that step it either fails
/// with all as it was or is done.
class ChainImporter : public QObject {
    Q_OBJECT

public:
    /// Where the chains go. Both functions may throw Exception.
    struct Store {
        /// The rows of a chain, none of which is made yet.
        std::function<std::unique_ptr<ChainRows>(const OptionChain& chain)> rows;
        /// Puts them into the tables and gets the position of the series to show.
        std::function<void(ChainRows& rows, int position)> store;
    };

    explicit ChainImporter(const Store& store, QObject* parent = nullptr);
    /// Cancels what runs, and waits for its thread.
    ~ChainImporter() override;

    /// False, and nothing happens, while an import runs.
    bool start(const QString& fileName);
    bool isRunning() const { return m_job != nullptr; }
    QString fileName() const { return m_fileName; }

    /// What there is to see of it. Its percentages ascend to 100 when the chain is in the tables.
    Work* work() const { return m_work; }

public Q_SLOTS:
    /// Nothing happens any more but cancelled(), at once.
    void cancel();

Q_SIGNALS:
    void imported(const QString& fileName);
    /// All is as it was before.
    void cancelled();
    void failed(const QString& reason);

private Q_SLOTS:
    void makeRows();

private:
    struct Job;

    void onRead(const std::shared_ptr<Job>& job);
    void storeRows();
    void end();
    void fail(const QString& reason);

    Store m_store;
    Work* m_work;
    QString m_fileName;
    /// Null while nothing runs; that of a cancelled import goes with its thread.
    std::shared_ptr<Job> m_job;
    std::unique_ptr<ChainRows> m_rows;
    QTimer m_timer;
};
