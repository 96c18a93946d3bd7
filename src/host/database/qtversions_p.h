#pragma once

#include <QSqlField>
#include <QVariant>

/// What Qt 5 and Qt 6 say differently about the types of values.
namespace QtVersions {

/// A null value of a type.
inline QVariant nullOf(QMetaType::Type type)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QVariant(QMetaType(type));
#else
    return QVariant(static_cast<QVariant::Type>(type));
#endif
}

/// A field without a name, of the type that the value has.
inline QSqlField fieldOf(const QVariant& value)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QSqlField field(QString(), value.metaType());
#else
    QSqlField field(QString(), value.type());
#endif
    field.setValue(value);
    return field;
}

}
