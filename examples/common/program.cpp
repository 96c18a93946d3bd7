#include "common/program.h"

#include <QApplication>
#include <QPixmap>
#include <QWidget>

int Program::show(QWidget& widget)
{
    const QString picture = QCoreApplication::arguments().value(1);
    widget.show();
    if (picture.isEmpty())
        return QApplication::exec();
    return widget.grab().save(picture) ? 0 : 1;
}
