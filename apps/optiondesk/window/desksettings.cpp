#include "window/desksettings.h"

#include <database/settings.h>

#include <QDir>
#include <QStandardPaths>

QString DeskSettings::userFileName()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
    return folder.filePath(QStringLiteral("settings.ini"));
}

DeskSettings::DeskSettings(const QString& fileName)
    : m_host(std::make_unique<Settings>(fileName))
{
    if (m_host->sync())
        return;
    m_problem = QStringLiteral("%1: this is no settings file; it is left as it is, and nothing is kept")
                    .arg(fileName);
    m_host.reset();
}

DeskSettings::~DeskSettings() = default;

bool DeskSettings::save()
{
    return !m_host || m_host->sync();
}
