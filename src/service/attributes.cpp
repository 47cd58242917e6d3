// SPDX-License-Identifier: BSD-3-Clause
#include "attributes.h"
#include "servicelog.h"

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

/// The next value, read by the type that it has. If a variant is read where there is none, as in a
/// map of plain strings, the bus library ends the process.
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

/// The number of characters, bytes and parts of a plain value.
qint64 sizeOf(const QVariant& value)
{
    static const int variantType = qMetaTypeId<QDBusVariant>();
    const int type = value.userType();
    qint64 size = 1;
    if (type == QMetaType::QString) {
        size += value.toString().size();
    } else if (type == QMetaType::QByteArray) {
        size += value.toByteArray().size();
    } else if (type == QMetaType::QStringList) {
        const QStringList texts = value.toStringList();
        for (const QString& text : texts) {
            size += 1 + text.size();
        }
    } else if (type == QMetaType::QVariantMap) {
        const QVariantMap map = value.toMap();
        for (auto it = map.constBegin(); it != map.constEnd(); ++it) {
            size += it.key().size() + sizeOf(it.value());
        }
    } else if (type == variantType) {
        size += sizeOf(value.value<QDBusVariant>().variant());
    }
    return size;
}

} // namespace

QVariantMap plainAttributes(const QVariantMap& attributes)
{
    constexpr qint64 maximumSize = qint64(64) * 1024;
    QVariantMap plain;
    for (auto it = attributes.constBegin(); it != attributes.constEnd(); ++it) {
        const QVariant value = plainValue(it.value());
        const qint64 size = it.key().size() + sizeOf(value);
        if (size > maximumSize) {
            qCWarning(serviceLog) << "QVariantMap plainAttributes(const QVariantMap&)"
                                  << "Attribute too large" << it.key().left(32) << size;
            continue;
        }
        plain.insert(it.key(), value);
    }
    return plain;
}
