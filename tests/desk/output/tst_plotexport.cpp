#include "desk/window/choosingdesk.h"
#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <output/plotexport.h>

#include <database/exception.h>

#include <QCheckBox>
#include <QMimeData>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QXmlStreamReader>

/// The plot as PNG, SVG, PDF and table: what is in them, and that the plot on the screen stays as it is.
class tst_plotexport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void knowsFormats_data();
    void knowsFormats();
    void drawsTheSize_data();
    void drawsTheSize();
    void scalesLinesAndTexts();
    void showsWhatThePlotShows();
    void refusesWhatIsTooLarge();
    void svgHasTheTexts();
    void svgHasCurvesAsPaths();
    void svgStaysInTheCanvas();
    void svgDrawsAsThePicture();
    void pdfIsOnePage();
    void fitsTheLabelsToTheSize();
    void leavesThePlotAsItIs();
    void forTheClipboard();

private:
    ExportOptions options(const QSize& size, int scale = 1) const
    {
        return {size, scale, QStringLiteral("Strike")};
    }
    QImage image(const QSize& size, int scale = 1) const
    {
        return PlotExport::image(*m_desk->plot, options(size, scale));
    }
    QByteArray content(ExportFormat format, const QSize& size = QSize(800, 500)) const
    {
        return PlotExport::content(*m_desk->plot, format, options(size));
    }

    std::unique_ptr<ChoosingDesk> m_desk;
};

namespace {

constexpr QRgb smileColor = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb pointColor = qRgb(0xe6, 0x9f, 0x00);
constexpr QRgb red = qRgb(255, 0, 0);
constexpr QRgb black = qRgb(0, 0, 0);

/// The parts of an SVG file.
struct Drawing {
    QStringList texts;
    /// Line by line, the polylines' points and the paths' data.
    QStringList lines;
    QSize viewBox;
    QString title;
    bool isGood = false;
};

Drawing parsed(const QByteArray& svg)
{
    Drawing drawing;
    QXmlStreamReader reader(svg);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        if (reader.name() == QLatin1String("svg")) {
            const QStringList box
                = attributes.value(QStringLiteral("viewBox")).toString().split(QLatin1Char(' '));
            drawing.viewBox = QSize(box.value(2).toInt(), box.value(3).toInt());
        } else if (reader.name() == QLatin1String("title")) {
            drawing.title = reader.readElementText();
        } else if (reader.name() == QLatin1String("text")) {
            drawing.texts << reader.readElementText().trimmed();
        } else if (reader.name() == QLatin1String("polyline")) {
            drawing.lines << attributes.value(QStringLiteral("points")).toString();
        } else if (reader.name() == QLatin1String("path")) {
            drawing.lines << attributes.value(QStringLiteral("d")).toString();
        }
    }
    drawing.isGood = !reader.hasError();
    return drawing;
}

QStringList labelsOf(const Drawing& drawing)
{
    static const QRegularExpression number(QStringLiteral("\\A[0-9]+(\\.[0-9]+)?\\z"));
    return drawing.texts.filter(number);
}

}

void tst_plotexport::init()
{
    m_desk = std::make_unique<ChoosingDesk>();
    m_desk->start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
}

void tst_plotexport::knowsFormats_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("format");
    QTest::newRow("png") << "a.png" << int(ExportFormat::Png);
    QTest::newRow("svg") << "folder.d/a.svg" << int(ExportFormat::Svg);
    QTest::newRow("pdf") << "a.b.PDF" << int(ExportFormat::Pdf);
    QTest::newRow("csv") << "a.csv" << int(ExportFormat::Csv);
    QTest::newRow("other") << "a.jpg" << -1;
    QTest::newRow("none") << "png" << -1;
    QTest::newRow("empty") << "" << -1;
    QTest::newRow("dot in the folder") << "a.png/b" << -1;
}

void tst_plotexport::knowsFormats()
{
    QFETCH(QString, name);
    const auto format = PlotExport::formatOf(name);
    QTEST(format ? int(*format) : -1, "format");
}

void tst_plotexport::drawsTheSize_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("scale");
    for (int scale = PlotExport::smallestScale; scale <= PlotExport::largestScale; ++scale)
        QTest::addRow("%d", scale) << QSize(700, 420) << scale;
    QTest::newRow("small") << QSize(200, 150) << 1;
    QTest::newRow("high") << QSize(300, 2500) << 1;
}

void tst_plotexport::drawsTheSize()
{
    QFETCH(QSize, size);
    QFETCH(int, scale);
    const QImage drawn = image(size, scale);
    QCOMPARE(drawn.size(), size * scale);
    QCOMPARE(drawn.devicePixelRatio(), 1.0);
    const double dotsPerMeter = m_desk->plot->logicalDpiX() * scale / 0.0254;
    QVERIFY(std::abs(drawn.dotsPerMeterX() - dotsPerMeter) <= 1.0);
    QCOMPARE(drawn.pixel(0, 0), qRgb(255, 255, 255));

    const QImage read = QImage::fromData(
        PlotExport::content(*m_desk->plot, ExportFormat::Png, options(size, scale)), "PNG");
    QCOMPARE(read.convertToFormat(QImage::Format_RGB32), drawn);
    QCOMPARE(read.text(QStringLiteral("Title")), m_desk->plot->title().text());
}

