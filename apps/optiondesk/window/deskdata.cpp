#include "window/deskdata.h"

#include "window/desktexts.h"
#include "window/serieschoice.h"
#include "window/texts.h"

#include <chain/chainimport.h>
#include <chain/chainreader.h>
#include <chain/chaintables.h>
#include <chain/samplechains.h>
#include <database/exception.h>
#include <database/postgresaddress.h>
#include <database/sharedstorage.h>
#include <database/sqlstorage.h>

#include <QLoggingCategory>
#include <QStandardPaths>

namespace {

Q_LOGGING_CATEGORY(databaseLog, "optiondesk.database", QtWarningMsg)

SqlStorage::Connection connectionTo(const QString& file)
{
    SqlStorage::Connection connection;
    connection.databaseName = file.isEmpty() ? QStringLiteral(":memory:") : file;
    return connection;
}

std::unique_ptr<SqlStorage> openFile(const QString& file)
{
    auto storage = std::make_unique<SqlStorage>(connectionTo(file));
    storage->open();
    const ChainTables tables = ChainTables::make();
    storage->attach(tables.boards);
    storage->attach(tables.securities);
    return storage;
}

std::unique_ptr<SharedStorage> openShared(const QString& address)
{
    const QString folder
        = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QLatin1String("/unsent");
    auto storage = std::make_unique<SharedStorage>(PostgresAddress(address), folder);
    storage->open();
    const ChainTables tables = ChainTables::make();
    storage->attach(tables.boards, ChainTables::boardsKey());
    storage->attach(tables.securities, ChainTables::securitiesKey());
    return storage;
}

SeriesData dataOf(const OptionChain& chain, int position)
{
    return {chain.baseCode, chain.asOf, chain.priceStep, chain.decimals, chain.series.at(position)};
}

SeriesData dataOf(const StoredSeries& stored, const OptionSeries& options, const SeriesFacts& given)
{
    SeriesData data{stored.baseCode, stored.asOf, stored.priceStep, stored.decimals, options};
    if (given.asOf.isValid())
        data.asOf = given.asOf;
    if (given.expiry.isValid() && !data.options.expiry.isValid())
        data.options.expiry = given.expiry;
    return data;
}

SeriesData dataOf(const StoredSeries& stored, const SeriesFacts& given)
{
    return dataOf(stored, ChainStore::options(stored.futureIsinId), given);
}

QVector<QDate> expiriesOf(const OptionChain& chain)
{
    QVector<QDate> expiries;
    for (const OptionSeries& series : chain.series)
        expiries.append(series.expiry);
    return expiries;
}

Exception noSuchExpiry(const QString& what, const QDate& expiry, const QVector<QDate>& expiries)
{
    QStringList known;
    for (const QDate& date : expiries) {
        const QString text = date.isValid() ? date.toString(Qt::ISODate) : DeskTexts::tr("unknown");
        if (!known.contains(text))
            known.append(text);
    }
    return Exception(DeskTexts::tr("%1: no series expires on %2; the expiries are %3")
                         .arg(what, expiry.toString(Qt::ISODate), known.join(QStringLiteral(", "))));
}

// Dates that the data states may contradict each other, those of the user may not.
void checkDates(const SeriesFacts& given, const SeriesData& data)
{
    const QDate expiry = data.options.expiry;
    const bool isGiven = given.asOf.isValid() || given.expiry.isValid();
    if (isGiven && data.asOf.isValid() && expiry.isValid() && expiry <= data.asOf)
        throw Exception(
            DeskTexts::tr("%1: the expiry %2 is not after the date of the prices, %3")
                .arg(data.baseCode, expiry.toString(Qt::ISODate), data.asOf.toString(Qt::ISODate)));
}

int seriesToShow(const SeriesFacts& given, const OptionChain& chain)
{
    if (given.expiry.isValid()) {
        const QVector<QDate> expiries = expiriesOf(chain);
        const int position = SeriesChoice::ofExpiry(expiries, given.expiry);
        if (position < 0)
            throw noSuchExpiry(chain.baseCode, given.expiry, expiries);
        return position;
    }
    const int position = SeriesChoice::nearest(
        chain.series.size(), [&chain](int i) { return dataOf(chain, i); }, given.forward);
    // Of series that cannot be shown the first one tells why.
    return std::max(position, 0);
}

}

int applyFacts(const SeriesFacts& given, OptionChain* chain)
{
    if (chain->series.isEmpty())
        throw Exception(DeskTexts::tr("%1: there are no options").arg(chain->baseCode));
    if (given.asOf.isValid())
        chain->asOf = given.asOf;
    if (given.expiry.isValid() && chain->series.size() == 1 && !chain->series.first().expiry.isValid())
        chain->series.first().expiry = given.expiry;

    const int position = seriesToShow(given, *chain);
    const SeriesData data = dataOf(*chain, position);
    checkDates(given, data);
    valuedSeries(data, given.forward);
    if (given.forward)
        chain->series[position].forward = given.forward;
    return position;
}

