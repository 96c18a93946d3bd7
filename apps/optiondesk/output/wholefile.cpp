#include "output/wholefile.h"

#include "output/outputtexts.h"

#include <database/exception.h>

#include <QFileInfo>
#include <QSaveFile>

void WholeFile::write(const QString& fileName, const QByteArray& content)
{
    // A device or a pipe would be replaced by a file.
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile())
        throw Exception(OutputTexts::tr("%1: it is no file").arg(fileName));
    QSaveFile file(fileName);
    // What only the closing of the file writes may fail unnoticed, and then replace the old one.
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush()
        || !file.commit())
        throw Exception(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
}
