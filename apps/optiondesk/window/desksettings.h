#pragma once

#include <QString>

#include <memory>

class Settings;

/// The desk's settings: the host's, in a file of the desk's own.
class DeskSettings {
public:
    /// The user's file, in the platform's folder for the settings of the running application.
    static QString userFileName();

    /// A file that is not there is made when something is kept; one that is no settings file stays as it is.
    explicit DeskSettings(const QString& fileName);
    ~DeskSettings();
    DeskSettings(const DeskSettings&) = delete;
    DeskSettings& operator=(const DeskSettings&) = delete;

    /// Null where the file is no settings file.
    Settings* host() const { return m_host.get(); }

    /// Why there are no settings, naming the file, in one line; empty if there are.
    QString problem() const { return m_problem; }

    /// Writes what is not written yet, as a whole or not at all: false then.
    bool save();

private:
    std::unique_ptr<Settings> m_host;
    QString m_problem;
};
