#pragma once

#include <output/plotexport.h>
#include <position/leg.h>

#include <chain/optionchain.h>

#include <functional>
#include <memory>

class DeskWindow;

/// What the desk writes, in two versions that can be told apart.
namespace WrittenFiles {

/// One kind of file that the desk writes. There are two contents to write, both of more than a part, but of
/// no more than Qt writes in one piece where it can be so.
struct Kind {
    const char* name;
    /// Gives what the user is told; empty where all is well.
    std::function<QString(const QString& fileName, int version)> write;
    /// The version that is stored; 0 for none, -1 for anything that is not whole.
    std::function<int(const QString& fileName)> read;
};

/// All bytes of a file, none where it cannot be read.
QByteArray content(const QString& fileName);

/// The legs of a version, which Kind positions() writes.
QVector<Position::Leg> legsOf(int version);
/// The chain of a version, which Kind database() writes.
OptionChain chainOf(int version);

Kind settings();
Kind positions();
Kind database();
/// The contents of exported files of a plot, which are the same each time.
Kind exported(ExportFormat format, const char* suffix, const std::shared_ptr<DeskWindow>& window);

}
