// SPDX-License-Identifier: BSD-3-Clause
#include "clientsession.h"
#include "dconfcommand.h"
#include "librarydatabase.h"
#include "playedservice.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QTest>

#include <sys/resource.h>

namespace {

using Result = ClientSession::Result;

QJsonArray checkups(const QStringList& environment = {})
{
    return ClientSession::runJson({QStringLiteral("doctor")}, environment)
        .result()
        .value(QLatin1String("checkups"))
        .toArray();
}

QJsonObject find(const QJsonArray& checkups, const char* id)
{
    for (const QJsonValue& checkup : checkups) {
        if (checkup.toObject().value(QLatin1String("id")) == QLatin1String(id)) {
            return checkup.toObject();
        }
    }
    return {};
}

QString state(const char* id, const QStringList& environment = {})
{
    return find(checkups(environment), id).value(QLatin1String("state")).toString();
}

QString mend(const char* id)
{
    return find(checkups(), id).value(QLatin1String("mend")).toString();
}

bool startDaemon()
{
    return ClientSession::runJson({QStringLiteral("wait")}).exitCode == 0;
}

bool limitDaemon(__rlimit_resource resource, rlim_t limit)
{
    auto* const bus = QDBusConnection::sessionBus().interface();
    const auto process = pid_t(bus->servicePid(QStringLiteral("com.zavro.moodsetd")).value());
    rlimit limits{};
    if (prlimit(process, resource, nullptr, &limits) != 0) {
        return false;
    }
    limits.rlim_cur = limit;
    return prlimit(process, resource, &limits, nullptr) == 0;
}

} // namespace

