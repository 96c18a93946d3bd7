#include "desk/faults/writtenfiles.h"

#include "desk/faults/versions.h"
#include "desk/window/desktest.h"

#include <position/positionfile.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/desksettings.h>
#include <window/deskwindow.h>

#include <chain/chainstore.h>
#include <database/exception.h>
#include <database/settings.h>

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

namespace {

QString reason(const std::function<void()>& act)
{
    try {
        act();
    } catch (const Exception& error) {
        return error.text();
    }
    return QString();
}

constexpr int manyValues = 130;
constexpr int manyLegs = 60;

QString textOf(int version, int i)
{
    return QStringLiteral("value %1 of version %2 ").arg(i).arg(version) + QString(20, QLatin1Char('x'));
}

}

QByteArray WrittenFiles::content(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

WrittenFiles::Kind WrittenFiles::settings()
{
    const auto write = [](const QString& fileName, int version) {
        DeskSettings desk(fileName);
        if (!desk.host())
            return desk.problem();
        for (int i = 0; i < manyValues; ++i)
            desk.host()->setValue(QStringLiteral("group/key%1").arg(i), textOf(version, i));
        return desk.save() ? QString() : QStringLiteral("%1: not written").arg(fileName);
    };
    const auto read = [](const QString& fileName) {
        if (!QFile::exists(fileName))
            return 0;
        // Of a file by its own name QSettings would tell also what it has failed to write.
        const QTemporaryDir folder;
        const QString copy = folder.filePath(QStringLiteral("copy.ini"));
        if (!QFile::copy(fileName, copy))
            return -1;
        const DeskSettings desk(copy, DeskSettings::Broken::Leave);
        for (const int version : {1, 2}) {
            int same = 0;
            for (int i = 0; desk.host() && i < manyValues; ++i)
                same
                    += desk.host()->value(QStringLiteral("group/key%1").arg(i)) == textOf(version, i) ? 1 : 0;
            if (same == manyValues)
                return version;
        }
        return -1;
    };
    return {"settings", write, read};
}

QVector<Position::Leg> WrittenFiles::legsOf(int version)
{
    QVector<Position::Leg> legs;
    for (int i = 0; i < manyLegs; ++i)
        legs.append({Position::LegKind::Call, QDate(2024, 4, 2), version, 50.0 + i, 1.0});
    return legs;
}

WrittenFiles::Kind WrittenFiles::positions()
{
    const QString code = QStringLiteral("TEST");
    const auto write = [code](const QString& fileName, int version) {
        Position::PositionFile file(fileName);
        if (!file.problem().isEmpty())
            return file.problem();
        const bool isKept = file.setLegs(code, legsOf(version));
        return isKept ? QString() : QStringLiteral("%1: not written").arg(fileName);
    };
    const auto read = [code](const QString& fileName) {
        if (!QFile::exists(fileName))
            return 0;
        const Position::PositionFile file(fileName);
        for (const int version : {1, 2}) {
            if (file.problem().isEmpty() && file.legs(code) == legsOf(version))
                return version;
        }
        return -1;
    };
    return {"positions", write, read};
}

OptionChain WrittenFiles::chainOf(int version)
{
    OptionChain chain = DeskTest::quotedChain();
    Versions::mark(chain, version);
    for (int month = 5; month < 9; ++month) {
        chain.series.append(chain.series.first());
        chain.series.last().expiry = QDate(2024, month, 2);
    }
    return chain;
}

WrittenFiles::Kind WrittenFiles::database()
{
    const auto write = [](const QString& fileName, int version) {
        return reason([&] { DeskData(fileName).import(chainOf(version), 0); });
    };
    const auto read = [](const QString& fileName) {
        if (!QFile::exists(fileName))
            return 0;
        int version = -1;
        const QString problem = reason([&] {
            const DeskData data(fileName);
            const auto chain = ChainStore::chain(QStringLiteral("TEST"));
            if (!chain) {
                version = 0;
                return;
            }
            for (const int one : {1, 2}) {
                const OptionChain whole = chainOf(one);
                if (std::equal(chain->series.cbegin(), chain->series.cend(), whole.series.cbegin(),
                        whole.series.cend(), &Versions::isSame))
                    version = one;
            }
        });
        return problem.isEmpty() ? version : -1;
    };
    return {"database", write, read};
}

WrittenFiles::Kind WrittenFiles::exported(
    ExportFormat format, const char* suffix, const std::shared_ptr<DeskWindow>& window)
{
    // A version tells itself by the file's size; a table is as long as the title of its column of prices.
    const auto optionsOf = [](int version) {
        return ExportOptions{QSize(600 + 100 * version, 400), 1, QString(version, QLatin1Char('x')), nullptr};
    };
    const auto write = [=](const QString& fileName, int version) {
        return reason([&] { PlotExport::save(*window->plot(), format, optionsOf(version), fileName); });
    };
    const auto read = [=](const QString& fileName) {
        if (!QFile::exists(fileName))
            return 0;
        for (const int version : {1, 2}) {
            if (content(fileName).size()
                == PlotExport::content(*window->plot(), format, optionsOf(version)).size())
                return version;
        }
        return -1;
    };
    return {suffix, write, read};
}
