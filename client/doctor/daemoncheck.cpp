// SPDX-License-Identifier: BSD-3-Clause
#include "checkup.h"

#include "daemonprocess.h"
#include "moodsetservice.h"
#include "text.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QLocale>

namespace {

using State = Checkup::State;

const auto Restart = QStringLiteral("systemctl --user restart moodsetd");

Checkup checkBus()
{
    const auto id = QStringLiteral("bus");
    if (MoodsetService::hasBus()) {
        return {id, State::Good, Text::tr("the session bus answers"), {}};
    }
    return {
        id, State::Problem, Text::tr("the session bus cannot be reached"),
        QStringLiteral("export DBUS_SESSION_BUS_ADDRESS=unix:path=$XDG_RUNTIME_DIR/bus")};
}

Checkup checkActivation()
{
    const auto id = QStringLiteral("activation");
    if (MoodsetService::canBeStarted()) {
        return {id, State::Good, Text::tr("the session bus can start the daemon"), {}};
    }
    return {
        id, State::Problem,
        Text::tr("the session bus cannot start the daemon: its service file "
                 "com.zavro.moodsetd.service is not where the bus looks"),
        QStringLiteral(
            "busctl --user call org.freedesktop.DBus / org.freedesktop.DBus ReloadConfig")};
}

Checkup checkRunning(const DaemonState& daemon)
{
    const auto id = QStringLiteral("daemon");
    if (daemon.processId == 0) {
        return {
            id, State::Advice, Text::tr("the daemon is not running"),
            QStringLiteral("systemctl --user start moodsetd")};
    }
    if (daemon.isOutdated) {
        return {
            id, State::Problem,
            Text::tr("the daemon still runs a program that has been replaced since"), Restart};
    }
    const QString version = daemon.version.isEmpty() ? QStringLiteral("?") : daemon.version;
    return {id, State::Good, Text::tr("the daemon runs, version %1").arg(version), {}};
}

/// The first value that a method of the user's service manager replies; invalid if it does not.
QVariant askServiceManager(
    const QString& path, const QString& interface, const QString& method,
    const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.systemd1"), path, interface, method);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    return QDBusConnection::sessionBus().call(call).arguments().value(0);
}

/// A property of a unit, as text. Empty if it cannot be read.
QString unitProperty(const QString& unit, const char* name)
{
    const QVariant property = askServiceManager(
        unit, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
        {QStringLiteral("org.freedesktop.systemd1.Unit"), QString::fromLatin1(name)});
    return property.value<QDBusVariant>().variant().toString();
}

/// The state of the daemon's unit. Empty if there is no service manager.
QString unitState()
{
    const QVariant unit = askServiceManager(
        QStringLiteral("/org/freedesktop/systemd1"),
        QStringLiteral("org.freedesktop.systemd1.Manager"), QStringLiteral("LoadUnit"),
        {QStringLiteral("moodsetd.service")});
    const QString path = unit.value<QDBusObjectPath>().path();
    if (path.isEmpty()) {
        return {};
    }
    const QString loaded = unitProperty(path, "LoadState");
    return loaded == QLatin1String("loaded") ? unitProperty(path, "ActiveState") : loaded;
}

Checkup checkUnit()
{
    const auto id = QStringLiteral("unit");
    const QString state = unitState();
    if (state.isEmpty()) {
        return {
            id, State::Unknown, Text::tr("no service manager of the user answers on the bus"), {}};
    }
    if (state == QLatin1String("failed")) {
        return {
            id, State::Problem, Text::tr("the unit moodsetd.service has failed"),
            QStringLiteral("systemctl --user reset-failed moodsetd && ") + Restart};
    }
    if (state == QLatin1String("not-found")) {
        return {
            id, State::Problem, Text::tr("there is no unit moodsetd.service"),
            QStringLiteral("systemctl --user daemon-reload")};
    }
    if (state == QLatin1String("masked")) {
        return {
            id, State::Problem, Text::tr("the unit moodsetd.service is masked, and cannot start"),
            QStringLiteral("systemctl --user unmask moodsetd")};
    }
    return {id, State::Good, Text::tr("the unit moodsetd.service is %1").arg(state), {}};
}

Checkup checkWatches(const DaemonState& daemon)
{
    const auto id = QStringLiteral("watches");
    const int limit = watchLimit();
    if (daemon.watches < 0 || limit < 0) {
        return {id, State::Unknown, Text::tr("the number of followed folders is not known"), {}};
    }
    const QLocale locale;
    const QString text = Text::tr("%1 folders are followed of %2 that the system allows")
                             .arg(locale.toString(daemon.watches), locale.toString(limit));
    // The limit is for all programs of the user together.
    constexpr int share = 2;
    if (daemon.watches > limit / share) {
        return {
            id, State::Problem, text,
            QStringLiteral("echo fs.inotify.max_user_watches=%1 | sudo tee "
                           "/etc/sysctl.d/60-moodsetd.conf && sudo sysctl --system && %2")
                .arg(4 * limit)
                .arg(Restart)};
    }
    return {id, State::Good, text, {}};
}

Checkup checkLimits(const DaemonState& daemon)
{
    const auto id = QStringLiteral("limits");
    if (daemon.addressLimit < 0 || daemon.addressPeak < 0) {
        return {id, State::Unknown, Text::tr("the limits of the daemon are not known"), {}};
    }
    const QLocale locale;
    const QString peak = locale.formattedDataSize(daemon.addressPeak, 1);
    if (daemon.addressLimit == 0) {
        return {
            id, State::Advice,
            Text::tr("the daemon has no limit of memory: a small file can claim a huge picture"),
            Restart};
    }
    // A picture of 108 megapixels needs this much in addition.
    constexpr qint64 needed = 1400LL * 1024 * 1024;
    const QString limit = locale.formattedDataSize(daemon.addressLimit, 1);
    if (daemon.addressLimit < needed) {
        return {
            id, State::Advice,
            Text::tr("the daemon may have %1 of memory, too little for the largest pictures")
                .arg(limit),
            QStringLiteral("systemctl --user edit moodsetd")};
    }
    return {
        id,
        State::Good,
        Text::tr("the daemon may have %1 of memory, and has had %2").arg(limit, peak),
        {}};
}

Checkup checkFileLimit(const DaemonState& daemon)
{
    const auto id = QStringLiteral("file-limit");
    if (daemon.fileLimit < 0) {
        return {id, State::Unknown, Text::tr("the limits of the daemon are not known"), {}};
    }
    const QString text =
        Text::tr("the daemon may have %1 files open").arg(QLocale().toString(daemon.fileLimit));
    // After its start, the daemon has 15 files open. A theme and some downloads need the others.
    constexpr qint64 needed = 64;
    return daemon.fileLimit < needed
        ? Checkup{id, State::Problem, Text::tr("%1, which is too few for its work").arg(text), QStringLiteral("systemctl --user edit moodsetd")}
        : Checkup{id, State::Good, text, {}};
}

} // namespace

Checkups checkDaemon()
{
    const DaemonState daemon = DaemonState::read(MoodsetService().processId());
    Checkups checkups{checkBus(), checkActivation(), checkUnit(), checkRunning(daemon)};
    if (daemon.processId != 0) {
        checkups.push_back(checkWatches(daemon));
        checkups.push_back(checkLimits(daemon));
        checkups.push_back(checkFileLimit(daemon));
    }
    return checkups;
}

QJsonObject checkupRecord(const Checkup& checkup)
{
    static const QStringList states{
        QStringLiteral("good"), QStringLiteral("advice"), QStringLiteral("problem"),
        QStringLiteral("unknown")};
    return {
        {QStringLiteral("id"), checkup.id},
        {QStringLiteral("state"), states.at(int(checkup.state))},
        {QStringLiteral("text"), checkup.text},
        {QStringLiteral("mend"), checkup.mend.isEmpty() ? QJsonValue() : QJsonValue(checkup.mend)}};
}
