#include "window/chainfiles.h"

#include "window/desksession.h"

#include <database/settings.h>

#include <QFileInfo>

QStringList ChainFiles::ofLastSession(const Settings* settings)
{
    return settings ? settings->value(DeskSession::pathOf(key())).toStringList() : QStringList();
}

ChainFiles::ChainFiles(const QStringList& names, QObject* parent)
    : QObject(parent)
{
    for (const QString& name : names)
        add(name);
}

void ChainFiles::add(const QString& fileName)
{
    // All of them are read before the window is there.
    constexpr int most = 20;
    const QString path = QFileInfo(fileName).absoluteFilePath();
    m_names.removeAll(path);
    m_names.append(path);
    if (m_names.size() > most)
        m_names.removeFirst();
}
