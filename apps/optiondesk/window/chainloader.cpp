#include "window/chainloader.h"

#include "window/desktexts.h"

#include <chain/chainreader.h>

#include <QFileInfo>
#include <QProgressDialog>

OptionChain loadChain(const QString& fileName, QWidget* parent)
{
    constexpr int patienceMilliseconds = 500;
    constexpr int steps = 1000;
    QProgressDialog dialog(DeskTexts::tr("Reading %1").arg(QFileInfo(fileName).fileName()),
        DeskTexts::tr("Cancel"), 0, steps, parent);
    dialog.setWindowTitle(DeskTexts::tr("Import"));
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setMinimumDuration(patienceMilliseconds);
    return readChain(fileName, [&dialog](qint64 done, qint64 total) {
        // The last step would close the dialog.
        if (total > 0)
            dialog.setValue(int(std::min<qint64>(steps - 1, done * steps / total)));
        return !dialog.wasCanceled();
    });
}
