// SPDX-License-Identifier: BSD-3-Clause
#include "accessibledesktop.h"

#include "daemonprocess.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QStandardPaths>
#include <QTest>

#include <algorithm>
#include <functional>

namespace {

const QString BusName = QStringLiteral("org.a11y.Bus");
const QString RegistryName = QStringLiteral("org.a11y.atspi.Registry");
const QString RootPath = QStringLiteral("/org/a11y/atspi/accessible/root");
const QString Accessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString ConnectionName = QStringLiteral("screen reader");

/// The services of screen readers are no programs for users, so that they are in no search path.
QString program(const QString& name)
{
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(
               name, {QStringLiteral("/usr/libexec"), QStringLiteral("/usr/lib/at-spi2-core")})
                           : found;
}

bool waitUntil(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, DaemonProcess::deadlineMs);
}

/// Asks the app to come to the front, as a launcher does.
void activateApp()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("com.zavro.moodsetpicker"), QStringLiteral("/com/zavro/moodsetpicker"),
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call.setArguments({QVariantMap()});
    QDBusConnection::sessionBus().call(call);
}

bool hasOwner(const QDBusConnection& bus, const QString& name)
{
    return bus.interface()->isServiceRegistered(name).value();
}

bool isControl(const QString& role)
{
    static const QStringList roles{
        QStringLiteral("push button"), QStringLiteral("toggle button"), QStringLiteral("check box"),
        QStringLiteral("slider"),      QStringLiteral("text"),          QStringLiteral("entry"),
        QStringLiteral("page tab"),    QStringLiteral("list item"),     QStringLiteral("button")};
    return roles.contains(role);
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const AccessibleNode& node)
{
    argument.beginStructure();
    argument << node.service << node.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, AccessibleNode& node)
{
    argument.beginStructure();
    argument >> node.service >> node.path;
    argument.endStructure();
    return argument;
}

AccessibleDesktop::AccessibleDesktop()
    : m_bus(ConnectionName)
{
    qDBusRegisterMetaType<AccessibleNode>();
    qDBusRegisterMetaType<AccessibleNodes>();
    for (QProcess* process : {&m_launcher, &m_registry, &m_app}) {
        process->setProcessChannelMode(QProcess::ForwardedChannels);
    }
}

AccessibleDesktop::~AccessibleDesktop()
{
    QDBusConnection::disconnectFromBus(ConnectionName);
    for (QProcess* process : {&m_app, &m_registry, &m_launcher}) {
        if (process->state() != QProcess::NotRunning) {
            process->kill();
            process->waitForFinished();
        }
    }
}

bool AccessibleDesktop::start()
{
    for (const QString& name :
         {QStringLiteral("at-spi-bus-launcher"), QStringLiteral("at-spi2-registryd")}) {
        if (program(name).isEmpty()) {
            qWarning().noquote() << name << "is not installed";
            return false;
        }
    }
    // It also tells the X server of the bus. Without that, Qt may ask for the registry before it
    // has a connection to the bus, and then never again.
    const QDBusConnection session = QDBusConnection::sessionBus();
    m_launcher.start(
        program(QStringLiteral("at-spi-bus-launcher")), {QStringLiteral("--launch-immediately")});
    if (!waitUntil([&] { return hasOwner(session, BusName); })) {
        return false;
    }
    const QDBusMessage call = QDBusMessage::createMethodCall(
        BusName, QStringLiteral("/org/a11y/bus"), BusName, QStringLiteral("GetAddress"));
    const QString address = session.call(call).arguments().value(0).toString();
    m_bus = QDBusConnection::connectToBus(address, ConnectionName);
    if (!m_bus.isConnected()) {
        qWarning().noquote() << "no bus of screen readers at" << address;
        return false;
    }
    m_registry.start(program(QStringLiteral("at-spi2-registryd")), QStringList());
    return waitUntil([this] { return hasOwner(m_bus, RegistryName); });
}

