#include "sharingdesk.h"

#include <database/exception.h>

#include <QCoreApplication>

#include <cstdio>

/// Commits batches of rows to the address of its first argument: the first id, the number of batches and the
/// rows of each are the others. It ends when the server has confirmed all.
int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        SharingDesk desk(arguments.value(1));
        int nextId = arguments.value(2).toInt();
        int batches = arguments.value(3).toInt();
        const int rows = arguments.value(4).toInt();
        const auto goOn = [&] {
            if (batches == 0 && desk.isSettled())
                return QCoreApplication::quit();
            // Some commits pile up, so that they are under way together.
            for (; batches > 0 && desk.storage.waitingCommits() < 5; --batches, nextId += rows) {
                desk.append(nextId, rows);
                desk.storage.commit();
            }
        };
        QObject::connect(
            &desk.storage, &SharedStorage::statusChanged, &application, goOn, Qt::QueuedConnection);
        goOn();
        return QCoreApplication::exec();
    } catch (const Exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