// A picture of twice the size that was blown up would have the same edges, only softer; here lines and texts
// cover four times as many pixels, and no column of the canvas is a mixture of its neighbours.
void tst_plotexport::scalesLinesAndTexts()
{
    const QSize size(700, 420);
    const QImage once = image(size);
    for (int scale = 2; scale <= PlotExport::largestScale; ++scale) {
        const QImage larger = image(size, scale);
        for (const QRgb color : {smileColor, red, black}) {
            const double ratio
                = double(DeskTest::countPixels(larger, color)) / DeskTest::countPixels(once, color);
            QVERIFY2(ratio > 0.8 * scale * scale && ratio < 2.2 * scale * scale,
                qPrintable(QStringLiteral("%1: %2 at %3").arg(QColor(color).name()).arg(ratio).arg(scale)));
        }
        const QImage blown = once.scaled(larger.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        QVERIFY(DeskTest::countPixels(larger, smileColor) > DeskTest::countPixels(blown, smileColor) * 1.2);
        // The line at the forward: so many red pixels side by side.
        int longest = 0;
        for (int x = 0, run = 0; x < larger.width(); ++x) {
            run = larger.pixel(x, larger.height() / 4) == red ? run + 1 : 0;
            longest = std::max(longest, run);
        }
        QCOMPARE(longest, scale);
    }
}

void tst_plotexport::showsWhatThePlotShows()
{
    const QSize size(800, 500);
    const QImage all = image(size);
    QVERIFY(DeskTest::countPixels(all, smileColor) > 400);
    QVERIFY(DeskTest::countPixels(all, pointColor) > 300);
    QVERIFY(DeskTest::countPixels(all, red) > 200);
    m_desk->box(QStringLiteral("Smile"))->setChecked(false);
    const QImage without = image(size);
    QCOMPARE(DeskTest::countPixels(without, smileColor), 0);
    m_desk->box(QStringLiteral("Forward"))->setChecked(false);
    QCOMPARE(DeskTest::countPixels(image(size), red), 0);
    m_desk->plot->showNothing(QStringLiteral("no series"));
    QCOMPARE(DeskTest::countPixels(image(size), pointColor), 0);
}

void tst_plotexport::refusesWhatIsTooLarge()
{
    const auto reason = [this](const QSize& size, int scale) {
        try {
            image(size, scale);
        } catch (const Exception& error) {
            return error.text();
        }
        return QString();
    };
    QVERIFY(reason({10000, 10000}, 4).contains(QStringLiteral("40000 by 40000")));
    QVERIFY(reason({200, 10000}, 4).contains(QStringLiteral("800 by 40000")));
    QCOMPARE(reason({8191, 20}, 4), QString());
}

void tst_plotexport::svgHasTheTexts()
{
    const Drawing drawing = parsed(content(ExportFormat::Svg));
    QVERIFY(drawing.isGood);
    QCOMPARE(drawing.viewBox, QSize(800, 500));
    QCOMPARE(drawing.title, m_desk->plot->title().text());
    const QStringList texts{m_desk->plot->title().text(), "Strike", "Volatility", "Smile",
        "Stated volatility", "Bid volatility", "Ask volatility", "Implied volatility", "Forward", "80", "100",
        "30%"};
    for (const QString& text : texts)
        QVERIFY2(drawing.texts.contains(text),
            qPrintable(text + QStringLiteral(" of ") + drawing.texts.join(QLatin1Char('|'))));
    m_desk->box(QStringLiteral("Bid volatility"))->setChecked(false);
    QVERIFY(!parsed(content(ExportFormat::Svg)).texts.contains(QStringLiteral("Bid volatility")));
}

void tst_plotexport::svgHasCurvesAsPaths()
{
    const QByteArray svg = content(ExportFormat::Svg);
    QVERIFY(!svg.contains("<image"));
    const QStringList lines = parsed(svg).lines;
    const auto pointsOf = [](const QString& line) { return line.count(QLatin1Char(',')); };
    // The smile has hundreds of samples, bid, ask and stated volatility one at each strike.
    QVERIFY(
        std::any_of(lines.begin(), lines.end(), [&](const QString& line) { return pointsOf(line) > 80; }));
    const auto curves
        = std::count_if(lines.begin(), lines.end(), [&](const QString& line) { return pointsOf(line) > 15; });
    QVERIFY2(curves >= 4, qPrintable(QString::number(curves)));
}

// The generator of Qt knows no clipping.
void tst_plotexport::svgStaysInTheCanvas()
{
    m_desk->plot->setAxisScale(QwtPlot::xBottom, 97.0, 103.0, 0.0);
    Q_EMIT m_desk->plot->autoScaleEnabled(false);
    m_desk->plot->setAxisScale(QwtPlot::yLeft, 0.29, 0.30, 0.0);
    Q_EMIT m_desk->plot->updateAxisLabels();
    const QByteArray svg = content(ExportFormat::Svg);
    QSvgRenderer renderer(svg);
    QVERIFY(renderer.isValid());
    QImage drawn(800, 500, QImage::Format_RGB32);
    drawn.fill(Qt::white);
    QPainter painter(&drawn);
    renderer.render(&painter);
    painter.end();
    // To the left of the canvas there are labels alone, as above it.
    for (const QRgb color : {smileColor, pointColor}) {
        QCOMPARE(DeskTest::countPixels(drawn.copy(0, 0, 60, 440), color), 0);
        QCOMPARE(DeskTest::countPixels(drawn.copy(0, 0, 800, 30), color), 0);
        QCOMPARE(DeskTest::countPixels(drawn.copy(792, 0, 8, 440), color), 0);
    }
    QVERIFY(DeskTest::countPixels(drawn, smileColor) > 100);
}

void tst_plotexport::svgDrawsAsThePicture()
{
    QSvgRenderer renderer(content(ExportFormat::Svg));
    QVERIFY(renderer.isValid());
    QImage drawn(800, 500, QImage::Format_RGB32);
    drawn.fill(Qt::black);
    QPainter painter(&drawn);
    renderer.render(&painter);
    painter.end();
    const QImage picture = image({800, 500});
    QCOMPARE(DeskTest::countPixels(drawn.copy(0, 0, 800, 2), qRgb(255, 255, 255)), 1600);
    for (const QRgb color : {smileColor, pointColor, red}) {
        const int expected = DeskTest::countPixels(picture, color);
        const int found = DeskTest::countPixels(drawn, color);
        QVERIFY2(found > expected / 2 && found < expected * 2,
            qPrintable(QStringLiteral("%1: %2 of %3").arg(QColor(color).name()).arg(found).arg(expected)));
    }
}

void tst_plotexport::pdfIsOnePage()
{
    const QByteArray pdf = content(ExportFormat::Pdf);
    QVERIFY(pdf.startsWith("%PDF-1."));
    QVERIFY(pdf.trimmed().endsWith("%%EOF"));
    QCOMPARE(pdf.count("/Type /Page\n") + pdf.count("/Type /Page\r"), 1);
    // In points, as large as on the screen.
    const double points = 72.0 / m_desk->plot->logicalDpiX();
    static const QRegularExpression box(QStringLiteral("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]"));
    const QRegularExpressionMatch match = box.match(QString::fromLatin1(pdf.constData(), pdf.size()));
    QVERIFY(match.hasMatch());
    QVERIFY(std::abs(match.captured(1).toDouble() - 800.0 * points) <= 1.0);
    QVERIFY(std::abs(match.captured(2).toDouble() - 500.0 * points) <= 1.0);
    // Texts are texts in fonts of the file, curves are no pictures.
    QVERIFY(pdf.contains("/FontFile2"));
    QVERIFY(!pdf.contains("/Subtype /Image"));
}

void tst_plotexport::fitsTheLabelsToTheSize()
{
    const QStringList wide = labelsOf(parsed(content(ExportFormat::Svg, {1600, 400})));
    const QStringList narrow = labelsOf(parsed(content(ExportFormat::Svg, {260, 400})));
    QVERIFY2(wide.size() > narrow.size(),
        qPrintable(wide.join(QLatin1Char(' ')) + QLatin1Char('|') + narrow.join(QLatin1Char(' '))));
    QVERIFY(!narrow.isEmpty());
}

void tst_plotexport::leavesThePlotAsItIs()
{
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    const auto shot = [this] { return m_desk->plot->grab().toImage(); };
    const QImage before = shot();
    for (int format = 0; format < PlotExport::suffixes().size(); ++format)
        QVERIFY(!content(ExportFormat(format), {300, 200}).isEmpty());
    m_desk->plot->update();
    QCoreApplication::processEvents();
    QCOMPARE(shot(), before);
    m_desk->plot->replot();
    QCOMPARE(shot(), before);
}

void tst_plotexport::forTheClipboard()
{
    const auto data = [this](ExportFormat format) {
        return PlotExport::mimeData(*m_desk->plot, format, options({300, 200}, 2));
    };
    const auto picture = data(ExportFormat::Png);
    QVERIFY(picture->hasImage());
    QCOMPARE(qvariant_cast<QImage>(picture->imageData()), image({300, 200}, 2));
    QCOMPARE(parsed(data(ExportFormat::Svg)->data(QStringLiteral("image/svg+xml"))).viewBox, QSize(300, 200));
    QVERIFY(data(ExportFormat::Pdf)->data(QStringLiteral("application/pdf")).startsWith("%PDF"));
    const auto table = data(ExportFormat::Csv);
    const QByteArray csv = content(ExportFormat::Csv);
    QVERIFY(csv.startsWith("Strike,Smile,"));
    QCOMPARE(table->text().toUtf8(), csv);
    QCOMPARE(table->data(QStringLiteral("text/csv")), csv);
}

PLOT2D_TEST_MAIN(tst_plotexport)
#include "tst_plotexport.moc"
