#include "database/sharedstorage.h"

#include "database/exception.h"
#include "database/postgresaddress.h"
#include "database/shared/numberstock_p.h"
#include "database/shared/sharedtable_p.h"
#include "database/shared/sharedworker_p.h"
#include "database/table.h"

#include <QThread>
#include <QTimer>

#include <algorithm>
#include <vector>

namespace {

// Enough for the largest chain of options, again and again while there is no connection.
constexpr qint64 numbersPerTaking = 65536;
constexpr qint64 fewNumbers = numbersPerTaking / 2;

constexpr int patienceWithServer = 5000; // ms
constexpr int patienceAtEnd = 3000; // ms

QVector<int> positionsOf(const Table& table, const QStringList& columns)
{
    QVector<int> positions;
    for (const QString& column : columns) {
        positions << table.columnIndex(column);
        if (positions.last() < 0)
            throw Exception(QStringLiteral("The table \"%1\" has no column \"%2\" for its key.")
                                .arg(table.name(), column));
    }
    return positions;
}

}

struct SharedStorage::Private {
    Private(const PostgresAddress& address, const QString& folder)
        : place(address.place())
        , worker(address, folder)
    {
    }
    ~Private() { finish(); }

    /// Runs an action in the worker's thread; with an Exception of it as text.
    template <typename Action> void runAndWait(Action action);
    template <typename Action> void runSoon(Action action)
    {
        QMetaObject::invokeMethod(&worker, action, Qt::QueuedConnection);
    }
    /// A list of its own, for a listener of one table may attach another one.
    std::vector<QPointer<SharedTable>> followed() const;
    void takeNews(const SharedNews& news);
    void finish();
    qint64 waiting() const { return lastCommit - acknowledged; }

    const QString place;
    SharedWorker worker;
    QThread thread;
    std::vector<std::unique_ptr<SharedTable>> tables;
    qint64 lastCommit = 0;
    qint64 acknowledged = 0;
    NumberStock numbers;
    bool asksForNumbers = false;
    QString problem;
    QTimer patience;
    bool isSlow = false;
    bool isOpen = false;
};

template <typename Action> void SharedStorage::Private::runAndWait(Action action)
{
    QString failure;
    QMetaObject::invokeMethod(
        &worker,
        [&] {
            try {
                action();
            } catch (const Exception& error) {
                failure = error.text();
            }
        },
        Qt::BlockingQueuedConnection);
    if (!failure.isEmpty())
        throw Exception(failure);
}

std::vector<QPointer<SharedTable>> SharedStorage::Private::followed() const
{
    std::vector<QPointer<SharedTable>> list;
    for (const auto& table : tables)
        list.emplace_back(table.get());
    return list;
}

void SharedStorage::Private::takeNews(const SharedNews& news)
{
    acknowledged = std::max(acknowledged, news.acknowledged);
    for (const auto& table : tables)
        table->acknowledge(acknowledged);
    for (const SharedTableNews& part : news.tables) {
        for (const QPointer<SharedTable>& table : followed()) {
            if (table && table->table() && table->table()->name() == part.table)
                table->apply(part);
        }
    }
}

void SharedStorage::Private::finish()
{
    if (!thread.isRunning())
        return;
    runSoon([this, unused = numbers.ranges()] {
        worker.finish(unused);
        QThread::currentThread()->quit();
    });
    if (thread.wait(patienceAtEnd))
        return;
    worker.interrupt();
    thread.wait();
}

SharedStorage::SharedStorage(const PostgresAddress& address, const QString& folder, QObject* parent)
    : TableStorage(parent)
    , d(new Private(address, folder))
{
    qRegisterMetaType<SharedNews>();
    d->worker.moveToThread(&d->thread);
    d->patience.setSingleShot(true);
    d->patience.setInterval(patienceWithServer);
    connect(&d->patience, SIGNAL(timeout()), SLOT(onPatienceOver()));
    connect(&d->worker, SIGNAL(connectionChanged(QString)), SLOT(onConnectionChanged(QString)));
    connect(&d->worker, &SharedWorker::hasNews, this, [this](const SharedNews& news) {
        d->takeNews(news);
        if (d->waiting() == 0)
            d->patience.stop();
        else if (d->patience.isActive())
            d->patience.start();
        d->isSlow = false;
        Q_EMIT statusChanged();
    });
}

