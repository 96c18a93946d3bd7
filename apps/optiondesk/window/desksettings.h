#pragma once

#include <QString>

#include <memory>

class Settings;

/// The desk's settings: the host's, in a file of the desk's own.
class DeskSettings {
public:
    /// The user's file, in the platform's folder for the settings of the running application.
    static QString userFileName();

    /// What becomes of a file that is no settings file.
    enum class Broken {
        /// It gets another name, and the settings begin anew.
        SetAside,
        /// It stays, and there are no settings.
        Leave
    };

    /// A file that is not there is made when something is kept.
    explicit DeskSettings(const QString& fileName, Broken broken = Broken::SetAside);
    ~DeskSettings();
    DeskSettings(const DeskSettings&) = delete;
    DeskSettings& operator=(const DeskSettings&) = delete;

    /// Null where the file is no settings file and has not been set aside.
    Settings* host() const { return m_host.get(); }

    /// What became of a file that is no settings file, in one line with its name; empty otherwise.
    QString problem() const { return m_problem; }

    /// Writes what is not written yet, as a whole or not at all: false then.
    bool save();

private:
    bool open(const QString& fileName);
    void replace(const QString& fileName, Broken broken);

    std::unique_ptr<Settings> m_host;
    QString m_problem;
};
