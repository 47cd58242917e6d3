// SPDX-License-Identifier: BSD-3-Clause
#include "adapters/settingsbackend.h"
#include "bridgesession.h"
#include "headlesssway.h"
#include "neededprograms.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

namespace {

const QString FrontendProgram = QStringLiteral("/usr/libexec/xdg-desktop-portal");
const QString GtkProgram = QStringLiteral("/usr/libexec/xdg-desktop-portal-gtk");
const QString FrontendName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString ObjectPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString Interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString Portal = QStringLiteral("portal");

QVariant unpacked(QVariant value)
{
    while (value.userType() == qMetaTypeId<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

/// The colour that the portal returns, as "r, g, b", or its error or type.
QString colorText(const QVariant& value)
{
    const QVariant content = unpacked(value);
    if (content.userType() != qMetaTypeId<QDBusArgument>()) {
        return QStringLiteral("no colour: ") + content.toString();
    }
    const auto color = qdbus_cast<PortalColor>(content.value<QDBusArgument>());
    constexpr double most = 255;
    return QStringLiteral("%1, %2, %3")
        .arg(qRound(color.red * most))
        .arg(qRound(color.green * most))
        .arg(qRound(color.blue * most));
}

/// Makes the bus able to start the backend of the toolkit, which it does not know by itself.
bool writeGtkService()
{
    const QDir folder(
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/dbus-1/services"));
    const QString name = QStringLiteral("org.freedesktop.impl.portal.desktop.gtk");
    QFile file(folder.filePath(name + QStringLiteral(".service")));
    const QString text =
        QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(name, GtkProgram);
    return folder.mkpath(QStringLiteral(".")) && file.open(QIODevice::WriteOnly)
        && file.write(text.toUtf8()) > 0 && file.flush()
        && QDBusConnection::sessionBus()
               .call(QDBusMessage::createMethodCall(
                   QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                   QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReloadConfig")))
               .type()
        == QDBusMessage::ReplyMessage;
}

} // namespace

/// Tests the bridge with a real client of a real portal.
class BridgePortalTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void noteSetting(const QString& group, const QString& key, const QDBusVariant& value)
    {
        if (group == SettingsBackend::nameSpace() && key == SettingsBackend::setting()) {
            m_told.append(colorText(value.variant()));
        }
    }

private:
    /// Starts the frontend, with the files of these backends.
    bool startFrontend(BridgeSession& session, const QStringList& portals)
    {
        session.folder.makeDirectory(QStringLiteral("portals"));
        for (const QString& portal : portals) {
            const QString name = portal.section(QLatin1Char('/'), -1);
            if (!QFile::copy(portal, session.folder.path(QStringLiteral("portals/") + name))) {
                return false;
            }
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(
            QStringLiteral("XDG_DESKTOP_PORTAL_DIR"),
            session.folder.path(QStringLiteral("portals")));
        environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("Phosh:GNOME"));
        m_frontend.setProcessEnvironment(environment);
        m_frontend.setProcessChannelMode(QProcess::MergedChannels);
        m_frontend.start(FrontendProgram, QStringList());
        return waitUntil([] {
            return QDBusConnection::sessionBus()
                .interface()
                ->isServiceRegistered(FrontendName)
                .value();
        });
    }

    static QDBusMessage read(const QString& group, const QString& key)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            FrontendName, ObjectPath, Interface, QStringLiteral("Read"));
        call << group << key;
        return QDBusConnection::sessionBus().call(call, QDBus::BlockWithGui);
    }

    static QString readColor()
    {
        const QDBusMessage reply = read(SettingsBackend::nameSpace(), SettingsBackend::setting());
        return reply.type() == QDBusMessage::ReplyMessage ? colorText(reply.arguments().value(0))
                                                          : reply.errorMessage();
    }

    QProcess m_frontend;
    QStringList m_told;

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<PortalColor>();
        if (skipsWithout({FrontendProgram, GtkProgram})) {
            return;
        }
        QVERIFY(QDBusConnection::sessionBus().connect(
            FrontendName, ObjectPath, Interface, QStringLiteral("SettingChanged"), this,
            SLOT(noteSetting(QString, QString, QDBusVariant))));
    }

    void cleanup()
    {
        m_frontend.kill();
        m_frontend.waitForFinished();
        m_told.clear();
        // The frontend of the next test is another process.
        QVERIFY(waitUntil([] {
            return !QDBusConnection::sessionBus()
                        .interface()
                        ->isServiceRegistered(FrontendName)
                        .value();
        }));
    }

    void givesAClientTheColourAndItsChanges()
    {
        BridgeSession session;
        BridgeSession::write({{BridgeSession::HighlightKey, QStringLiteral("#ff3366cc")}});
        QVERIFY(session.start());
        QVERIFY(startFrontend(session, {QStringLiteral(PORTAL_FILE)}));
        QVERIFY(waitUntil([] { return readColor() == QStringLiteral("51, 102, 204"); }));

        BridgeSession::write({{BridgeSession::HighlightKey, QStringLiteral("#ffcc6633")}});

        QVERIFY(waitUntil([&] { return m_told.contains(QStringLiteral("204, 102, 51")); }));
        QCOMPARE(readColor(), QStringLiteral("204, 102, 51"));
        QVERIFY(session.waitForFailure(Portal, QString()));
    }

    void comesLateAndGoesAndReturns()
    {
        BridgeSession session;
        BridgeSession::write({{BridgeSession::HighlightKey, QStringLiteral("#ff3366cc")}});
        QVERIFY(startFrontend(session, {QStringLiteral(PORTAL_FILE)}));
        QVERIFY(readColor() != QStringLiteral("51, 102, 204"));

        QVERIFY(session.start());
        QVERIFY(waitUntil([] { return readColor() == QStringLiteral("51, 102, 204"); }));
        // A client that has asked before is told.
        QVERIFY(waitUntil([&] { return m_told.contains(QStringLiteral("51, 102, 204")); }));

        session.kill();
        m_told.clear();
        BridgeSession::write({{BridgeSession::HighlightKey, QStringLiteral("#ffcc6633")}});
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return m_told.contains(QStringLiteral("204, 102, 51")); }));
        QCOMPARE(readColor(), QStringLiteral("204, 102, 51"));
    }

    void leavesAllElseToTheBackendOfTheToolkit()
    {
        // The backend of the toolkit needs a display.
        if (skipsWithout(HeadlessSway::programs())) {
            return;
        }
        HeadlessSway sway;
        BridgeSession session;
        QVERIFY(sway.start());
        // The bus starts the backend.
        QVERIFY(writeGtkService());
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("UpdateActivationEnvironment"));
        using Environment = QMap<QString, QString>;
        qDBusRegisterMetaType<Environment>();
        call << QVariant::fromValue(
            Environment{{QStringLiteral("WAYLAND_DISPLAY"), sway.display()}});
        QCOMPARE(QDBusConnection::sessionBus().call(call).type(), QDBusMessage::ReplyMessage);
        const QString wallpaper = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(wallpaper, QStringLiteral("#ff3366cc"));
        QVERIFY(session.start());

        QVERIFY(startFrontend(
            session,
            {QStringLiteral(PORTAL_FILE),
             QStringLiteral("/usr/share/xdg-desktop-portal/portals/gtk.portal")}));

        QVERIFY(waitUntil([] { return readColor() == QStringLiteral("51, 102, 204"); }));
        const QDBusMessage scheme =
            read(SettingsBackend::nameSpace(), QStringLiteral("color-scheme"));
        QCOMPARE(scheme.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(unpacked(scheme.arguments().value(0)).toUInt(), 0U);
        BridgeSession::write(
            {{QStringLiteral("/org/gnome/desktop/interface/color-scheme"),
              QStringLiteral("prefer-dark")}});
        QVERIFY(waitUntil([] {
            return unpacked(read(SettingsBackend::nameSpace(), QStringLiteral("color-scheme"))
                                .arguments()
                                .value(0))
                       .toUInt()
                == 1U;
        }));
    }

    void installsAPortalsConfOnce()
    {
        BridgeSession session;
        const QString path = qEnvironmentVariable("XDG_CONFIG_HOME")
            + QStringLiteral("/xdg-desktop-portal/portals.conf");

        QCOMPARE(session.run({QStringLiteral("--install-portals-conf")}), 0);

        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray content = file.readAll();
        QVERIFY(content.contains("\norg.freedesktop.impl.portal.Settings=moodset;gtk\n"));
        QCOMPARE(session.run({QStringLiteral("--portals-conf")}), 0);
        QCOMPARE(session.output().toUtf8(), content);
        QCOMPARE(session.run({QStringLiteral("--install-portals-conf")}), 1);
        QVERIFY(session.output().contains(QStringLiteral("exists, and stays as it is.")));
        QVERIFY(QFile::remove(path));
    }
};

QTEST_GUILESS_MAIN(BridgePortalTest)

#include "tst_bridgeportal.moc"
