// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QVariant>

/// A store that keeps nothing.
class MGConfItem : public QObject
{
    Q_OBJECT

public:
    explicit MGConfItem(const QString& key, QObject* parent = nullptr);

    QVariant value() const;
    QVariant value(const QVariant& defaultValue) const;
    void set(const QVariant& value);
    static void sync();

Q_SIGNALS:
    void valueChanged();
};
