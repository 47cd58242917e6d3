// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "argb.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

#include <optional>

/// A colour in the form of the portal: three numbers from 0 to 1, a `(ddd)` on the bus.
struct PortalColor
{
    double red = 0;
    double green = 0;
    double blue = 0;
};
Q_DECLARE_METATYPE(PortalColor)

QDBusArgument& operator<<(QDBusArgument& argument, const PortalColor& color);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalColor& color);

/// Settings by their names, grouped by their namespaces.
using PortalSettings = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(PortalSettings)

/// The bus interface of a backend of the settings portal, with one setting.
class SettingsBackend : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.impl.portal.Settings")
    Q_PROPERTY(uint version READ version CONSTANT)
public:
    /// The namespace and the name of the setting.
    static QString nameSpace();
    static QString setting();

    explicit SettingsBackend(QObject* parent);

    uint version() const { return 1; }
    /// Offers a colour from now on, and announces it if it has changed.
    void setColor(const Argb& color);

public Q_SLOTS:
    // The interface prescribes these names.
    // NOLINTBEGIN(readability-identifier-naming)
    QDBusVariant Read(
        const QString& namespaceName, const QString& key, const QDBusMessage& message);
    PortalSettings ReadAll(const QStringList& namespaces);
    // NOLINTEND(readability-identifier-naming)

Q_SIGNALS:
    void SettingChanged(
        const QString& namespaceName, const QString& key, const QDBusVariant& value);

private:
    std::optional<PortalColor> m_color;
};
