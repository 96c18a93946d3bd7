#include "desk/window/desktest.h"
#include "memorystream.h"
#include "support/testmain.h"

#include <chain/chaintables.h>
#include <database/exception.h>
#include <database/table.h>
#include <directory/securitydirectory.h>
#include <replay/quotereplay.h>
#include <window/deskdata.h>

#include <QTemporaryDir>

/// A replay beside the desk's own data: the forward lent to the shown future, imports, and the database.
class tst_replaysession : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storesNothingOfAReplay_data();
    void storesNothingOfAReplay();
    void goesOnAfterAFailedImport();
};

namespace {

QString field(int futureIsinId, const char* name)
{
    const int column = ChainTables::find().securities->columnIndex(QString::fromLatin1(name));
    return SecurityDirectory::i()->recordByIsinId(futureIsinId, chainBoardId).field(column).toString();
}

// One quote of the shown future, due at once.
RecordedQuotes futureAt(const char* last)
{
    RecordedQuote quote;
    quote.setPrice(QuoteField::Last, decimal::fromString(QString::fromLatin1(last)));
    return {{QStringLiteral("FUT")}, {quote}};
}

std::unique_ptr<QuoteReplay> replayed(const RecordedQuotes& recording, int futureIsinId)
{
    auto replay = std::make_unique<QuoteReplay>(ChainTables::find().securities,
        std::make_unique<MemoryStream>(recording), futureIsinId, std::nullopt);
    replay->start();
    replay->tick();
    return replay;
}

OptionChain chainStating(const std::optional<double>& forward)
{
    OptionChain chain = DeskTest::chain();
    chain.series.first().forward = forward;
    return chain;
}

}

void tst_replaysession::storesNothingOfAReplay_data()
{
    QTest::addColumn<bool>("stated");
    QTest::addColumn<bool>("importing");
    QTest::newRow("parity") << false << false;
    QTest::newRow("stated") << true << false;
    QTest::newRow("parity, import in the replay") << false << true;
    QTest::newRow("stated, import in the replay") << true << true;
}

void tst_replaysession::storesNothingOfAReplay()
{
    QFETCH(bool, stated);
    QFETCH(bool, importing);
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("desk.sqlite"));
    int future = 0;
    {
        DeskData data(file);
        future = data.import(chainStating(stated ? std::optional<double>(99.25) : std::nullopt), 0);
        data.show(future, SeriesFacts{98.5, QDate(), QDate()});
        QCOMPARE(field(future, "cur_kotir_real"), QStringLiteral("98.5"));
        const auto replay = replayed(futureAt("101.5"), future);
        QCOMPARE(field(future, "cur_kotir_real"), QStringLiteral("101.5"));
        if (importing) {
            data.import(DeskTest::chain(QStringLiteral("OTHER")), 0);
            QCoreApplication::sendPostedEvents();
            QCOMPARE(field(future, "last"), QStringLiteral("101.5"));
            QCOMPARE(field(future, "cur_kotir_real"), QStringLiteral("101.5"));
        }
    }
    const DeskData data(file);
    QCOMPARE(data.series().size(), importing ? 2 : 1);
    QCOMPARE(field(future, "last"), QString());
    QCOMPARE(field(future, "cur_kotir_real"), stated ? QStringLiteral("99.25") : QString());
}

void tst_replaysession::goesOnAfterAFailedImport()
{
    DeskData data{QString()};
    const int future = data.import(chainStating(99.25), 0);
    data.show(future, SeriesFacts());
    const auto replay = replayed(futureAt("101.5"), future);
    OptionChain empty = DeskTest::chain(QStringLiteral("OTHER"));
    empty.series.first().quotes.clear();
    QVERIFY_EXCEPTION_THROWN(data.import(empty, 0), Exception);
    data.show(future, SeriesFacts());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(field(future, "last"), QStringLiteral("101.5"));
}

PLOT2D_TEST_MAIN(tst_replaysession)
#include "tst_replaysession.moc"
