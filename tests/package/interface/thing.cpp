#include "thing.h"

#include "inner_p.h"

Thing::Thing(int size)
    : m_inner(new Inner(size))
{
}

Thing::~Thing()
{
    delete m_inner;
}

int Thing::size() const
{
    return m_inner->size;
}

int Thing::doubled(int factor) const
{
    return m_inner->size * 2 * factor;
}

double Thing::scaled(double factor) const
{
    return m_inner->size * factor;
}

int Inner::twice() const
{
    return 2 * size;
}
