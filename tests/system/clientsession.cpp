// SPDX-License-Identifier: BSD-3-Clause
#include "clientsession.h"

#include "daemonprocess.h"
#include "failunless.h"
#include "jsonschema.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTest>

namespace {

const auto Service = QStringLiteral("com.zavro.moodsetd");

QString serviceFile()
{
    const QString folder = QString::fromLocal8Bit(qgetenv("PRIVATE_MACHINE"))
        + QStringLiteral("/runtime/dbus-1/services");
    QDir().mkpath(folder);
    return folder + QStringLiteral("/com.zavro.moodsetd.service");
}

bool reloadBus()
{
    const QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReloadConfig"));
    return QDBusConnection::sessionBus().call(call).type() == QDBusMessage::ReplyMessage;
}

/// The command that starts a daemon with the user's directories and plugins. If the bus started it
/// by itself, it would have those of the bus.
QByteArray daemonCommand()
{
    QByteArray command("/usr/bin/env");
    for (const char* const name :
         {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "QT_PLUGIN_PATH"}) {
        if (qEnvironmentVariableIsSet(name)) {
            command += QByteArray(" ") + name + '=' + qgetenv(name);
        }
    }
    return command + " " MOODSETD_EXECUTABLE;
}

} // namespace

QJsonObject ClientSession::Result::json() const
{
    return QJsonDocument::fromJson(output.toUtf8()).object();
}

QJsonObject ClientSession::Result::result() const
{
    return json().value(QLatin1String("result")).toObject();
}

ClientSession::ClientSession()
    : m_bundles(folders)
{
    failUnless(
        folders.isValid() && m_bundles.isValid() && m_store.isValid(), "the user cannot be made");
    qputenv("XDG_STATE_HOME", QFile::encodeName(folders.data() + QStringLiteral("/state")));
    // This test must not find the wallpapers of earlier users.
    qputenv("XDG_CACHE_HOME", QFile::encodeName(folders.data() + QStringLiteral("/cache")));
    failUnless(letDaemonBeStarted(), "the bus cannot be told of the daemon");
}

ClientSession::~ClientSession()
{
    failUnless(endDaemon() && letDaemonBeStarted(false), "the daemon does not end");
    qunsetenv("XDG_STATE_HOME");
    qputenv("XDG_CACHE_HOME", m_cache);
}

bool ClientSession::letDaemonBeStarted(bool isStarted)
{
    QFile file(serviceFile());
    if (!isStarted) {
        return file.remove() && reloadBus();
    }
    const QByteArray text(
        "[D-BUS Service]\nName=com.zavro.moodsetd\nExec=" + daemonCommand() + '\n');
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
    return isWritten && reloadBus();
}

bool ClientSession::endDaemon(int signal)
{
    auto* const bus = QDBusConnection::sessionBus().interface();
    if (!bus->isServiceRegistered(Service)) {
        return true;
    }
    kill(pid_t(bus->servicePid(Service).value()), signal);
    return QTest::qWaitFor(
        [bus] { return !bus->isServiceRegistered(Service); }, DaemonProcess::deadlineMs);
}

ClientSession::Result ClientSession::run(
    const QStringList& arguments, const QStringList& environment)
{
    QProcess process;
    process.setEnvironment(QProcess::systemEnvironment() + environment);
    process.start(QStringLiteral(MOODSETCTL_EXECUTABLE), arguments);
    Result result;
    const bool hasEnded = QTest::qWaitFor(
        [&process] { return process.state() == QProcess::NotRunning; }, DaemonProcess::deadlineMs);
    if (hasEnded && process.exitStatus() == QProcess::NormalExit) {
        result.exitCode = process.exitCode();
    }
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.errors = QString::fromUtf8(process.readAllStandardError());
    return result;
}

TerminalRun ClientSession::runInTerminal(const QStringList& arguments, int columns)
{
    return TerminalRun::run(QStringLiteral(MOODSETCTL_EXECUTABLE), arguments, columns);
}

ClientSession::Result ClientSession::runJson(
    const QStringList& arguments, const QStringList& environment)
{
    Result result = run(QStringList(QStringLiteral("--json")) + arguments, environment);
    static JsonSchema schema(QStringLiteral(CLIENT_SCHEMA));
    const QJsonArray faults = schema.faults(result.output.toUtf8());
    const QByteArray list = QJsonDocument(faults).toJson(QJsonDocument::Compact);
    failUnless(
        faults.isEmpty(), ("not as the schema says: " + list + '\n' + result.output.toUtf8()));
    return result;
}
