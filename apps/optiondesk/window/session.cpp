#include "window/session.h"

#include "window/chainloader.h"

#include <chain/chainreader.h>

namespace {

OptionChain readGivenChain(const CommandLine& options)
{
    return asksForFiles(options) ? readChain(options.chainFile) : loadChain(options.chainFile, nullptr);
}

}

Session openSession(const CommandLine& options)
{
    Session session;
    session.given = {options.forward, options.asOf, options.expiry};
    if (options.chainFile.isEmpty()) {
        session.data = std::make_unique<DeskData>(options.database);
        if (session.data->isEmpty())
            session.data->importSamples();
        session.futureIsinId = session.data->firstSeries(session.given);
        return session;
    }
    OptionChain chain = readGivenChain(options);
    const int position = applyFacts(session.given, &chain);
    session.data = std::make_unique<DeskData>(options.database);
    session.futureIsinId = session.data->import(chain, position);
    return session;
}
