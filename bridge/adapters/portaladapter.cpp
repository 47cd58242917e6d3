// SPDX-License-Identifier: BSD-3-Clause
#include "portaladapter.h"

#include "settingsbackend.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <cmath>

namespace {

const QString BackendName = QStringLiteral("org.freedesktop.impl.portal.desktop.moodset");
const QString FrontendName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString ObjectPath = QStringLiteral("/org/freedesktop/portal/desktop");

/// The frontend returns a variant inside a variant.
std::optional<PortalColor> colorIn(const QDBusMessage& reply)
{
    QVariant value = reply.arguments().value(0);
    while (value.userType() == qMetaTypeId<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    if (value.userType() != qMetaTypeId<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)")) {
        return std::nullopt;
    }
    return qdbus_cast<PortalColor>(argument);
}

bool isColor(const std::optional<PortalColor>& given, const Argb& color)
{
    // This tolerance is smaller than one step of a channel with eight bits.
    constexpr double most = 255;
    constexpr double tolerance = 0.4 / most;
    return given && std::abs(given->red - color.red / most) < tolerance
        && std::abs(given->green - color.green / most) < tolerance
        && std::abs(given->blue - color.blue / most) < tolerance;
}

} // namespace

PortalAdapter::PortalAdapter(QObject* parent)
    : Adapter(parent)
    , m_frontend({FrontendName})
{
}

PortalAdapter::~PortalAdapter() = default;

QString PortalAdapter::name() const
{
    return QStringLiteral("portal");
}

void PortalAdapter::detect()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    m_backend = new SettingsBackend(this);
    if (!bus.registerObject(ObjectPath, this, QDBusConnection::ExportAdaptors)) {
        return;
    }
    // A frontend that starts later asks by itself. verify() checks this.
    connect(&m_frontend, &BusPresence::changed, this, &Adapter::doubted);
    m_frontend.follow();
    setPresent(true);
}

QJsonObject PortalAdapter::plan(const Appearance& appearance) const
{
    if (!appearance.look.highlight) {
        return {};
    }
    return {{SettingsBackend::setting(), appearance.look.highlight->hex()}};
}

// The name is taken after the colour is set, because a frontend loses a change that comes before
// the name.
void PortalAdapter::apply(const Appearance& appearance, const QJsonObject& plan, const Done& done)
{
    Q_UNUSED(plan)
    m_backend->setColor(*appearance.look.highlight);
    QDBusConnection bus = QDBusConnection::sessionBus();
    const bool hasName = bus.registerService(BackendName);
    done(hasName ? QString() : QStringLiteral("Another program has the name of the backend."));
}

void PortalAdapter::verify(const QJsonObject& plan, const Done& done)
{
    if (!m_frontend.isPresent()) {
        done({});
        return;
    }
    const std::optional<Argb> color =
        Argb::fromText(plan.value(SettingsBackend::setting()).toString());
    QDBusMessage call = QDBusMessage::createMethodCall(
        FrontendName, ObjectPath, QStringLiteral("org.freedesktop.portal.Settings"),
        QStringLiteral("Read"));
    call << SettingsBackend::nameSpace() << SettingsBackend::setting();
    call.setAutoStartService(false);
    auto* const watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(call, 2 * limitMs()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, color, done] {
        watcher->deleteLater();
        const bool isOurs =
            color && !watcher->isError() && isColor(colorIn(watcher->reply()), *color);
        done(
            isOurs ? QString()
                   : QStringLiteral("The portal does not give this colour. It may need a "
                                    "portals.conf; see \"moodset-bridge --portals-conf\"."));
    });
}

void PortalAdapter::restore(const AdapterRecord& record, const Done& done)
{
    // The setting ended with the process that offered it.
    Q_UNUSED(record)
    done({});
}
