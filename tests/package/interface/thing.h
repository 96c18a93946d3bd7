#pragma once

class Inner;

// A class of a public header, as a release has it.
class Thing {
public:
    explicit Thing(int size);
    virtual ~Thing();

    virtual int size() const;
    int doubled(int factor) const;
    double scaled(double factor) const;

protected:
    Inner* m_inner;
};
