#include "output/plotexport.h"

#include "output/curvetable.h"
#include "output/outputtexts.h"
#include "output/plotdrawing.h"
#include "output/wholefile.h"

#include <database/exception.h>
#include <plot2d/pricebased2dplot.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QMimeData>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <qwt_text.h>

namespace {

constexpr double millimetersPerInch = 25.4;
constexpr double pointsPerInch = 72.0;

QRectF whole(const QPaintDevice& device)
{
    return QRectF(0.0, 0.0, device.width(), device.height());
}

void paintOn(QPaintDevice& device, PriceBased2dPlot& plot, const QSize& size)
{
    QPainter painter;
    if (!painter.begin(&device))
        throw Exception(OutputTexts::tr("the plot could not be drawn"));
    PlotDrawing::paint(plot, size, painter, whole(device));
}

QByteArray png(PriceBased2dPlot& plot, const ExportOptions& options)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!PlotExport::image(plot, options).save(&buffer, "PNG"))
        throw Exception(OutputTexts::tr("the picture could not be written"));
    return bytes;
}

QByteArray svg(PriceBased2dPlot& plot, const ExportOptions& options)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(plot.logicalDpiX());
    generator.setSize(options.size);
    generator.setViewBox(QRect(QPoint(), options.size));
    generator.setTitle(plot.title().text());
    generator.setDescription(QCoreApplication::applicationName());
    paintOn(generator, plot, options.size);
    return bytes;
}

QByteArray pdf(PriceBased2dPlot& plot, const ExportOptions& options)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    const QSizeF points = QSizeF(options.size) * pointsPerInch / plot.logicalDpiX();
    writer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    writer.setTitle(plot.title().text());
    writer.setCreator(QCoreApplication::applicationName());
    paintOn(writer, plot, options.size);
    return bytes;
}

}

std::optional<ExportFormat> PlotExport::formatOf(const QString& fileName)
{
    const int index = suffixes().indexOf(QFileInfo(fileName).suffix().toLower());
    return index < 0 ? std::nullopt : std::make_optional(ExportFormat(index));
}

QStringList PlotExport::suffixes()
{
    return {QStringLiteral("png"), QStringLiteral("svg"), QStringLiteral("pdf"), QStringLiteral("csv")};
}

QImage PlotExport::image(PriceBased2dPlot& plot, const ExportOptions& options)
{
    // Beyond it Qt does not paint.
    constexpr int largestSide = 32767;
    const QSize size = options.size * options.scale;
    if (size.boundedTo({largestSide, largestSide}) != size)
        throw Exception(
            OutputTexts::tr("a picture of %1 by %2 pixels is too large, at most %3 a side can be drawn")
                .arg(size.width())
                .arg(size.height())
                .arg(largestSide));
    QImage result(size, QImage::Format_RGB32);
    if (result.isNull())
        throw Exception(OutputTexts::tr("there is no memory for a picture of %1 by %2 pixels")
                            .arg(size.width())
                            .arg(size.height()));
    const double dotsPerMeter = plot.logicalDpiX() * options.scale * 1000.0 / millimetersPerInch;
    paintOn(result, plot, options.size);
    result.setDotsPerMeterX(qRound(dotsPerMeter));
    result.setDotsPerMeterY(qRound(dotsPerMeter));
    result.setText(QStringLiteral("Title"), plot.title().text());
    return result;
}

QByteArray PlotExport::content(PriceBased2dPlot& plot, ExportFormat format, const ExportOptions& options)
{
    switch (format) {
    case ExportFormat::Png:
        return png(plot, options);
    case ExportFormat::Svg:
        return svg(plot, options);
    case ExportFormat::Pdf:
        return pdf(plot, options);
    case ExportFormat::Csv:
        break;
    }
    QVector<CurveTable::Column> columns = CurveTable::columns(plot);
    for (CurveTable::Column& column : columns) {
        if (options.columnTitle)
            column.title = options.columnTitle(column.title);
    }
    return CurveTable::csv(options.priceTitle, columns);
}

void PlotExport::save(
    PriceBased2dPlot& plot, ExportFormat format, const ExportOptions& options, const QString& fileName)
{
    QByteArray bytes;
    try {
        bytes = content(plot, format, options);
    } catch (const Exception& error) {
        throw Exception(QStringLiteral("%1: %2").arg(fileName, error.text()));
    }
    WholeFile::write(fileName, bytes);
}

std::unique_ptr<QMimeData> PlotExport::mimeData(
    PriceBased2dPlot& plot, ExportFormat format, const ExportOptions& options)
{
    auto data = std::make_unique<QMimeData>();
    if (format == ExportFormat::Png) {
        data->setImageData(image(plot, options));
        return data;
    }
    const QByteArray bytes = content(plot, format, options);
    switch (format) {
    case ExportFormat::Svg:
        data->setData(QStringLiteral("image/svg+xml"), bytes);
        break;
    case ExportFormat::Pdf:
        data->setData(QStringLiteral("application/pdf"), bytes);
        break;
    default:
        data->setText(QString::fromUtf8(bytes));
        data->setData(QStringLiteral("text/csv"), bytes);
        break;
    }
    return data;
}
