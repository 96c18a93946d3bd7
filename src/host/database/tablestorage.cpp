#include "database/tablestorage.h"

#include "database/exception.h"

TableStorage::TableStorage(QObject* parent)
    : QObject(parent)
{
}

TableStorage::~TableStorage() = default;

bool TableStorage::isShared() const
{
    return false;
}

QVector<qint32> TableStorage::takeNumbers(int count)
{
    throw Exception(QStringLiteral("There are no %1 numbers: the data is not shared.").arg(count));
}
