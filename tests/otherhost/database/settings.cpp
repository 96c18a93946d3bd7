#include "database/settings.h"

#include <QDataStream>
#include <QFile>
#include <QSaveFile>

namespace {

constexpr QDataStream::Version version = QDataStream::Qt_5_12;

}

Settings::Settings(const QString& fileName)
    : m_fileName(fileName)
{
    QFile file(m_fileName);
    if (!file.open(QIODevice::ReadOnly))
        return;
    QDataStream stream(&file);
    stream.setVersion(version);
    stream >> m_values;
    if (stream.status() != QDataStream::Ok)
        m_values.clear();
}

Settings::~Settings()
{
    QSaveFile file(m_fileName);
    if (!file.open(QIODevice::WriteOnly))
        return;
    QDataStream stream(&file);
    stream.setVersion(version);
    stream << m_values;
    file.commit();
}

QVariant Settings::value(const QString& key, const QVariant& defaultValue) const
{
    return m_values.value(key, defaultValue);
}

void Settings::setValue(const QString& key, const QVariant& value)
{
    m_values.insert(key, value);
}
