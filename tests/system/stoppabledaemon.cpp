// SPDX-License-Identifier: BSD-3-Clause
//
// The daemon with another end: SIGTERM makes it leave the event loop, and it then logs what is
// destroyed.
#include "accessory/dorselmonitor.h"
#include "indexing/filemanager.h"
#include "service/albumgallery.h"
#include "theme/scalingthread.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDebug>
#include <QSocketNotifier>

#include <csignal>

#include <sys/signalfd.h>
#include <unistd.h>

namespace {

sigset_t stopSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    return signals;
}

bool isOnBus()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(
        QStringLiteral("com.zavro.moodsetd"));
}

void logEnd(QObject* object, const char* name)
{
    QObject::connect(object, &QObject::destroyed, [name] {
        qDebug() << "gone:" << name << (isOnBus() ? "on the bus" : "off the bus");
    });
}

} // namespace

int main(int argc, char* argv[])
{
    // This comes before there are threads, so that no thread takes the signal.
    const sigset_t signals = stopSignal();
    sigprocmask(SIG_BLOCK, &signals, nullptr);

    QCoreApplication application(argc, argv);
    QSocketNotifier stop(signalfd(-1, &signals, SFD_CLOEXEC), QSocketNotifier::Read);
    QObject::connect(&stop, &QSocketNotifier::activated, &QCoreApplication::quit);

    keepScalingThread();
    AlbumGallery gallery;
    logEnd(&gallery, "AlbumGallery");
    for (QObject* object : gallery.findChildren<QObject*>()) {
        const QByteArray name = object->metaObject()->className();
        if (name == "SystemTheme" || name == "MoodsetAdaptor") {
            logEnd(object, object->metaObject()->className());
        }
    }
    logEnd(DorselMonitor::instance(), "DorselMonitor");
    logEnd(FileManager::fromRegistry(), "FileManager");
    return QCoreApplication::exec();
}
