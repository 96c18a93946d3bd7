#include "window/chainimporter.h"

#include "window/deskdata.h"

#include <chain/chainerror.h>
#include <chain/chainreader.h>
#include <database/exception.h>
#include <work/work.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>

namespace {

// The share of the parts in all that there is to do, in percent.
constexpr int readPercent = 60;
constexpr int madePercent = 90;

// After a turn of this length the event loop goes on.
constexpr int turnMilliseconds = 10;
constexpr int rowsBetweenLooks = 100;

}

/// What the thread of one import and its importer share. The thread writes chain, position and error before
/// it is done; the importer reads them after it has been told so, by an event.
struct ChainImporter::Job {
    QString fileName;
    std::atomic<bool> isCancelled{false};
    std::atomic<int> percent{0};
    OptionChain chain;
    int position = 0;
    /// Empty where all went well.
    QString error;

    void read(const std::function<void()>& progressed);
};

void ChainImporter::Job::read(const std::function<void()>& progressed)
{
    const auto watch = [&](qint64 done, qint64 total) {
        const int now = total > 0 ? int(done * readPercent / total) : 0;
        if (percent.exchange(now) != now)
            progressed();
        return !isCancelled;
    };
    try {
        chain = readChain(fileName, watch);
        if (!isCancelled)
            position = applyFacts(SeriesFacts(), &chain);
    } catch (const Exception& exception) {
        error = exception.text();
    } catch (const std::exception& exception) {
        error = QString::fromLocal8Bit(exception.what());
    }
}

ChainImporter::ChainImporter(const Store& store, QObject* parent)
    : QObject(parent)
    , m_store(store)
    , m_work(new Work(this))
{
    m_timer.setSingleShot(true);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(makeRows()));
    connect(m_work, SIGNAL(cancelWanted()), this, SLOT(cancel()));
}

ChainImporter::~ChainImporter()
{
    if (m_job)
        m_job->isCancelled = true;
    const QList<QThread*> threads = findChildren<QThread*>();
    for (QThread* const thread : threads)
        thread->wait();
}

bool ChainImporter::start(const QString& fileName)
{
    if (isRunning())
        return false;
    m_fileName = fileName;
    m_job = std::make_shared<Job>();
    m_job->fileName = fileName;
    const std::shared_ptr<Job> job = m_job;
    // The importer waits for its threads before it goes, so it is there whenever one of them calls.
    QThread* const thread = QThread::create([this, job] {
        const auto tell
            = [this, job](auto function) { QMetaObject::invokeMethod(this, function, Qt::QueuedConnection); };
        job->read([&] {
            tell([this, job] {
                if (job == m_job)
                    m_work->reach(job->percent);
            });
        });
        tell([this, job] { onRead(job); });
    });
    thread->setParent(this);
    connect(thread, SIGNAL(finished()), thread, SLOT(deleteLater()));
    m_work->begin(tr("Importing %1").arg(QFileInfo(fileName).fileName()));
    m_work->reach(0);
    thread->start();
    return true;
}

void ChainImporter::cancel()
{
    if (!isRunning())
        return;
    m_job->isCancelled = true;
    end();
    Q_EMIT cancelled();
}

void ChainImporter::end()
{
    m_timer.stop();
    m_rows.reset();
    m_job.reset();
    m_work->end();
}

void ChainImporter::fail(const QString& reason)
{
    end();
    Q_EMIT failed(reason);
}

void ChainImporter::onRead(const std::shared_ptr<Job>& job)
{
    if (job != m_job)
        return;
    if (!job->error.isEmpty()) {
        fail(job->error);
        return;
    }
    m_work->reach(readPercent);
    m_timer.start(0);
}

void ChainImporter::makeRows()
{
    QElapsedTimer clock;
    clock.start();
    bool isDone = false;
    try {
        if (!m_rows)
            m_rows = m_store.rows(m_job->chain);
        while (!isDone && clock.elapsed() < turnMilliseconds)
            isDone = m_rows->makeSome(rowsBetweenLooks);
    } catch (const Exception& error) {
        fail(error.text());
        return;
    }
    const std::shared_ptr<Job> job = m_job;
    m_work->reach(readPercent
        + int(qint64(madePercent - readPercent) * m_rows->madeCount() / std::max(1, m_rows->count())));
    // Whoever heard of the progress may have cancelled.
    if (job != m_job)
        return;
    if (isDone)
        storeRows();
    else
        m_timer.start(0);
}

void ChainImporter::storeRows()
{
    const std::unique_ptr<ChainRows> rows = std::move(m_rows);
    try {
        m_store.store(*rows, m_job->position);
    } catch (const Exception& error) {
        fail(error.text());
        return;
    }
    m_work->reach(100);
    end();
    Q_EMIT imported(m_fileName);
}
