#include "desk/window/choosingdesk.h"
#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <output/plotprint.h>

#include <database/exception.h>

#include <QPrinter>
#include <QRegularExpression>

/// The plot on paper; a printer that prints into a file stands for one with paper.
class tst_plotprint : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void printsOnePage_data();
    void printsOnePage();
    void saysThatItCannot();
};

namespace {

QByteArray content(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}

void tst_plotprint::printsOnePage_data()
{
    QTest::addColumn<int>("page");
    // In points.
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("A4") << int(QPageSize::A4) << 842 << 595;
    QTest::newRow("A5") << int(QPageSize::A5) << 595 << 420;
    QTest::newRow("letter") << int(QPageSize::Letter) << 792 << 612;
}

void tst_plotprint::printsOnePage()
{
    QFETCH(int, page);
    ChoosingDesk desk;
    desk.start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
    const QString fileName = desk.folder.filePath(QStringLiteral("p.pdf"));
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(fileName);
    printer.setPageSize(QPageSize(QPageSize::PageSizeId(page)));
    PlotPrint::prepare(*desk.plot, printer);
    QCOMPARE(printer.docName(), desk.plot->title().text());
    PlotPrint::print(*desk.plot, printer);

    const QByteArray pdf = content(fileName);
    QVERIFY(pdf.startsWith("%PDF-1."));
    QCOMPARE(pdf.count("/Type /Page\n") + pdf.count("/Type /Page\r"), 1);
    QVERIFY(pdf.contains("/FontFile2"));
    QCOMPARE(printer.outputFileName(), fileName);
    static const QRegularExpression box(QStringLiteral("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]"));
    const QRegularExpressionMatch match = box.match(QString::fromLatin1(pdf.constData(), pdf.size()));
    QTEST(qRound(match.captured(1).toDouble()), "width");
    QTEST(qRound(match.captured(2).toDouble()), "height");
}

void tst_plotprint::saysThatItCannot()
{
    ChoosingDesk desk;
    desk.start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(desk.folder.filePath(QStringLiteral("none/p.pdf")));
    PlotPrint::prepare(*desk.plot, printer);
    QVERIFY_EXCEPTION_THROWN(PlotPrint::print(*desk.plot, printer), Exception);
}

PLOT2D_TEST_MAIN(tst_plotprint)
#include "tst_plotprint.moc"
