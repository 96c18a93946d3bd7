#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <output/picture.h>

#include <database/exception.h>

#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>

/// Pictures of windows and their files.
class tst_picture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void knowsFormats_data();
    void knowsFormats();
    void takesAtAnySize_data();
    void takesAtAnySize();
    void savesWhatItTook_data();
    void savesWhatItTook();
    void keepsTheOldFileWhereItFails();
    void failsWithTheName_data();
    void failsWithTheName();
};

namespace {

/// Blue with a red corner of ten pixels at the lower right.
class Corner : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::blue);
        painter.fillRect(width() - 10, height() - 10, 10, 10, Qt::red);
    }
};

}

void tst_picture::knowsFormats_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("png") << "a.png" << QByteArray("png");
    QTest::newRow("capitals") << "a.PNG" << QByteArray("png");
    QTest::newRow("jpg") << "folder/a.b.jpg" << QByteArray("jpg");
    QTest::newRow("bmp") << "a.bmp" << QByteArray("bmp");
    QTest::newRow("none") << "picture" << QByteArray("png");
    QTest::newRow("dot in the folder") << "folder.d/picture" << QByteArray("png");
    QTest::newRow("unknown") << "a.pdf" << QByteArray();
    QTest::newRow("date") << "desk.2012-10-01" << QByteArray();
}

void tst_picture::knowsFormats()
{
    QFETCH(QString, name);
    QTEST(Picture::formatOf(name), "format");
}

void tst_picture::takesAtAnySize_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("shown");
    QTest::newRow("small") << QSize(200, 150) << false;
    QTest::newRow("larger than the screen") << QSize(3000, 2500) << false;
    QTest::newRow("on the screen") << QSize(320, 240) << true;
}

void tst_picture::takesAtAnySize()
{
    QFETCH(QSize, size);
    QFETCH(bool, shown);
    Corner window;
    if (shown)
        window.show();
    const QImage image = Picture::take(window, size);
    QCOMPARE(image.size(), size);
    QCOMPARE(DeskTest::countPixels(image, qRgb(255, 0, 0)), 100);
    QCOMPARE(image.pixel(0, 0), qRgb(0, 0, 255));
    QCOMPARE(window.isVisible(), shown);
}

void tst_picture::savesWhatItTook_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("png") << "a.png" << QByteArray("png");
    QTest::newRow("no suffix") << "a" << QByteArray("png");
    QTest::newRow("jpeg") << "a.jpeg" << QByteArray("jpeg");
    QTest::newRow("bmp") << "a.bmp" << QByteArray("bmp");
}

void tst_picture::savesWhatItTook()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, format);
    const QTemporaryDir folder;
    Corner window;
    const QImage image = Picture::take(window, QSize(300, 200));
    Picture::save(image, folder.filePath(name));

    QImageReader reader(folder.filePath(name));
    reader.setDecideFormatFromContent(true);
    QCOMPARE(reader.format(), format);
    const QImage read = reader.read();
    QCOMPARE(read.size(), image.size());
    if (format != "jpeg")
        QCOMPARE(read.convertToFormat(QImage::Format_RGB32), image.convertToFormat(QImage::Format_RGB32));
}

void tst_picture::keepsTheOldFileWhereItFails()
{
    const QTemporaryDir folder;
    const QString name = DeskTest::write(folder.filePath(QStringLiteral("a.png")), "old");
    // An empty image cannot be written.
    QVERIFY_EXCEPTION_THROWN(Picture::save(QImage(), name), Exception);
    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("old"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("a.png")});
}

void tst_picture::failsWithTheName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << "none/a.png";
    QTest::newRow("a folder") << "taken.png";
}

void tst_picture::failsWithTheName()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("taken.png")));
    const QString fileName = folder.filePath(name);
    try {
        Picture::save(QImage(10, 10, QImage::Format_RGB32), fileName);
        QFAIL("nothing was thrown");
    } catch (const Exception& error) {
        QVERIFY2(error.text().startsWith(fileName + QLatin1Char(':')), qPrintable(error.text()));
        QVERIFY(!error.text().contains(QLatin1Char('\n')));
    }
}

PLOT2D_TEST_MAIN(tst_picture)
#include "tst_picture.moc"
