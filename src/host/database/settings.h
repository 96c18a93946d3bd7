#pragma once

#include <QString>
#include <QVariant>

#include <memory>

class QSettings;

/// The host's settings, kept across restarts in one file.
///
/// The file is replaced as a whole whenever it is written, so a crash in the middle leaves the old one.
class Settings {
public:
    /// The user's settings of the running application.
    Settings();
    /// The settings in a file of its own (INI format), made at the first write.
    explicit Settings(const QString& fileName);
    ~Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    QVariant value(const QString& key, const QVariant& defaultValue = QVariant()) const;
    void setValue(const QString& key, const QVariant& value);
    void remove(const QString& key);

    /// Writes what is not written yet; false, and nothing is lost in memory, if the file cannot be written
    /// or what stands there is not a settings file.
    bool sync();
    QString fileName() const;

private:
    std::unique_ptr<QSettings> m_settings;
};