SharedStorage::~SharedStorage()
{
    d->worker.disconnect(this);
}

void SharedStorage::open()
{
    if (d->isOpen)
        return;
    d->thread.start();
    d->runAndWait([this] { d->worker.open(); });
    d->isOpen = true;
    QVector<NumberRange> numbers;
    d->runAndWait([&] { numbers = d->worker.takeNumbers(numbersPerTaking); });
    d->numbers.add(numbers);
}

void SharedStorage::attach(Table* table, const QStringList& keyColumns)
{
    const QVector<int> keys = positionsOf(*table, keyColumns);
    if (!d->isOpen)
        throw Exception(QStringLiteral("Database \"%1\": it is not open.").arg(d->place));
    QVector<TableColumnDef> columns;
    for (const TableColumnDef* column : table->fieldDefs())
        columns.append(*column);
    SharedTableNews content;
    d->runAndWait([&] { content = d->worker.attach(table->name(), columns); });
    const auto isOther = [table](const std::unique_ptr<SharedTable>& shared) {
        return !shared->table() || shared->table() == table || shared->table()->name() == table->name();
    };
    d->tables.erase(std::remove_if(d->tables.begin(), d->tables.end(), isOther), d->tables.end());
    d->tables.push_back(std::make_unique<SharedTable>(table, keys));
    d->tables.back()->take(content);
}

bool SharedStorage::hasChanges() const
{
    return std::any_of(
        d->tables.cbegin(), d->tables.cend(), [](const auto& table) { return table->hasChanges(); });
}

void SharedStorage::commit()
{
    if (!d->isOpen)
        throw Exception(QStringLiteral("Database \"%1\": it is not open.").arg(d->place));
    Q_EMIT aboutToCommit();
    SharedCommit commit;
    commit.number = d->lastCommit + 1;
    for (const QPointer<SharedTable>& table : d->followed()) {
        const SharedTableChanges changes = table ? table->commit(commit.number) : SharedTableChanges();
        if (!changes.isEmpty())
            commit.tables.append(changes);
    }
    if (commit.tables.isEmpty())
        return;
    d->lastCommit = commit.number;
    d->worker.add(commit);
    d->runSoon([this] { d->worker.send(); });
    if (!d->patience.isActive())
        d->patience.start();
    Q_EMIT statusChanged();
}

void SharedStorage::rollback()
{
    for (const QPointer<SharedTable>& table : d->followed()) {
        if (table)
            table->rollback();
    }
}

QVector<qint32> SharedStorage::takeNumbers(int count)
{
    const QVector<qint32> numbers = d->numbers.take(count);
    if (d->isOpen && !d->asksForNumbers && (d->numbers.size() < fewNumbers || numbers.size() < count)) {
        d->asksForNumbers = true;
        const qint64 wanted = std::max<qint64>(numbersPerTaking, count);
        d->runSoon([this, wanted] {
            const QVector<NumberRange> taken = d->worker.takeNumbers(wanted);
            QMetaObject::invokeMethod(this, [this, taken] {
                d->asksForNumbers = false;
                d->numbers.add(taken);
            });
        });
    }
    if (numbers.size() < count)
        throw Exception(QStringLiteral("Database \"%1\": there are no numbers for new rows at the moment; "
                                       "the server has been asked for some.")
                            .arg(d->place));
    return numbers;
}

bool SharedStorage::close()
{
    d->isOpen = false;
    d->finish();
    return d->worker.hasSentAll();
}

QString SharedStorage::place() const
{
    return d->place;
}

QString SharedStorage::problem() const
{
    if (d->problem.isEmpty() && d->isSlow)
        return QStringLiteral("Database \"%1\": the server does not answer.").arg(d->place);
    return d->problem;
}

int SharedStorage::waitingCommits() const
{
    return static_cast<int>(d->waiting());
}

void SharedStorage::onConnectionChanged(const QString& problem)
{
    d->problem = problem;
    // What was asked for may have been lost with the connection.
    d->asksForNumbers = false;
    d->isSlow = false;
    Q_EMIT statusChanged();
}

void SharedStorage::onPatienceOver()
{
    d->isSlow = d->waiting() > 0;
    Q_EMIT statusChanged();
}