bool AccessibleDesktop::startApp(const QString& path)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    m_app.setProcessEnvironment(environment);
    // So high that all of each page is in it; what is beyond the edge is not told of as shown.
    m_app.start(path, {QStringLiteral("-qwindowgeometry"), QStringLiteral("1000x2300+0+0")});
    const AccessibleNode desktop{RegistryName, QDBusObjectPath(RootPath)};
    return waitUntil([&] {
        // Nothing here gives windows the keyboard, without which Qt tells nobody of them.
        activateApp();
        const AccessibleNodes apps = children(desktop);
        m_root = apps.value(0);
        return !apps.isEmpty() && !children(m_root).isEmpty();
    });
}

QList<AccessibleDesktop::Control> AccessibleDesktop::controls() const
{
    QList<Control> controls;
    const AccessibleNodes windows = children(m_root);
    for (const AccessibleNode& window : windows) {
        addControls(window, &controls);
    }
    return controls;
}

bool AccessibleDesktop::press(const QString& name) const
{
    return waitFor(name, [this](const Control& control) {
        const QString interface = QStringLiteral("org.a11y.atspi.Action");
        for (int action = 0;; ++action) {
            const QString kind =
                call(control.node, interface, QStringLiteral("GetName"), {action}).toString();
            if (kind.isEmpty()) {
                return false;
            }
            if (kind == QLatin1String("Press")) {
                return call(control.node, interface, QStringLiteral("DoAction"), {action}).toBool();
            }
        }
    });
}

bool AccessibleDesktop::waitFor(const QString& name) const
{
    return waitFor(name, [](const Control& /*control*/) { return true; });
}

/// Waits for a control with which `use` succeeds.
bool AccessibleDesktop::waitFor(
    const QString& name, const std::function<bool(const Control&)>& use) const
{
    QList<Control> all;
    const bool isUsed = waitUntil([&] {
        all = controls();
        // What lies on top comes last.
        const auto control = std::find_if(all.rbegin(), all.rend(), [&](const Control& one) {
            return one.isShown && one.name == name;
        });
        return control != all.rend() && use(*control);
    });
    if (!isUsed) {
        qWarning().noquote() << "no control of the name" << name << "but";
        for (const Control& control : qAsConst(all)) {
            qWarning().noquote() << "   " << control.role << control.name;
        }
    }
    return isUsed;
}

QVariant AccessibleDesktop::property(const AccessibleNode& node, const QString& name) const
{
    return call(
               node, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
               {Accessible, name})
        .value<QDBusVariant>()
        .variant();
}

QVariant AccessibleDesktop::call(
    const AccessibleNode& node, const QString& interface, const QString& method,
    const QVariantList& arguments) const
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(node.service, node.path.path(), interface, method);
    message.setArguments(arguments);
    // Qt does not answer all that is asked of a control that goes.
    constexpr int timeout = 2000;
    const QDBusMessage reply = m_bus.call(message, QDBus::Block, timeout);
    // The argument of an error is its text.
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

AccessibleNodes AccessibleDesktop::children(const AccessibleNode& node) const
{
    return qdbus_cast<AccessibleNodes>(call(node, Accessible, QStringLiteral("GetChildren")));
}

void AccessibleDesktop::addControls(const AccessibleNode& node, QList<Control>* controls) const
{
    constexpr uint focusable = 1U << 11U;
    constexpr uint showing = 1U << 25U;
    const QString role = call(node, Accessible, QStringLiteral("GetRoleName")).toString();
    const uint states =
        qdbus_cast<QList<uint>>(call(node, Accessible, QStringLiteral("GetState"))).value(0);
    if (isControl(role) || (states & focusable) != 0) {
        const bool isShown = (states & showing) != 0;
        controls->append({node, role, property(node, QStringLiteral("Name")).toString(), isShown});
    }
    const AccessibleNodes nodes = children(node);
    for (const AccessibleNode& child : nodes) {
        addControls(child, controls);
    }
}
