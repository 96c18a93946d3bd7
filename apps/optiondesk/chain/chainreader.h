#pragma once

#include "chain/optionchain.h"

#include <QString>

#include <functional>

class QIODevice;

/// Told now and then how many bytes of how many are read; the reading stops when it returns false.
/// The total is 0 where the device does not know its size.
using ChainProgress = std::function<bool(qint64 done, qint64 total)>;

/// Reads the option chain of a CSV file (or a Qt resource).
///
/// Text: UTF-8, UTF-16 with a byte order mark, else Windows-1252; any line ends; cells parted by commas,
/// semicolons, tabs or bars, quoted or not; decimal point or comma. A row holds one option (with a column
/// of the type) or the call and the put of a strike (two sets of columns). Columns go by their usual names;
/// those not known are passed over.
///
/// The day of the prices comes from a column, else from a date in the file's name; the base code from a
/// column that has one value only, else from the file's name (see baseCodeFromFileName()). A file is read
/// as a stream; it may hold at most 200,000 options, and a line 65,536 characters.
///
/// Throws ChainError for whatever cannot be read, with the line where there is one; ChainError with
/// isCancelled() when the progress function stopped it.
OptionChain readChain(const QString& fileName, const ChainProgress& progress = ChainProgress());

/// The same from an open device; the name stands for the file's name.
OptionChain readChain(
    QIODevice& device, const QString& name, const ChainProgress& progress = ChainProgress());
