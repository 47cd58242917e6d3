// SPDX-License-Identifier: BSD-3-Clause
#include "attributes.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QMetaType>

namespace {

QVariantMap mapFromArgument(const QDBusArgument& argument);

QVariant plainValue(const QVariant& value)
{
    static const int argumentType = qMetaTypeId<QDBusArgument>();
    return value.userType() == argumentType ? mapFromArgument(value.value<QDBusArgument>()) : value;
}

/// Read by each element's own type: reading a variant where there is none, as in a map of plain
/// strings, ends the process inside the bus library.
QVariant nextValue(const QDBusArgument& argument)
{
    if (argument.currentType() == QDBusArgument::MapType) {
        return mapFromArgument(argument);
    }
    if (argument.currentType() == QDBusArgument::VariantType) {
        QVariant value;
        argument >> value;
        return plainValue(value);
    }
    return plainValue(argument.asVariant());
}

QVariantMap mapFromArgument(const QDBusArgument& argument)
{
    QVariantMap map;
    if (argument.currentType() != QDBusArgument::MapType) {
        return map;
    }
    argument.beginMap();
    while (!argument.atEnd()) {
        argument.beginMapEntry();
        const QString key = argument.asVariant().toString();
        map.insert(key, nextValue(argument));
        argument.endMapEntry();
    }
    argument.endMap();
    return map;
}

} // namespace

QVariantMap plainAttributes(const QVariantMap& attributes)
{
    QVariantMap plain;
    for (auto it = attributes.constBegin(); it != attributes.constEnd(); ++it) {
        plain.insert(it.key(), plainValue(it.value()));
    }
    return plain;
}