/// Tests what doctor reports about each thing when it is wrong and when it is right.
class ClientDoctorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theUnitIsAsTheServiceManagerSays_data()
    {
        QTest::addColumn<QString>("loadState");
        QTest::addColumn<QString>("activeState");
        QTest::addColumn<QString>("state");
        QTest::addColumn<QString>("mend");
        const auto row = [](const char* name, const char* load, const char* active,
                            const char* state, const char* mend) {
            QTest::newRow(name) << QString::fromLatin1(load) << QString::fromLatin1(active)
                                << QString::fromLatin1(state) << QString::fromLatin1(mend);
        };
        row("running", "loaded", "active", "good", "");
        row("failed", "loaded", "failed", "problem",
            "systemctl --user reset-failed moodsetd && systemctl --user restart moodsetd");
        row("missing", "not-found", "inactive", "problem", "systemctl --user daemon-reload");
        row("masked", "masked", "inactive", "problem", "systemctl --user unmask moodsetd");
    }

    void theUnitIsAsTheServiceManagerSays()
    {
        QFETCH(QString, loadState);
        QFETCH(QString, activeState);
        QFETCH(QString, state);
        const ClientSession session;
        QCOMPARE(::state("unit"), QStringLiteral("unknown"));
        PlayedService manager(
            QDBusConnection::SessionBus, QStringLiteral("org.freedesktop.systemd1"));
        manager.answer(
            QStringLiteral("LoadUnit"),
            {QVariant::fromValue(QDBusObjectPath(QStringLiteral("/unit")))});
        manager.answer(QStringLiteral("Get"), [&](const QDBusMessage& call) {
            const bool isLoad = call.arguments().value(1) == QStringLiteral("LoadState");
            return call.createReply(
                QVariant::fromValue(QDBusVariant(isLoad ? loadState : activeState)));
        });
        QVERIFY(manager.appear());

        const QJsonObject unit = find(checkups(), "unit");

        QCOMPARE(unit.value(QLatin1String("state")).toString(), state);
        QTEST(unit.value(QLatin1String("mend")).toString(), "mend");
        manager.vanish();
    }

    void limitsAreThoseOfTheProcess()
    {
        constexpr rlim_t mib = rlim_t(1024) * 1024;
        const ClientSession session;
        QVERIFY(startDaemon());
        QVERIFY(limitDaemon(RLIMIT_AS, 2048 * mib));
        QCOMPARE(state("limits"), QStringLiteral("good"));
        QVERIFY(limitDaemon(RLIMIT_AS, 1024 * mib));
        QCOMPARE(state("limits"), QStringLiteral("advice"));
        QCOMPARE(mend("limits"), QStringLiteral("systemctl --user edit moodsetd"));
        QVERIFY(limitDaemon(RLIMIT_AS, RLIM_INFINITY));
        QCOMPARE(state("limits"), QStringLiteral("advice"));
        QVERIFY(limitDaemon(RLIMIT_NOFILE, 256));
        QCOMPARE(state("file-limit"), QStringLiteral("good"));
        QVERIFY(limitDaemon(RLIMIT_NOFILE, 40));
        QCOMPARE(state("file-limit"), QStringLiteral("problem"));
        QCOMPARE(mend("file-limit"), QStringLiteral("systemctl --user edit moodsetd"));
        QCOMPARE(state("watches"), QStringLiteral("good"));
    }

    void defaultsAreInADataFolderOrInTheStore()
    {
        const ClientSession session;
        const QStringList nowhere{QStringLiteral("XDG_DATA_DIRS=/none")};
        QCOMPARE(state("defaults", nowhere), QStringLiteral("problem"));
        UserStore::write(
            QStringLiteral("/com/zavro/profile/fallback/ringing.alert.volume"),
            QStringLiteral("'50'"));
        QCOMPARE(state("defaults", nowhere), QStringLiteral("good"));
        runDconf(
            {QStringLiteral("reset"),
             QStringLiteral("/com/zavro/profile/fallback/ringing.alert.volume")});
        QCOMPARE(state("defaults", nowhere), QStringLiteral("problem"));

        const QString folder = session.folders.elsewhere(QStringLiteral("share"));
        QVERIFY(InstalledBundles::write(
            folder + QStringLiteral("/moodsetd/profile-defaults"), "[fallback]\n"));

        QCOMPARE(
            state("defaults", {QStringLiteral("XDG_DATA_DIRS=") + folder}), QStringLiteral("good"));
    }

    void aBusThatCannotBeReachedIsAProblemLikeAnother()
    {
        const ClientSession session;
        const QStringList nowhere{QStringLiteral("DBUS_SESSION_BUS_ADDRESS=unix:path=/none")};

        const Result result = ClientSession::runJson({QStringLiteral("doctor")}, nowhere);

        QCOMPARE(result.exitCode, 1);
        for (const char* const id : {"bus", "activation", "database", "store"}) {
            QVERIFY2(state(id, nowhere) == QLatin1String("problem"), id);
        }
    }

    void aDaemonThatCannotBeStartedIsAProblem()
    {
        const ClientSession session;
        QCOMPARE(state("activation"), QStringLiteral("good"));
        QCOMPARE(state("daemon"), QStringLiteral("advice"));
        QVERIFY(ClientSession::letDaemonBeStarted(false));

        QCOMPARE(state("activation"), QStringLiteral("problem"));
        QVERIFY(mend("activation").contains(QStringLiteral("ReloadConfig")));

        QVERIFY(ClientSession::letDaemonBeStarted());
    }

    void theDatabaseIsLookedInto()
    {
        const ClientSession session;
        QCOMPARE(state("database"), QStringLiteral("problem"));
        QCOMPARE(mend("database"), QStringLiteral("moodsetctl wait"));
        QVERIFY(startDaemon());
        QCOMPARE(state("database"), QStringLiteral("good"));
        QCOMPARE(state("schema"), QStringLiteral("good"));
        QVERIFY(ClientSession::endDaemon());

        const QString path = LibraryDatabase::standardPath();
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        // The number of the version, in the header of each SQLite file.
        constexpr qint64 versionOffset = 63;
        QVERIFY(file.seek(versionOffset) && file.putChar(9));
        file.close();
        QCOMPARE(state("schema"), QStringLiteral("problem"));
        QCOMPARE(mend("schema"), QStringLiteral("moodsetctl doctor --rebuild"));

        QVERIFY(file.resize(file.size() / 2));
        QCOMPARE(state("database"), QStringLiteral("problem"));
        QCOMPARE(mend("database"), QStringLiteral("moodsetctl doctor --rebuild"));
    }

    void theThemeNamesFilesThatAreThere()
    {
        const ClientSession session;
        QCOMPARE(state("theme"), QStringLiteral("advice"));
        const QString gone = session.folders.elsewhere(QStringLiteral("gone.png"));
        UserStore::write(
            QStringLiteral("/desktop/zavro/theme/active_moodset"),
            QStringLiteral("'%1'").arg(gone));

        QCOMPARE(state("theme"), QStringLiteral("problem"));
        QCOMPARE(mend("theme"), QStringLiteral("moodsetctl set MOODSET"));
    }
};

QTEST_GUILESS_MAIN(ClientDoctorTest)

#include "tst_clientdoctor.moc"
