#pragma once

#include <QCoreApplication>
#include <QString>

/// What is said of exports and prints, in the language of the user.
class OutputTexts {
    Q_DECLARE_TR_FUNCTIONS(OutputTexts)
};
