#pragma once

class Database;

/// The host's core object, one in a process.
class ICore {
public:
    /// The core, made at the first call; never null.
    static ICore* instance();

    /// The tables; never null, owned by the core.
    virtual Database* database() const = 0;

protected:
    virtual ~ICore();
};
