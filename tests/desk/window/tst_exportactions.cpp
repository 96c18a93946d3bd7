#include "choosingdesk.h"
#include "desktest.h"
#include "support/testmain.h"

#include <window/exportactions.h>

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QPrinter>
#include <QSignalSpy>

/// The menu that brings the plot out of the desk.
class tst_exportactions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void everyEntryHasKeyAndTip();
    void exportsToTheChosenFile_data();
    void exportsToTheChosenFile();
    void suggestsAName_data();
    void suggestsAName();
    void remembersTheFolder();
    void doesNothingWithoutAFile();
    void saysThatItCannot();
    void scalesPictures();
    void refusesOtherScales();
    void copies();
    void prints();
    void mayBeGoneAfterTheQuestion();

private:
    QAction* action(const QString& menu, const QString& text) const;
    void answer(const QString& fileName);
    QString path(const char* name) const { return m_desk->folder.filePath(QString::fromLatin1(name)); }

    std::unique_ptr<ChoosingDesk> m_desk;
    std::unique_ptr<QMenu> m_menu;
    ExportActions* m_actions = nullptr;
    QString m_suggestion;
};

namespace {

QByteArray content(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QList<QAction*> allActions(const QMenu& menu)
{
    QList<QAction*> found;
    const QList<QAction*> actions = menu.actions();
    for (QAction* each : actions) {
        if (each->menu())
            found << allActions(*each->menu());
        else if (!each->isSeparator())
            found << each;
    }
    return found;
}

}

void tst_exportactions::init()
{
    m_menu.reset();
    m_desk = std::make_unique<ChoosingDesk>();
    m_desk->start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
    m_menu = std::make_unique<QMenu>();
    m_actions = new ExportActions(m_desk->plot.get(), m_menu.get());
    m_suggestion.clear();
}

QAction* tst_exportactions::action(const QString& menu, const QString& text) const
{
    const QList<QMenu*> menus = m_menu->findChildren<QMenu*>() << m_menu.get();
    for (const QMenu* each : menus) {
        const QList<QAction*> actions = each->actions();
        for (QAction* one : actions) {
            if (each->title().remove(QLatin1Char('&')) == menu
                && one->text().remove(QLatin1Char('&')) == text)
                return one;
        }
    }
    qFatal("no entry \"%s\"", qPrintable(text));
}

void tst_exportactions::answer(const QString& fileName)
{
    m_actions->setFileQuestion([this, fileName](const QString& suggestion, ExportFormat, QWidget*) {
        m_suggestion = suggestion;
        return fileName;
    });
}

void tst_exportactions::everyEntryHasKeyAndTip()
{
    const QList<QAction*> all = allActions(*m_menu);
    QCOMPARE(all.size(), 13);
    QSet<QString> keys;
    for (const QAction* each : all) {
        QVERIFY2(!each->shortcut().isEmpty(), qPrintable(each->text()));
        QVERIFY2(each->toolTip().size() > 10, qPrintable(each->text()));
        QCOMPARE(each->statusTip(), each->toolTip());
        keys.insert(each->shortcut().toString());
    }
    QCOMPARE(keys.size(), all.size());
}

void tst_exportactions::exportsToTheChosenFile_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("begin");
    QTest::newRow("png") << "PNG picture..."
                         << "a.png" << QByteArray("\x89PNG");
    QTest::newRow("svg") << "SVG drawing..."
                         << "a.svg" << QByteArray("<?xml");
    QTest::newRow("pdf") << "PDF page..."
                         << "a.pdf" << QByteArray("%PDF-1");
    QTest::newRow("csv") << "CSV table..."
                         << "a.csv" << QByteArray("Strike,Smile");
    QTest::newRow("another known suffix counts") << "PNG picture..."
                                                 << "a.svg" << QByteArray("<?xml");
    QTest::newRow("an unknown one does not") << "PDF page..."
                                             << "a.1" << QByteArray("%PDF-1");
}

void tst_exportactions::exportsToTheChosenFile()
{
    QFETCH(QString, entry);
    QFETCH(QString, name);
    const QString fileName = m_desk->folder.filePath(name);
    DeskTest::write(fileName, "old");
    answer(fileName);
    QSignalSpy done(m_actions, &ExportActions::done);
    QSignalSpy failed(m_actions, &ExportActions::failed);
    action(QStringLiteral("Export"), entry)->trigger();
    QCOMPARE(failed.size(), 0);
    QCOMPARE(done.size(), 1);
    QVERIFY(done.first().first().toString().contains(fileName));
    const QByteArray written = content(fileName);
    QFETCH(QByteArray, begin);
    QCOMPARE(written.left(begin.size()), begin);
}

void tst_exportactions::suggestsAName_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "TEST 2024-04-02"
                           << "TEST 2024-04-02.svg";
    QTest::newRow("none") << ""
                          << "optiondesk.svg";
    QTest::newRow("letters that no file has") << "../A\\B:C\n<D>"
                                              << "..-A-B-C--D-.svg";
    QTest::newRow("other letters") << QStringLiteral("S\u00fc\u00df") << QStringLiteral("S\u00fc\u00df.svg");
}

