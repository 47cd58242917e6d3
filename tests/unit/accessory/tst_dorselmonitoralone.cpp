// SPDX-License-Identifier: BSD-3-Clause
// Tests the monitor without a system bus, and without managers, because no factory is set.
#include "accessory/dorselmonitor.h"

#include "messagelog.h"
#include "mgconfitem.h"

#include <QDir>
#include <QTest>

namespace {

const QStringList PropertyWarnings{
    QStringLiteral("QDBusMessage DorselMonitor::propertyValue(const QString&)"),
    QStringLiteral("Failed to read DORSELD property:  \"org.freedesktop.DBus.Error.Disconnected\" "
                   ":  \"Not connected to D-Bus server\"")};

} // namespace

class DorselMonitorAloneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere");
        QFile marker(
            QDir::home().filePath(QStringLiteral(".zavro-startupwizard-usersession-done")));
        QVERIFY(marker.open(QIODevice::WriteOnly));
    }

    void thereIsOneMonitor()
    {
        MessageLog log;

        DorselMonitor* const monitor = DorselMonitor::instance();

        QVERIFY(monitor != nullptr);
        QCOMPARE(DorselMonitor::instance(), monitor);
        QCOMPARE(monitor->parent(), nullptr);
        QCOMPARE(log.takeWarnings(), PropertyWarnings + PropertyWarnings);
    }

    void missingManagerIsLogged()
    {
        MGConfItem(QStringLiteral("/desktop/zavro/theme/active_moodset"))
            .set(QStringLiteral("/a.moodset"));
        MessageLog log;

        const DorselMonitor monitor;

        const QStringList managerWarnings{
            QStringLiteral("DorselMonitor::DorselMonitor(QObject*)"),
            QStringLiteral("NULL MoodsetManager...")};
        QCOMPARE(log.takeWarnings(), PropertyWarnings + PropertyWarnings + managerWarnings);
    }

    void idCanBeSetAndCleared()
    {
        MessageLog log;
        DorselMonitor monitor;
        log.takeWarnings();

        monitor.setActiveDorselId(QStringLiteral("a"));
        QCOMPARE(monitor.activeDorselId(), QStringLiteral("a"));
        monitor.clearActiveDorselId();

        QCOMPARE(monitor.activeDorselId(), QString());
        QCOMPARE(
            MGConfItem(QStringLiteral("/desktop/zavro/theme/dorselid")).value(),
            QVariant(QString()));
    }
};

QTEST_GUILESS_MAIN(DorselMonitorAloneTest)

#include "tst_dorselmonitoralone.moc"
