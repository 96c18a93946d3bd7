#include "chain/samplechains.h"

#include <QDir>

// The macro must stand outside of any namespace; a static library's resources are not registered by
// themselves.
static void registerSamples()
{
    Q_INIT_RESOURCE(samples);
}

QStringList sampleChainFiles()
{
    registerSamples();
    const QDir folder(QStringLiteral(":/samples"));
    QStringList files;
    const QStringList names = folder.entryList({QStringLiteral("*.csv")}, QDir::Files, QDir::Name);
    for (const QString& name : names)
        files.append(folder.filePath(name));
    return files;
}
