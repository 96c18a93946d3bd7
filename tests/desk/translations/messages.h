#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// A text and its translation, as a file of Qt Linguist has them.
struct Message {
    QString context;
    QString source;
    QString comment;
    bool isNumerus = false;
    /// "unfinished", "vanished" or "obsolete"; empty for one that is whole.
    QString state;
    /// As many as the language has plural forms, or one.
    QStringList translations;
};

namespace Messages {

/// All messages of a file, in its order; none of a file that is damaged or not there.
QVector<Message> of(const QString& fileName);

/// What identifies the message in all files.
QString nameOf(const Message& message);

}
