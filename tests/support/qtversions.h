#pragma once

#include <QMetaType>

#include <qwt_abstract_scale_draw.h>
#include <qwt_global.h>
#include <qwt_point_data.h>

/// What the tests say differently to the versions of Qt (5 and 6) and of Qwt (6.1 and from 6.2).
namespace TestVersions {

#if QWT_VERSION >= 0x060200
using PointArrays = QwtPointArrayData<double>;
#else
using PointArrays = QwtPointArrayData;
#endif

/// The type that is registered under the name, QMetaType::UnknownType for none.
inline int typeNamed(const char* name)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QMetaType::fromName(name).id();
#else
    return QMetaType::type(name);
#endif
}

inline void setPenWidth(QwtAbstractScaleDraw& draw, int width)
{
#if QWT_VERSION >= 0x060200
    draw.setPenWidthF(width);
#else
    draw.setPenWidth(width);
#endif
}

/// In whole pixels.
inline int penWidth(const QwtAbstractScaleDraw& draw)
{
#if QWT_VERSION >= 0x060200
    return static_cast<int>(draw.penWidthF());
#else
    return draw.penWidth();
#endif
}

}
