#pragma once

#include "chain/columnmap.h"

#include <QString>
#include <QStringList>

class TextDecoder;

/// The header of a chain's file.
struct ChainHeader {
    /// The line that it stands in, from 1.
    int line = 0;
    QChar delimiter;
    QStringList names;
    ColumnMap columns;
};

/// Reads up to the header: the first line that names a chain's columns, parted by commas, semicolons, tabs
/// or bars. It may begin with '#'; up to 50 lines of other text may stand before it. Throws ChainError
/// for a text without one, telling what was looked for and what was found.
ChainHeader findHeader(TextDecoder& text);
