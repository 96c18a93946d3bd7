#pragma once

#include <QCoreApplication>
#include <QString>

/// What is said of option chains and their files, in the language of the user.
class ChainTexts {
    Q_DECLARE_TR_FUNCTIONS(ChainTexts)
};
