#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

/// Values by keys, in memory and, by and by, in a stream of Qt's in a file.
class Settings {
public:
    /// Takes what a readable file holds.
    explicit Settings(const QString& fileName);
    /// Writes the file; what cannot be written is lost.
    ~Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    QVariant value(const QString& key, const QVariant& defaultValue = QVariant()) const;
    void setValue(const QString& key, const QVariant& value);

private:
    const QString m_fileName;
    QMap<QString, QVariant> m_values;
};