DeskData::DeskData(const QString& database)
{
    if (PostgresAddress::isAddress(database)) {
        auto storage = openShared(database);
        m_shared = storage.get();
        m_storage = std::move(storage);
    } else {
        m_storage = openFile(database);
    }
    qCDebug(databaseLog) << "opened" << (database.isEmpty() ? QStringLiteral("memory") : database) << "with"
                         << ChainStore::series().size() << "series";
    QObject::connect(m_storage.get(), &TableStorage::aboutToCommit, [this] { m_quote.takeBack(); });
}

DeskData::~DeskData() = default;

QString DeskData::close()
{
    if (!m_shared || m_shared->close())
        return QString();
    return DeskTexts::tr("%1: changes could not be stored; they will be when the desk is started with this "
                         "database again")
        .arg(m_shared->place());
}

bool DeskData::isEmpty() const
{
    return ChainStore::baseCodes().isEmpty();
}

std::unique_ptr<ChainRows> DeskData::rowsOf(const OptionChain& chain)
{
    return ChainImport(*m_storage).rows(chain);
}

int DeskData::store(ChainRows& rows, int position)
{
    ChainImport(*m_storage).store(rows);
    qCDebug(databaseLog) << "stored" << rows.count() << "rows";
    return rows.futureIsinId(position);
}

int DeskData::import(const OptionChain& chain, int position)
{
    return store(*rowsOf(chain), position);
}

void DeskData::importSamples()
{
    const QStringList files = sampleChainFiles();
    for (const QString& file : files)
        import(readChain(file), 0);
}

int DeskData::firstSeries(const SeriesFacts& given) const
{
    QVector<QDate> expiries;
    const QStringList codes = ChainStore::baseCodes();
    for (const QString& code : codes) {
        const QVector<StoredSeries> stored = ChainStore::series(code);
        if (given.expiry.isValid()) {
            QVector<QDate> ofCode;
            for (const StoredSeries& series : stored)
                ofCode.append(series.expiry);
            const bool takesExpiry = stored.size() == 1 && !stored.first().expiry.isValid();
            const int position = takesExpiry ? 0 : SeriesChoice::ofExpiry(ofCode, given.expiry);
            if (position >= 0)
                return stored.at(position).futureIsinId;
            expiries += ofCode;
            continue;
        }
        const int position = SeriesChoice::nearest(
            stored.size(), [&](int i) { return dataOf(stored.at(i), given); }, given.forward);
        if (position >= 0)
            return stored.at(position).futureIsinId;
    }
    if (given.expiry.isValid())
        throw noSuchExpiry(codes.join(QStringLiteral(", ")), given.expiry, expiries);
    throw Exception(DeskTexts::tr("no stored series has a forward or the prices to take it from"));
}

QVector<StoredSeries> DeskData::series() const
{
    return ChainStore::series();
}

std::map<int, SeriesSnapshot> DeskData::snapshots(
    const QVector<int>& futureIsinIds, const SeriesFacts& given) const
{
    std::map<int, SeriesSnapshot> result;
    for (const auto& [id, series] : ChainStore::wholeSeries(futureIsinIds)) {
        SeriesSnapshot snapshot{dataOf(series.stored, series.options, given), given, m_smileModel};
        const std::optional<decimal> quote = m_quote.own(id);
        snapshot.data.options.forward.reset();
        if (quote && *quote > decimal::zero)
            snapshot.data.options.forward = quote->toDouble();
        result.insert({id, std::move(snapshot)});
    }
    return result;
}

ShownSeries SeriesSnapshot::valued() const
{
    checkDates(given, data);
    return valuedSeries(data, given.forward, smileModel);
}

int DeskData::current(int futureIsinId) const
{
    if (m_series.futureIsinId != futureIsinId || ChainStore::seriesById(futureIsinId))
        return futureIsinId;
    const QVector<StoredSeries> stored = ChainStore::series(m_series.baseCode);
    for (const StoredSeries& series : stored) {
        if (series.expiry == m_series.expiry)
            return series.futureIsinId;
    }
    return futureIsinId;
}

ShownSeries DeskData::valued(int futureIsinId, const SeriesFacts& given) const
{
    const std::map<int, SeriesSnapshot> found = snapshots({futureIsinId}, given);
    if (found.empty())
        throw Exception(DeskTexts::tr("the series is not stored any more"));
    return found.begin()->second.valued();
}

ShownSeries DeskData::show(int futureIsinId, const SeriesFacts& given)
{
    try {
        ShownSeries shown = valued(futureIsinId, given);
        m_quote.lend(futureIsinId, shown.market.forward);
        m_series = ChainStore::seriesById(futureIsinId).value_or(StoredSeries());
        return shown;
    } catch (const Exception&) {
        m_quote.takeBack();
        throw;
    }
}
