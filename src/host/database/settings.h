#pragma once

#include <QString>
#include <QVariant>

#include <memory>

/// The host's settings, kept across restarts in one file.
///
/// A change is written by sync(), by the next round of the event loop and by the destructor, with groups by
/// that of the last one. The file is replaced as a whole then, so a crash in the middle leaves the old one; a
/// file that is no settings file is never replaced. A key is a path of names with '/' between them, an empty
/// one holds nothing.
class Settings {
public:
    /// The user's settings of the running application.
    Settings();
    /// The settings in a file of its own (INI format), made at the first write.
    explicit Settings(const QString& fileName);
    /// A group of other settings: its keys are theirs below this path, and what is changed here is changed
    /// there. For those who know one key only and serve several purposes.
    Settings(const Settings& whole, const QString& group);
    ~Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    /// The value of a key, also one that is not written yet; the default where there is none.
    QVariant value(const QString& key, const QVariant& defaultValue = QVariant()) const;
    /// Changes the value of a key, to be written as said above.
    void setValue(const QString& key, const QVariant& value);
    /// Removes the value and everything below the key.
    void remove(const QString& key);

    /// Writes what is not written yet; false, and nothing is lost in memory, if the file cannot be written,
    /// another program keeps it locked for five seconds or what stands there is not a settings file.
    bool sync();
    /// The file, with its path.
    QString fileName() const;

    /// Whether something that is no settings file stands there. False also where that cannot be found out:
    /// the file may not be read, or no room is left for the temporary copy that is tried.
    static bool isBroken(const QString& fileName);

private:
    struct Private;

    QString pathOf(const QString& key) const;

    std::shared_ptr<Private> d;
    QString m_group;
};
