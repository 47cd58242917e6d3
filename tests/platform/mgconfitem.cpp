// SPDX-License-Identifier: BSD-3-Clause
#include "mgconfitem.h"

MGConfItem::MGConfItem(const QString& key, QObject* parent)
    : QObject(parent){Q_UNUSED(key)}

    QVariant MGConfItem::value() const
{
    return QVariant();
}

QVariant MGConfItem::value(const QVariant& defaultValue) const
{
    return defaultValue;
}

void MGConfItem::set(const QVariant& value)
{
    Q_UNUSED(value)
    Q_EMIT valueChanged();
}

void MGConfItem::sync()
{
}
