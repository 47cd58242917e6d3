// SPDX-License-Identifier: BSD-3-Clause
#include "bridge.h"
#include "portalsconf.h"
#include "restoration.h"
#include "statusreport.h"

#include <mgconfitem.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QJsonDocument>
#include <QLockFile>
#include <QTextStream>

namespace {

/// The name on the session bus. Only one process of a user has it. When another process asks for
/// the name, the first one ends.
const QString ServiceName = QStringLiteral("com.zavro.moodsetbridge");

enum class Replacing { No, Yes };

bool takeName(Replacing replacing)
{
    QDBusConnectionInterface* const bus = QDBusConnection::sessionBus().interface();
    if (!bus) {
        return false;
    }
    return bus->registerService(
               ServiceName,
               replacing == Replacing::Yes ? QDBusConnectionInterface::ReplaceExistingService
                                           : QDBusConnectionInterface::DontQueueService,
               QDBusConnectionInterface::AllowReplacement)
        == QDBusConnectionInterface::ServiceRegistered;
}

bool isRunning()
{
    QDBusConnectionInterface* const bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(ServiceName);
}

int fail(const QString& text)
{
    QTextStream(stderr) << "moodset-bridge: " << text << '\n';
    return 1;
}

int showStatus(bool asJson)
{
    const StateRecord state(BridgeFolder::ofUser().state());
    if (asJson) {
        QTextStream(stdout)
            << QJsonDocument(statusToJson(state, isRunning())).toJson(QJsonDocument::Compact)
            << '\n';
    } else {
        QTextStream(stdout) << statusToText(state, isRunning());
    }
    return 0;
}

int restore()
{
    if (!takeName(Replacing::Yes)) {
        return fail(QStringLiteral("The session bus does not answer."));
    }
    // Once the former process has released its lock, it sets nothing more.
    constexpr int limitMs = 5000;
    const BridgeFolder folder = BridgeFolder::ofUser();
    QLockFile lock(folder.lock());
    if (QDir(folder.path).exists() && !lock.tryLock(limitMs)
        && lock.error() == QLockFile::LockFailedError) {
        return fail(QStringLiteral("The running moodset-bridge does not end."));
    }
    StateRecord state(folder.state());
    Restoration restoration(
        makeAdapters(BridgeConfiguration::read(BridgeConfiguration::userFile()), folder.pictures()),
        &state);
    QObject::connect(
        &restoration, &Restoration::finished, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    restoration.start();
    QCoreApplication::exec();
    MGConfItem::sync();
    QStringList failures = restoration.failures();
    if (failures.isEmpty()) {
        PictureCopies(folder.pictures(), {}).removeAll();
        state.picture = {};
    }
    const QString storeFailure = state.store();
    if (!storeFailure.isEmpty()) {
        failures.append(storeFailure);
    }
    if (!failures.isEmpty()) {
        return fail(failures.join(QStringLiteral("\nmoodset-bridge: ")));
    }
    QTextStream(stdout)
        << "Your own settings are back, and moodset-bridge has ended until your next login.\n"
           "\"systemctl --user mask moodset-bridge\" keeps it from starting then.\n";
    return 0;
}

int follow()
{
    const BridgeFolder folder = BridgeFolder::ofUser();
    static_cast<void>(QDir().mkpath(folder.path)); // if this fails, writing to it fails, too
    QLockFile lock(folder.lock());
    lock.setStaleLockTime(0);
    const bool isLocked = lock.tryLock(0) || lock.error() != QLockFile::LockFailedError;
    if (!isLocked || !takeName(Replacing::No)) {
        return fail(QStringLiteral("It runs already, or there is no session bus."));
    }
    QObject::connect(
        QDBusConnection::sessionBus().interface(), &QDBusConnectionInterface::serviceUnregistered,
        qApp, [](const QString& name) {
            if (name == ServiceName) {
                QCoreApplication::quit();
            }
        });
    Bridge bridge(BridgeConfiguration::read(BridgeConfiguration::userFile()), folder);
    bridge.start();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("moodset-bridge"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MOODSETD_VERSION));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Hands the look and the sounds of the active moodset on to the shell that "
                       "runs. Without an option, it runs until the session ends."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption restoreOption(
        QStringLiteral("restore"),
        QStringLiteral("Ends the running bridge, and brings back your own settings."));
    const QCommandLineOption statusOption(
        QStringLiteral("status"), QStringLiteral("Shows what each adapter has set, or why not."));
    const QCommandLineOption jsonOption(
        QStringLiteral("json"), QStringLiteral("Shows the status as JSON."));
    const QCommandLineOption portalsOption(
        QStringLiteral("portals-conf"),
        QStringLiteral("Prints a portals.conf that newer portals need for the accent colour."));
    const QCommandLineOption installOption(
        QStringLiteral("install-portals-conf"),
        QStringLiteral("Makes it your own, if you have none."));
    parser.addOptions({restoreOption, statusOption, jsonOption, portalsOption, installOption});
    parser.process(application);
    if (!parser.positionalArguments().isEmpty()) {
        return fail(QStringLiteral("It takes options only; see --help."));
    }
    if (parser.isSet(portalsOption)) {
        QTextStream(stdout) << portalsConf();
        return 0;
    }
    if (parser.isSet(installOption)) {
        const QString failure = installPortalsConf();
        return failure.isEmpty() ? 0 : fail(failure);
    }
    if (parser.isSet(statusOption) || parser.isSet(jsonOption)) {
        return showStatus(parser.isSet(jsonOption));
    }
    return parser.isSet(restoreOption) ? restore() : follow();
}
