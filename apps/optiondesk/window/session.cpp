#include "window/session.h"

#include "window/chainloader.h"
#include "window/texts.h"

#include <chain/chainreader.h>
#include <chain/samplechains.h>
#include <database/exception.h>

namespace {

OptionChain readGivenChain(const CommandLine& options)
{
    return asksForFiles(options) ? readChain(options.chainFile) : loadChain(options.chainFile, nullptr);
}

void importAgain(const QString& file, Session* session)
{
    try {
        OptionChain chain = readChain(file);
        const int position = applyFacts(SeriesFacts(), &chain);
        session->data->import(chain, position);
        session->chainFiles.append(file);
    } catch (const Exception& error) {
        session->problems.append(Texts::oneLine(error.text()));
    }
}

}

Session openSession(const CommandLine& options, const QStringList& lastFiles)
{
    Session session;
    session.given = {options.forward, options.asOf, options.expiry};
    if (options.chainFile.isEmpty()) {
        session.data = std::make_unique<DeskData>(options.database);
        const QStringList files = options.database.isEmpty() ? lastFiles : QStringList();
        for (const QString& file : files)
            importAgain(file, &session);
        if (session.data->isEmpty()) {
            session.data->importSamples();
            if (options.database.isEmpty())
                session.chainFiles = sampleChainFiles();
        }
        session.futureIsinId = session.data->firstSeries(session.given);
        return session;
    }
    OptionChain chain = readGivenChain(options);
    const int position = applyFacts(session.given, &chain);
    session.data = std::make_unique<DeskData>(options.database);
    session.futureIsinId = session.data->import(chain, position);
    session.chainFiles.append(options.chainFile);
    return session;
}
