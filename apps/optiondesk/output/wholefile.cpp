#include "output/wholefile.h"

#include <database/exception.h>

#include <QSaveFile>

void WholeFile::write(const QString& fileName, const QByteArray& content)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        throw Exception(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
}
