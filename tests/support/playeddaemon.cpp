// SPDX-License-Identifier: BSD-3-Clause
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDebug>
#include <QStandardPaths>
#include <QTimer>

#include <cstdlib>

/// Replaces the daemon in the tests of DaemonProcess. The variable PLAY decides what it does:
/// "run": takes the name, prints what it knows about its environment, and is idle twice
/// "crash": aborts
/// "exit": ends with status 3
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QByteArray play = qgetenv("PLAY");
    if (play == "crash") {
        std::abort();
    }
    if (play == "exit") {
        return 3;
    }

    qDebug() << "Pictures:" << QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    qWarning() << QStringLiteral("two\nlines");
    qCritical("grave");
    if (!QDBusConnection::sessionBus().registerService(QStringLiteral("com.zavro.moodsetd"))) {
        return 4;
    }
    // The object appears after the name, as the daemon's does, but with a longer delay.
    QObject object;
    QTimer::singleShot(20, &object, [&object] {
        QDBusConnection::sessionBus().registerObject(
            QStringLiteral("/com/zavro/moodsetd"), &object);
    });
    for (const int delay : {0, 50}) {
        QTimer::singleShot(delay, [delay] { qDebug() << "FileManager idle in" << delay; });
    }
    return QCoreApplication::exec();
}
