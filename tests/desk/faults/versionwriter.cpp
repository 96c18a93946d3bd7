#include "desk/faults/killpoints.h"
#include "desk/faults/versions.h"

#include <output/plotexport.h>
#include <position/positionfile.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/desksettings.h>
#include <window/deskwindow.h>

#include <database/exception.h>
#include <database/settings.h>

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <functional>

namespace {

using Writer = std::function<bool(int version)>;

Writer settingsWriter(const QString& fileName)
{
    const auto desk = std::make_shared<DeskSettings>(fileName);
    return [desk](int version) {
        for (int i = 0; desk->host() && i < Versions::settingsCount; ++i)
            desk->host()->setValue(Versions::keyOf(i), version);
        return desk->host() && desk->problem().isEmpty() && desk->save();
    };
}

Writer positionsWriter(const QString& fileName)
{
    const auto file = std::make_shared<Position::PositionFile>(fileName);
    return [file](int version) {
        return file->problem().isEmpty() && file->setLegs(QStringLiteral("TEST"), Versions::legs(version));
    };
}

Writer importer(const QString& fileName)
{
    const auto data = std::make_shared<DeskData>(fileName);
    return [data](int version) { return data->import(Versions::chain(version), 0) > 0; };
}

Writer exporter(ExportFormat format, const QString& fileName)
{
    const auto data = std::make_shared<DeskData>(QString());
    const auto window = std::make_shared<DeskWindow>(*data, DeskView::Volatility);
    window->showSeries(data->import(DeskTest::quotedChain(), 0), SeriesFacts());
    return [data, window, format, fileName](int version) {
        const ExportOptions how{Versions::pictureSize(version), 1, Versions::tableTitle(version), nullptr};
        PlotExport::save(*window->plot(), format, how, fileName);
        return true;
    };
}

Writer writerOf(const QString& what, const QDir& folder)
{
    if (what == QLatin1String("settings"))
        return settingsWriter(folder.filePath(Versions::settingsFile()));
    if (what == QLatin1String("positions"))
        return positionsWriter(folder.filePath(Versions::positionsFile()));
    if (what == QLatin1String("import"))
        return importer(folder.filePath(Versions::database()));
    if (what == QLatin1String("table"))
        return exporter(ExportFormat::Csv, folder.filePath(Versions::tableFile()));
    return exporter(ExportFormat::Png, folder.filePath(Versions::pictureFile()));
}

}

/// Stores versions without end, from a number on, and tells of each that is stored in a line with its number.
/// Arguments: what is stored (settings, positions, import, table or picture), the folder, the first number;
/// and, to be killed, a number and the call before which that happens while the version of this number is
/// stored, the last one then. That of the first number includes the opening of what is stored in.
int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        int version = arguments.at(3).toInt();
        const int last = arguments.value(4).toInt();
        const int call = arguments.value(5).toInt();
        KillPoints::arm(version == last ? call : 0);
        const Writer write = writerOf(arguments.at(1), QDir(arguments.at(2)));
        for (; write(version); ++version) {
            KillPoints::disarm();
            std::printf("%d\n", version);
            std::fflush(stdout);
            if (version == last)
                return 0;
            KillPoints::arm(version + 1 == last ? call : 0);
        }
        std::fprintf(stderr, "it cannot be written\n");
    } catch (const Exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return 1;
}
