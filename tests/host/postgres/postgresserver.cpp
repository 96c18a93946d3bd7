#include "postgresserver.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QUrl>

#include <csignal>
#include <pwd.h>
#include <unistd.h>

namespace {

constexpr int patience = 120000; // ms

/// The newest installed server's programs; empty if there is none.
QString programFolder()
{
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    QString folder;
    int newest = 0;
    const QStringList names = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& name : names) {
        const QString programs = versions.filePath(name + QLatin1String("/bin"));
        if (name.toInt() > newest && QFile::exists(programs + QLatin1String("/initdb"))) {
            newest = name.toInt();
            folder = programs;
        }
    }
    return folder;
}

const passwd* serverUser()
{
    return getpwnam("postgres");
}

/// Everything of this end goes with the process; the server does not run as root.
QStringList prefix()
{
    QStringList words{QStringLiteral("setpriv"), QStringLiteral("--pdeathsig"), QStringLiteral("INT")};
    if (geteuid() == 0)
        words << QStringLiteral("--reuid") << QStringLiteral("postgres") << QStringLiteral("--regid")
              << QStringLiteral("postgres") << QStringLiteral("--init-groups");
    return words << QStringLiteral("--");
}

void require(bool isGood, const char* what, const QByteArray& output = QByteArray())
{
    if (!isGood)
        qFatal("the PostgreSQL server: %s\n%s", what, output.constData());
}

QString encoded(const QString& text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

}

QString PostgresServer::obstacle()
{
    if (programFolder().isEmpty())
        return QStringLiteral("no PostgreSQL server is installed");
    if (geteuid() == 0 && !serverUser())
        return QStringLiteral("there is no user postgres to run the server as");
    return QString();
}

void PostgresServer::allowSlowConnections()
{
    qputenv("PGCONNECT_TIMEOUT", "60");
}

PostgresServer::PostgresServer()
{
    require(m_folder.isValid(), "no temporary folder");
    if (geteuid() == 0) {
        const QByteArray path = QFile::encodeName(m_folder.path());
        require(
            chown(path.constData(), serverUser()->pw_uid, serverUser()->pw_gid) == 0, "no folder of its own");
    }
    run(QStringLiteral("initdb"),
        {QStringLiteral("-D"), folder() + QLatin1String("/data"), QStringLiteral("-U"),
            QStringLiteral("admin"), QStringLiteral("-E"), QStringLiteral("UTF8"),
            QStringLiteral("--locale=C"), QStringLiteral("--auth=trust"), QStringLiteral("--no-sync")});
    QFile access(folder() + QLatin1String("/data/pg_hba.conf"));
    require(access.open(QIODevice::WriteOnly), "no access file");
    access.write("local all admin trust\nlocal all all scram-sha-256\n");
    access.close();
    start();
    runSql(QStringLiteral("postgres"),
        QStringLiteral("CREATE ROLE %1 LOGIN PASSWORD '%2'")
            .arg(traderName(), password().replace(QLatin1Char('\''), QLatin1String("''"))));
}

PostgresServer::~PostgresServer()
{
    if (isRunning())
        kill();
}

