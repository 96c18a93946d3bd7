#include "desktest.h"
#include "support/testmain.h"

#include <window/desksession.h>

#include <database/settings.h>

#include <QTemporaryDir>
#include <QWidget>

/// The list of what a session keeps: what is written, what is given back, and to whom.
class tst_desksession : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void givesBack_data();
    void givesBack();
    void keepsTheOrderOfTheList();
    void leavesOutWhatIsNotStored();
    void leavesOutWhatIsExcepted();
    void writesOnlyWhatHasChanged();
    void desksLeaveEachOtherWhatTheyHaveNotTouched();
    void savesWhenTheWindowIsClosed();
    void needsNoSettings();

private:
    QString file() const { return m_folder->filePath(QStringLiteral("s.ini")); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

/// A value that somebody has.
struct Holder {
    QVariant value;
    int taken = 0;

    void keepIn(DeskSession& session, const QString& key)
    {
        session.keep(
            key, [this] { return value; },
            [this](const QVariant& stored) {
                value = stored;
                ++taken;
            });
    }
};

QByteArray content(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");

}

void tst_desksession::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_desksession::givesBack_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QVariant(QStringLiteral("a, b=\"c\" \u03c3"));
    QTest::newRow("bytes") << QVariant(QByteArray("\0\xff;\n", 4));
    QTest::newRow("list") << QVariant(QStringList{"one", "", "two, three"});
}

void tst_desksession::givesBack()
{
    QFETCH(QVariant, value);
    {
        Settings settings(file());
        DeskSession session(&settings);
        Holder holder{value};
        holder.keepIn(session, a);
        session.save();
    }
    Settings settings(file());
    QCOMPARE(settings.value(QStringLiteral("session/a")), value);
    DeskSession session(&settings);
    Holder holder;
    holder.keepIn(session, a);
    session.restore();
    QCOMPARE(holder.taken, 1);
    QCOMPARE(holder.value, value);
}

void tst_desksession::keepsTheOrderOfTheList()
{
    Settings settings(file());
    QStringList order;
    DeskSession session(&settings);
    for (const char* key : {"z", "a", "m"}) {
        const QString name = QString::fromLatin1(key);
        settings.setValue(QStringLiteral("session/") + name, name);
        session.keep(
            name, [] { return QVariant(); }, [&order](const QVariant& value) { order << value.toString(); });
    }
    session.restore();
    QCOMPARE(order, (QStringList{"z", "a", "m"}));
}

void tst_desksession::leavesOutWhatIsNotStored()
{
    Settings settings(file());
    DeskSession session(&settings);
    Holder holder{QStringLiteral("own")};
    holder.keepIn(session, a);
    session.restore();
    QCOMPARE(holder.taken, 0);
    QCOMPARE(holder.value.toString(), QStringLiteral("own"));
}

// What the user states holds now, and what it was then comes back next time.
void tst_desksession::leavesOutWhatIsExcepted()
{
    Settings settings(file());
    settings.setValue(QStringLiteral("session/a"), QStringLiteral("stored"));
    settings.setValue(QStringLiteral("session/b"), QStringLiteral("stored"));
    DeskSession session(&settings);
    Holder first{QStringLiteral("stated")};
    Holder second{QStringLiteral("usual")};
    first.keepIn(session, a);
    second.keepIn(session, b);
    session.restore({a});
    QCOMPARE(first.value.toString(), QStringLiteral("stated"));
    QCOMPARE(second.value.toString(), QStringLiteral("stored"));
    session.save();
    QCOMPARE(settings.value(QStringLiteral("session/a")).toString(), QStringLiteral("stated"));
}

void tst_desksession::writesOnlyWhatHasChanged()
{
    Settings settings(file());
    settings.setValue(QStringLiteral("session/a"), QStringLiteral("one"));
    settings.setValue(QStringLiteral("session/b"), QStringList{"single"});
    QVERIFY(settings.sync());
    DeskSession session(&settings);
    Holder first;
    Holder second;
    first.keepIn(session, a);
    second.keepIn(session, b);
    session.restore();
    second.value = QStringList{"single"};
    // Were anything written now, the file would be there again.
    QVERIFY(QFile::remove(file()));
    session.save();
    QVERIFY(settings.sync());
    QVERIFY2(content(file()).isEmpty(), content(file()));
    first.value = QStringLiteral("two");
    session.save();
    QVERIFY(settings.sync());
    QVERIFY(content(file()).contains("a=two"));
}

void tst_desksession::desksLeaveEachOtherWhatTheyHaveNotTouched()
{
    Settings one(file());
    one.setValue(QStringLiteral("session/a"), QStringLiteral("old"));
    one.setValue(QStringLiteral("session/b"), QStringLiteral("old"));
    QVERIFY(one.sync());
    Settings other(file());
    DeskSession session(&one);
    DeskSession otherSession(&other);
    Holder holders[4];
    holders[0].keepIn(session, a);
    holders[1].keepIn(session, b);
    holders[2].keepIn(otherSession, a);
    holders[3].keepIn(otherSession, b);
    session.restore();
    otherSession.restore();
    holders[0].value = QStringLiteral("of one");
    holders[3].value = QStringLiteral("of the other");
    session.save();
    QVERIFY(one.sync());
    otherSession.save();
    QVERIFY(other.sync());
    session.save();
    QVERIFY(one.sync());
    const Settings after(file());
    QCOMPARE(after.value(QStringLiteral("session/a")).toString(), QStringLiteral("of one"));
    QCOMPARE(after.value(QStringLiteral("session/b")).toString(), QStringLiteral("of the other"));
}

void tst_desksession::savesWhenTheWindowIsClosed()
{
    Settings settings(file());
    QWidget window;
    DeskSession session(&settings);
    Holder holder{QStringLiteral("value")};
    holder.keepIn(session, a);
    session.watch(&window);
    window.show();
    QVERIFY(!settings.value(QStringLiteral("session/a")).isValid());
    window.close();
    QCOMPARE(settings.value(QStringLiteral("session/a")).toString(), QStringLiteral("value"));
}

void tst_desksession::needsNoSettings()
{
    DeskSession session(nullptr);
    Holder holder{QStringLiteral("own")};
    holder.keepIn(session, a);
    session.restore();
    session.save();
    QCOMPARE(holder.taken, 0);
}

PLOT2D_TEST_MAIN(tst_desksession)
#include "tst_desksession.moc"
