#include "output/plotprint.h"

#include "output/outputtexts.h"
#include "output/plotdrawing.h"
#include "output/wholefile.h"

#include <database/exception.h>
#include <plot2d/pricebased2dplot.h>

#include <QFile>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>

#include <qwt_text.h>

namespace {

void paintPage(PriceBased2dPlot& plot, QPrinter& printer)
{
    QPainter painter;
    if (!painter.begin(&printer))
        throw Exception(OutputTexts::tr("the printer cannot be used"));
    // The painter begins at the corner of the printable area.
    const QRectF page(QPointF(), printer.pageRect(QPrinter::DevicePixel).size());
    const QSizeF inches = printer.pageRect(QPrinter::Inch).size();
    const QSizeF size(inches.width() * plot.logicalDpiX(), inches.height() * plot.logicalDpiY());
    PlotDrawing::paint(plot, size, painter, page);
    if (!painter.end() || printer.printerState() == QPrinter::Error)
        throw Exception(OutputTexts::tr("the printer has failed"));
}

}

void PlotPrint::prepare(const PriceBased2dPlot& plot, QPrinter& printer)
{
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName(plot.title().text());
}

void PlotPrint::print(PriceBased2dPlot& plot, QPrinter& printer)
{
    const QString fileName = printer.outputFileName();
    if (fileName.isEmpty()) {
        paintPage(plot, printer);
        return;
    }
    // A printer writes into the file itself.
    const QTemporaryDir folder;
    QFile page(folder.filePath(QStringLiteral("page")));
    printer.setOutputFileName(page.fileName());
    paintPage(plot, printer);
    if (!page.open(QIODevice::ReadOnly))
        throw Exception(QStringLiteral("%1: %2").arg(fileName, page.errorString()));
    printer.setOutputFileName(fileName);
    WholeFile::write(fileName, page.readAll());
}
