#include "position/positionfile.h"

#include "position/legtexts.h"
#include "position/positionjson.h"

#include <database/filelock.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <iterator>

namespace Position {

namespace {

// For another desk to write, in milliseconds.
constexpr int patience = 5000;

// A name beside the file's that nothing has yet.
QString nameAside(const QString& fileName)
{
    QString name = fileName + QStringLiteral(".broken");
    for (int i = 2; QFileInfo::exists(name); ++i)
        name = QStringLiteral("%1.broken%2").arg(fileName).arg(i);
    return name;
}

std::optional<PositionJson::Positions> readFile(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return PositionJson::read(file.readAll());
}

QVector<Leg> validOf(const QVector<Leg>& legs)
{
    QVector<Leg> result;
    std::copy_if(legs.begin(), legs.end(), std::back_inserter(result), isValid);
    return result;
}

}

QString PositionFile::userFileName()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
    return folder.filePath(QStringLiteral("positions.json"));
}

PositionFile::PositionFile(const QString& fileName)
    : m_fileName(fileName)
{
    QFile file(fileName);
    if (!file.exists())
        return;
    if (!file.open(QIODevice::ReadOnly)) {
        m_problem = LegTexts::tr("%1: %2; positions are not kept").arg(fileName, file.errorString());
        m_fileName.clear();
        return;
    }
    if (const auto positions = PositionJson::read(file.readAll())) {
        m_legs = *positions;
        return;
    }
    file.close();
    const QString aside = nameAside(fileName);
    if (QFile::rename(fileName, aside)) {
        m_problem = LegTexts::tr("%1: this is no file of positions; it is kept as %2").arg(fileName, aside);
        return;
    }
    m_problem
        = LegTexts::tr("%1: this is no file of positions; it is left as it is, and positions are not kept")
              .arg(fileName);
    m_fileName.clear();
}

bool PositionFile::setLegs(const QString& baseCode, const QVector<Leg>& legs)
{
    const QVector<Leg> valid = validOf(legs);
    if (m_isWritten && m_legs.value(baseCode) == valid)
        return true;
    if (m_fileName.isEmpty()) {
        m_legs[baseCode] = valid;
        return true;
    }
    QDir().mkpath(QFileInfo(m_fileName).absolutePath());
    FileLock lock(m_fileName + QStringLiteral(".lock"));
    const bool isOurs = lock.tryLock(patience);
    if (isOurs) {
        if (const auto others = readFile(m_fileName))
            m_legs = *others;
    }
    m_legs[baseCode] = valid;
    m_isWritten = isOurs && write();
    return m_isWritten;
}

bool PositionFile::write()
{
    const QByteArray text = PositionJson::written(m_legs);
    QSaveFile file(m_fileName);
    // What only the closing of the file writes may fail unnoticed, and then replace the old one.
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush()
        && file.commit();
}

}
