#pragma once

// A class that no public header declares.
class Inner {
public:
    explicit Inner(int value)
        : size(value)
    {
    }
    int twice() const;

    int size;
};