void tst_exportactions::suggestsAName()
{
    QFETCH(QString, document);
    answer(QString());
    m_actions->setDocumentName(document);
    action(QStringLiteral("Export"), QStringLiteral("SVG drawing..."))->trigger();
    QTEST(m_suggestion, "name");
}

void tst_exportactions::remembersTheFolder()
{
    QCOMPARE(m_actions->folder(), QString());
    m_actions->setFolder(path("none"));
    QCOMPARE(m_actions->folder(), QString());
    answer(path("a.svg"));
    action(QStringLiteral("Export"), QStringLiteral("SVG drawing..."))->trigger();
    QCOMPARE(m_actions->folder(), m_desk->folder.path());
    answer(path("none/a.svg"));
    action(QStringLiteral("Export"), QStringLiteral("PDF page..."))->trigger();
    QCOMPARE(m_suggestion, path("optiondesk.pdf"));
    QCOMPARE(m_actions->folder(), m_desk->folder.path());
}

void tst_exportactions::doesNothingWithoutAFile()
{
    answer(QString());
    QSignalSpy done(m_actions, &ExportActions::done);
    QSignalSpy failed(m_actions, &ExportActions::failed);
    action(QStringLiteral("Export"), QStringLiteral("PNG picture..."))->trigger();
    QCOMPARE(done.size() + failed.size(), 0);
}

void tst_exportactions::saysThatItCannot()
{
    answer(path("none/a.png"));
    QSignalSpy done(m_actions, &ExportActions::done);
    QSignalSpy failed(m_actions, &ExportActions::failed);
    action(QStringLiteral("Export"), QStringLiteral("PNG picture..."))->trigger();
    QCOMPARE(done.size(), 0);
    QCOMPARE(failed.size(), 1);
    QVERIFY(failed.first().last().toString().startsWith(path("none/a.png")));
}

void tst_exportactions::scalesPictures()
{
    m_desk->plot->resize(300, 200);
    answer(path("a.png"));
    for (int scale = 4; scale >= 1; --scale) {
        action(QStringLiteral("Size of PNG pictures"), QStringLiteral("%1\u00d7").arg(scale))->trigger();
        QCOMPARE(m_actions->scale(), scale);
        action(QStringLiteral("Export"), QStringLiteral("PNG picture..."))->trigger();
        QCOMPARE(QImage(path("a.png")).size(), QSize(300, 200) * scale);
        action(QStringLiteral("Copy"), QStringLiteral("Picture"))->trigger();
        QCOMPARE(QGuiApplication::clipboard()->image().size(), QSize(300, 200) * scale);
    }
}

void tst_exportactions::refusesOtherScales()
{
    m_actions->setScale(3);
    for (const int scale : {0, -1, 5, 1000000}) {
        m_actions->setScale(scale);
        QCOMPARE(m_actions->scale(), 3);
    }
    QVERIFY(action(QStringLiteral("Size of PNG pictures"), QStringLiteral("3\u00d7"))->isChecked());
}

void tst_exportactions::copies()
{
    QSignalSpy done(m_actions, &ExportActions::done);
    const auto copied = [this](const char* entry) {
        action(QStringLiteral("Copy"), QString::fromLatin1(entry))->trigger();
        return QGuiApplication::clipboard()->mimeData();
    };
    QVERIFY(copied("Picture")->hasImage());
    QVERIFY(copied("SVG drawing")->data(QStringLiteral("image/svg+xml")).contains("<svg"));
    QVERIFY(copied("PDF page")->data(QStringLiteral("application/pdf")).startsWith("%PDF"));
    QVERIFY(copied("CSV table")->text().startsWith(QStringLiteral("Strike,Smile,")));
    QCOMPARE(done.size(), 4);
}

void tst_exportactions::prints()
{
    QSignalSpy done(m_actions, &ExportActions::done);
    m_actions->setPrintQuestion([](QPrinter*, QWidget*) { return false; });
    action(QString(), QStringLiteral("Print..."))->trigger();
    QCOMPARE(done.size(), 0);
    m_actions->setPrintQuestion([this](QPrinter* printer, QWidget*) {
        printer->setOutputFormat(QPrinter::PdfFormat);
        printer->setOutputFileName(path("p.pdf"));
        return printer->pageLayout().orientation() == QPageLayout::Landscape;
    });
    action(QString(), QStringLiteral("Print..."))->trigger();
    QCOMPARE(done.size(), 1);
    QVERIFY(content(path("p.pdf")).startsWith("%PDF"));
}

// A dialog runs the event loop.
void tst_exportactions::mayBeGoneAfterTheQuestion()
{
    m_actions->setFileQuestion([this](const QString&, ExportFormat, QWidget*) {
        m_desk->plot.reset();
        return path("a.png");
    });
    action(QStringLiteral("Export"), QStringLiteral("PNG picture..."))->trigger();
    QVERIFY(!QFile::exists(path("a.png")));
}

PLOT2D_TEST_MAIN(tst_exportactions)
#include "tst_exportactions.moc"
