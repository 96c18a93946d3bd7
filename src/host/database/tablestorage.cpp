#include "database/tablestorage.h"

TableStorage::TableStorage(QObject* parent)
    : QObject(parent)
{
}

TableStorage::~TableStorage() = default;

QVector<qint32> TableStorage::takeNumbers(int count)
{
    Q_UNUSED(count)
    return {};
}
