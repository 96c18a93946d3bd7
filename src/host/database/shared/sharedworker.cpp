#include "database/shared/sharedworker_p.h"

#include "database/exception.h"
#include "database/shared/sharedschema_p.h"
#include "database/table.h"

#include <QRandomGenerator>
#include <QUuid>

#include <algorithm>

SharedWorker::SharedWorker(const PostgresAddress& address, const QString& journalFolder)
    : m_address(address)
    , m_journalFolder(journalFolder)
    , m_writer(QUuid::createUuid().toString(QUuid::WithoutBraces))
    , m_connection(address, this)
    , m_retry(this)
{
    m_retry.setSingleShot(true);
    connect(&m_retry, SIGNAL(timeout()), SLOT(work()));
    connect(&m_connection, SIGNAL(announced()), SLOT(onAnnounced()));
    connect(&m_connection, SIGNAL(lost(QString)), SLOT(onLost(QString)));
}

SharedWorker::~SharedWorker() = default;

void SharedWorker::open()
{
    try {
        openFirst();
    } catch (const Exception& error) {
        m_connection.close();
        throw Exception(m_address.withoutSecrets(error.text()));
    }
}

void SharedWorker::openFirst()
{
    m_connection.open();
    const SqlSession& session = m_connection.session();
    SharedSchema::createIfEmpty(session);
    m_identity = SharedSchema::requireIdentity(session);
    m_connection.listen(SharedSchema::channel);
    m_outbox = std::make_unique<SharedOutbox>(m_journalFolder, m_identity, m_writer);
    sendAbandoned();
}

void SharedWorker::sendAbandoned()
{
    for (const auto& journal : SharedJournal::abandoned(m_journalFolder, m_identity)) {
        const QVector<SharedCommit> commits = journal->commits();
        for (const SharedCommit& commit : commits)
            SharedWriting::apply(m_connection.session(), journal->writer(), commit);
        // As long as a file keeps commits, somebody will send them, and the server must know what it has.
        if (journal->keep({}))
            SharedWriting::forgetWriter(m_connection.session(), journal->writer());
    }
}

SharedTableNews SharedWorker::attach(const QString& table, const QVector<TableColumnDef>& columns)
{
    if (!m_connection.isOpen())
        throw Exception(QStringLiteral("Database \"%1\": there is no connection.").arg(m_address.place()));
    try {
        return readWhole(table, columns);
    } catch (const Exception& error) {
        m_connection.close();
        onLost(error.text());
        throw Exception(m_address.withoutSecrets(error.text()));
    }
}

SharedTableNews SharedWorker::readWhole(const QString& table, const QVector<TableColumnDef>& columns)
{
    const SqlSession& session = m_connection.session();
    KnownTable known{std::make_unique<Table>(table, columns), -1};
    SharedSchema::prepareTable(session, *known.layout);
    SqlTransaction transaction(session);
    SharedReading::begin(session);
    known.revision = SharedReading::progress(session, m_writer).revision;
    SharedTableNews content = SharedReading::news(session, *known.layout, -1);
    session.requireConnection();
    const auto isSame = [&](const KnownTable& other) { return other.layout->name() == table; };
    m_tables.erase(std::remove_if(m_tables.begin(), m_tables.end(), isSame), m_tables.end());
    m_tables.push_back(std::move(known));
    return content;
}

void SharedWorker::send()
{
    if (m_connection.isOpen())
        work();
}

QVector<NumberRange> SharedWorker::takeNumbers(qint64 count)
{
    if (!m_connection.isOpen())
        return {};
    try {
        const QVector<NumberRange> numbers = SharedWriting::takeNumbers(m_connection.session(), count);
        m_connection.session().requireConnection();
        return numbers;
    } catch (const Exception& error) {
        m_connection.close();
        onLost(error.text());
        return {};
    }
}

void SharedWorker::work()
{
    if (m_isFinished)
        return;
    try {
        if (!m_connection.isOpen())
            connectAgain();
        sendAll();
        follow();
        m_failures = 0;
        tell(QString());
    } catch (const Exception& error) {
        m_connection.close();
        onLost(error.text());
    }
}

void SharedWorker::connectAgain()
{
    m_connection.open();
    const SqlSession& session = m_connection.session();
    if (SharedSchema::requireIdentity(session) != m_identity)
        session.fail(QStringLiteral("another one has taken its place"));
    for (const KnownTable& table : m_tables)
        SharedSchema::checkTable(session, *table.layout);
    m_connection.listen(SharedSchema::channel);
}

void SharedWorker::sendAll()
{
    if (m_outbox->isEmpty())
        return;
    while (!m_outbox->isEmpty()) {
        SharedWriting::apply(m_connection.session(), m_writer, m_outbox->first());
        m_outbox->removeFirst();
    }
    m_outbox->write();
}

void SharedWorker::follow()
{
    do
        readNews();
    while (announcesMore());
    // The last answer may have come with the end of the connection.
    m_connection.session().requireConnection();
}

bool SharedWorker::announcesMore()
{
    const QStringList revisions = m_connection.takeAnnouncements();
    return std::any_of(revisions.cbegin(), revisions.cend(),
        [&](const QString& revision) { return revision.toLongLong() > m_revision; });
}

void SharedWorker::readNews()
{
    const SqlSession& session = m_connection.session();
    SharedNews news;
    bool hasContent = false;
    {
        SqlTransaction transaction(session);
        SharedReading::begin(session);
        const SharedProgress progress = SharedReading::progress(session, m_writer);
        news.acknowledged = progress.acknowledged;
        for (KnownTable& table : m_tables) {
            // A database that was restored from a copy has gone back.
            const bool isForgotten
                = table.revision < progress.oldest - 1 || table.revision > progress.revision;
            if (table.revision == progress.revision)
                continue;
            news.tables.append(
                SharedReading::news(session, *table.layout, isForgotten ? -1 : table.revision));
            hasContent = true;
        }
        for (KnownTable& table : m_tables)
            table.revision = progress.revision;
        m_revision = progress.revision;
    }
    if (!hasContent && news.acknowledged == m_acknowledged)
        return;
    m_acknowledged = news.acknowledged;
    Q_EMIT hasNews(news);
}

void SharedWorker::onAnnounced()
{
    if (m_connection.isOpen() && announcesMore())
        work();
}

void SharedWorker::onLost(const QString& reason)
{
    if (m_isFinished)
        return;
    constexpr int shortestPause = 250; // ms
    constexpr int mostDoublings = 4;
    const int pause = shortestPause << std::min(m_failures, mostDoublings);
    ++m_failures;
    // Desks that have lost the same server at the same time do not come back at the same time.
    m_retry.start(pause + int(QRandomGenerator::global()->bounded(pause / 2)));
    tell(reason);
}

void SharedWorker::tell(const QString& problem)
{
    const QString told = m_address.withoutSecrets(problem);
    if (told == m_problem)
        return;
    m_problem = told;
    Q_EMIT connectionChanged(told);
}

void SharedWorker::finish(const QVector<NumberRange>& unusedNumbers)
{
    m_isFinished = true;
    m_retry.stop();
    if (m_outbox)
        m_outbox->write();
    if (!m_connection.isOpen())
        return;
    try {
        sendAll();
        for (const NumberRange& numbers : unusedNumbers)
            SharedWriting::giveBack(m_connection.session(), numbers);
        if (m_outbox->write())
            SharedWriting::forgetWriter(m_connection.session(), m_writer);
    } catch (const Exception&) {
        // What was not sent is in the journal.
    }
    m_connection.close();
}
