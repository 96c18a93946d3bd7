#include "examples/plotpicture.h"
#include "support/programend.h"
#include "support/testmain.h"

#include <QProcess>
#include <QTemporaryDir>

/// Each example, started with the name of a picture, draws its curve into it and ends.
class tst_examples : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void drawsAPicture_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::newRow("curve_and_quote") << QColor(0, 114, 178);
        QTest::newRow("embedding") << QColor(Qt::darkBlue);
        QTest::newRow("fixed_axis") << QColor(0, 114, 178);
        QTest::newRow("legend_memory") << QColor(0, 158, 115);
        QTest::newRow("markers") << QColor(213, 94, 0);
        QTest::newRow("own_table") << QColor(0, 158, 115);
        QTest::newRow("picker_readout") << QColor(230, 159, 0);
    }

    void drawsAPicture()
    {
        QFETCH(QColor, color);
        const QTemporaryDir folder;
        const QString file = folder.filePath("picture.png");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", folder.path());

        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QString(EXAMPLES_DIR "/example_") + QTest::currentDataTag(), {file});
        QVERIFY(program.waitForFinished());
        QCOMPARE(TestSupport::troubleOf(program), QByteArray());

        const QImage picture(file);
        QCOMPARE(picture.size(), QSize(640, 400));
        // A curve crosses most of the width.
        QVERIFY(PlotPicture::count(picture, picture.rect(), color) > picture.width() / 2);
    }

    void refusesWhatCannotBeWritten()
    {
        QProcess program;
        program.start(EXAMPLES_DIR "/example_markers", {"/no/such/folder/picture.png"});
        QVERIFY(program.waitForFinished());
        QCOMPARE(TestSupport::troubleOf(program), QByteArray("exit code 1\n"));
    }
};

PLOT2D_TEST_MAIN(tst_examples)
#include "tst_examples.moc"
