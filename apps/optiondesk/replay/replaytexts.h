#pragma once

#include <QCoreApplication>
#include <QString>

/// What is said of recorded quotes, in the language of the user.
class ReplayTexts {
    Q_DECLARE_TR_FUNCTIONS(ReplayTexts)
};
