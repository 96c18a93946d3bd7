#pragma once

#include "chain/optionchain.h"

#include <QString>

#include <optional>

/// What a standard option code tells besides its strike.
struct OptionCode {
    QString root;
    QDate expiry;
    OptionType type = OptionType::Call;
};

/// Reads a code of the Options Clearing Corporation's form of 21 characters, with or without its blanks: the
/// root, yymmdd, C or P, and the strike in thousandths ("ABC   231215C00150000"). Empty for other texts.
std::optional<OptionCode> parseOptionCode(const QString& text);
