#include "window/desksettings.h"

#include "window/desktexts.h"
#include "window/settingsfile.h"

#include <database/filelock.h>
#include <database/settings.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

QString DeskSettings::userFileName()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
    return folder.filePath(QStringLiteral("settings.ini"));
}

DeskSettings::DeskSettings(const QString& fileName, Broken broken)
{
    if (open(fileName))
        return;
    // Another desk may be about to set the same file aside, and then to write a new one.
    FileLock lock(fileName + QStringLiteral(".aside"));
    constexpr int patience = 5000;
    const bool isOurs = broken == Broken::SetAside && lock.tryLock(patience);
    if (isOurs && open(fileName))
        return;
    replace(fileName, isOurs ? Broken::SetAside : Broken::Leave);
}

DeskSettings::~DeskSettings() = default;

bool DeskSettings::open(const QString& fileName)
{
    if (SettingsFile::isDangerous(fileName))
        return false;
    m_host = std::make_unique<Settings>(fileName);
    const bool isGood = m_host->sync();
    if (!isGood)
        m_host.reset();
    return isGood;
}

void DeskSettings::replace(const QString& fileName, Broken broken)
{
    // A good file that only cannot be tried now, as on a full disk, must not get lost.
    const bool isBroken = SettingsFile::isDangerous(fileName) || Settings::isBroken(fileName);
    const bool canBeRead = QFileInfo(fileName).isFile() && QFile(fileName).open(QIODevice::ReadOnly);
    const QString kept
        = isBroken && canBeRead && broken == Broken::SetAside ? SettingsFile::setAside(fileName) : QString();
    if (!isBroken)
        m_problem
            = DeskTexts::tr("%1: the settings cannot be read or written now; nothing is kept").arg(fileName);
    else if (!kept.isEmpty() && open(fileName))
        m_problem
            = DeskTexts::tr("%1: this is no settings file; it is kept as %2, and the settings begin anew")
                  .arg(fileName, QFileInfo(kept).fileName());
    else
        m_problem = DeskTexts::tr("%1: this is no settings file; it is left as it is, and nothing is kept")
                        .arg(fileName);
}

bool DeskSettings::save()
{
    return !m_host || m_host->sync();
}
