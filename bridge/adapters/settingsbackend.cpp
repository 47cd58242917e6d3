// SPDX-License-Identifier: BSD-3-Clause
#include "settingsbackend.h"

#include <QDBusConnection>
#include <QDBusMetaType>

#include <algorithm>

QString SettingsBackend::nameSpace()
{
    return QStringLiteral("org.freedesktop.appearance");
}

QString SettingsBackend::setting()
{
    return QStringLiteral("accent-color");
}

namespace {

/// Whether our namespace matches a pattern of a caller, which may end with "*".
bool asksForOurs(const QString& pattern)
{
    return pattern.isEmpty() || pattern == SettingsBackend::nameSpace()
        || (pattern.endsWith(QLatin1Char('*'))
            && SettingsBackend::nameSpace().startsWith(pattern.chopped(1)));
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const PortalColor& color)
{
    argument.beginStructure();
    argument << color.red << color.green << color.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalColor& color)
{
    argument.beginStructure();
    argument >> color.red >> color.green >> color.blue;
    argument.endStructure();
    return argument;
}

SettingsBackend::SettingsBackend(QObject* parent)
    : QDBusAbstractAdaptor(parent)
{
    qDBusRegisterMetaType<PortalColor>();
    qDBusRegisterMetaType<PortalSettings>();
}

void SettingsBackend::setColor(const Argb& color)
{
    constexpr double most = 255;
    const PortalColor offered{color.red / most, color.green / most, color.blue / most};
    const bool isOther = !m_color || m_color->red != offered.red || m_color->green != offered.green
        || m_color->blue != offered.blue;
    m_color = offered;
    if (isOther) {
        Q_EMIT SettingChanged(nameSpace(), setting(), QDBusVariant(QVariant::fromValue(offered)));
    }
}

QDBusVariant SettingsBackend::Read(
    const QString& namespaceName, const QString& key, const QDBusMessage& message)
{
    if (m_color && namespaceName == nameSpace() && key == setting()) {
        return QDBusVariant(QVariant::fromValue(*m_color));
    }
    message.setDelayedReply(true);
    static_cast<void>(QDBusConnection::sessionBus().send(message.createErrorReply(
        QStringLiteral("org.freedesktop.portal.Error.NotFound"),
        QStringLiteral("Requested setting not found"))));
    return {};
}

PortalSettings SettingsBackend::ReadAll(const QStringList& namespaces)
{
    const bool isAsked =
        namespaces.isEmpty() || std::any_of(namespaces.begin(), namespaces.end(), asksForOurs);
    if (!m_color || !isAsked) {
        return {};
    }
    return {{nameSpace(), {{setting(), QVariant::fromValue(*m_color)}}}};
}
