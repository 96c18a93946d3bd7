#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class PriceBased2dPlot;
class QMimeData;

/// What the plot can be written as.
enum class ExportFormat { Png, Svg, Pdf, Csv };

/// How a plot is written.
struct ExportOptions {
    /// Of the picture, in pixels of the screen; not of meaning for a table.
    QSize size;
    /// Pixels of the picture for each of these, smallestScale to largestScale: texts and lines become larger
    /// with it. Of meaning for PNG.
    int scale = 1;
    /// Of the column of prices in a table.
    QString priceTitle;
    /// Gives the title of a curve's column for the title of the curve; the same without a function.
    QString (*columnTitle)(const QString&) = nullptr;
};

/// The plot as files and for the clipboard.
namespace PlotExport {

constexpr int smallestScale = 1;
constexpr int largestScale = 4;

/// The format for a file, by its suffix; nothing for another suffix or none.
std::optional<ExportFormat> formatOf(const QString& fileName);

/// "png" and so on, in the order of the formats.
QStringList suffixes();

/// The plot as an image. Throws Exception where it would have more than 32767 pixels a side or does not fit
/// into the memory.
QImage image(PriceBased2dPlot& plot, const ExportOptions& options);

/// The plot as the content of a file. Throws Exception where that fails.
QByteArray content(PriceBased2dPlot& plot, ExportFormat format, const ExportOptions& options);

/// Writes that into a file, as a whole or not at all. Throws Exception where it fails, naming the file.
void save(PriceBased2dPlot& plot, ExportFormat format, const ExportOptions& options, const QString& fileName);

/// The plot for the clipboard: an image, SVG or PDF by its media type, or a table as text. Throws as
/// content() does.
std::unique_ptr<QMimeData> mimeData(
    PriceBased2dPlot& plot, ExportFormat format, const ExportOptions& options);

}