QProcess* PostgresServer::newProcess() const
{
    auto* const process = new QProcess;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* const name :
        {"PGPASSWORD", "PGHOST", "PGUSER", "PGSERVICE", "PGDATA", "PGPORT", "PGCONNECT_TIMEOUT"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process->setProcessEnvironment(environment);
    process->setProcessChannelMode(QProcess::MergedChannels);
    process->setWorkingDirectory(folder());
    return process;
}

QByteArray PostgresServer::run(const QString& program, const QStringList& arguments) const
{
    const std::unique_ptr<QProcess> process(newProcess());
    QStringList words = prefix() << programFolder() + QLatin1Char('/') + program;
    words += arguments;
    process->start(words.takeFirst(), words);
    const bool isDone = process->waitForFinished(patience);
    const QByteArray output = process->readAll();
    require(isDone && process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0,
        qPrintable(program + QLatin1String(" failed")), output);
    return output;
}

void PostgresServer::start()
{
    require(!isRunning(), "it runs already");
    QElapsedTimer timer;
    timer.start();
    // The last processes of a server that was killed may be on their way out yet.
    while (!startsUp()) {
        const bool isEarly = m_log.contains("is still in use") || m_log.contains("lock file");
        require(isEarly && timer.elapsed() < patience, "it does not start", m_log);
    }
}

bool PostgresServer::startsUp()
{
    m_process.reset(newProcess());
    QStringList words = prefix() << programFolder() + QLatin1String("/postgres");
    words << QStringLiteral("-D") << folder() + QLatin1String("/data") << QStringLiteral("-k") << folder();
    for (const char* const setting : {"listen_addresses=", "fsync=off", "shared_buffers=16MB",
             "max_connections=40", "log_min_messages=warning", "autovacuum=off"})
        words << QStringLiteral("-c") << QString::fromLatin1(setting);
    m_process->start(words.takeFirst(), words);
    m_log.clear();
    const QByteArray isReady = "ready to accept connections";
    while (!m_log.contains(isReady) && m_process->waitForReadyRead(patience))
        m_log += m_process->readAll();
    if (m_log.contains(isReady))
        return true;
    m_process->waitForFinished(patience);
    m_log += m_process->readAll();
    m_process.reset();
    return false;
}

QByteArray PostgresServer::log()
{
    if (m_process)
        m_log += m_process->readAll();
    return m_log;
}

QList<qint64> PostgresServer::processes() const
{
    QList<qint64> ids;
    if (!m_process)
        return ids;
    const qint64 id = m_process->processId();
    ids << id;
    QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(id));
    require(children.open(QIODevice::ReadOnly), "its processes cannot be listed");
    const QList<QByteArray> words = children.readAll().simplified().split(' ');
    for (const QByteArray& word : words) {
        if (!word.isEmpty())
            ids << word.toLongLong();
    }
    return ids;
}

void PostgresServer::signalAll(int signal) const
{
    const QList<qint64> ids = processes();
    for (const qint64 id : ids)
        ::kill(static_cast<pid_t>(id), signal);
}

void PostgresServer::kill()
{
    require(isRunning(), "it does not run");
    // With the first process stopped no others come.
    ::kill(static_cast<pid_t>(m_process->processId()), SIGSTOP);
    signalAll(SIGKILL);
    require(m_process->waitForFinished(patience), "it cannot be killed");
    m_process.reset();
}

void PostgresServer::stop()
{
    require(isRunning(), "it does not run");
    ::kill(static_cast<pid_t>(m_process->processId()), SIGQUIT);
    require(m_process->waitForFinished(patience), "it cannot be stopped");
    m_process.reset();
}

void PostgresServer::freeze()
{
    signalAll(SIGSTOP);
}

void PostgresServer::thaw()
{
    signalAll(SIGCONT);
}

void PostgresServer::createDatabase(const QString& name)
{
    runSql(QStringLiteral("postgres"), QStringLiteral("CREATE DATABASE %1 OWNER %2").arg(name, traderName()));
}

QStringList PostgresServer::runSql(const QString& database, const QString& statement) const
{
    const QByteArray output = run(QStringLiteral("psql"),
        {QStringLiteral("-X"), QStringLiteral("-At"), QStringLiteral("-q"), QStringLiteral("-v"),
            QStringLiteral("ON_ERROR_STOP=1"), QStringLiteral("-h"), folder(), QStringLiteral("-U"),
            QStringLiteral("admin"), QStringLiteral("-d"), database, QStringLiteral("-c"), statement});
    return QString::fromUtf8(output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString PostgresServer::address(const QString& database) const
{
    return address(database, traderName(), password());
}

QString PostgresServer::address(const QString& database, const QString& user, const QString& secret) const
{
    QString result = QStringLiteral("postgresql://") + encoded(user);
    if (!secret.isEmpty())
        result += QLatin1Char(':') + encoded(secret);
    return result + QLatin1Char('@') + encoded(folder()) + QLatin1Char('/') + encoded(database);
}
