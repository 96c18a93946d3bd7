#pragma once

#include <QCoreApplication>
#include <QString>

/// What the desk says in its window and on the command line, in the language of the user.
class DeskTexts {
    Q_DECLARE_TR_FUNCTIONS(DeskTexts)
};
