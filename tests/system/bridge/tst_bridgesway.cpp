// SPDX-License-Identifier: BSD-3-Clause
#include "bridgesession.h"
#include "headlesssway.h"
#include "neededprograms.h"

#include <QJsonObject>
#include <QTest>

namespace {

const QString Sway = QStringLiteral("sway");
const QString Blue = QStringLiteral("#ff2040c0");
const QColor Red(200, 30, 40);
const QColor Green(20, 160, 60);

bool shows(const HeadlessSway& sway, const QColor& color)
{
    const bool isShown = waitUntil([&] { return isClose(sway.middle(), color); });
    if (!isShown) {
        qWarning() << "shown:" << sway.middle() << "expected:" << color;
    }
    return isShown;
}

/// Whether the adapter has set something, and has checked it.
bool isSettled(BridgeSession* session)
{
    return session->waitForStatus(Sway, [](const QJsonObject& status) {
        return !status.value(QStringLiteral("time")).toString().isEmpty()
            && status.value(QStringLiteral("failure")).toString().isEmpty();
    });
}

} // namespace

/// Tests the bridge with a real sway.
class BridgeSwayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (skipsWithout(HeadlessSway::programs())) {
            return;
        }
    }

    void showsThePictureAgainAfterAReload()
    {
        HeadlessSway sway;
        BridgeSession session;
        QVERIFY(sway.start());
        QVERIFY(session.start());
        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Red), Blue);
        QVERIFY(shows(sway, Red));
        QVERIFY(isSettled(&session));

        QVERIFY(sway.reload());

        QVERIFY(shows(sway, Red));
        QVERIFY(isSettled(&session));
    }

    void showsThePictureOnASwayThatStartsAgain()
    {
        HeadlessSway sway;
        BridgeSession session;
        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Green), Blue);
        QVERIFY(session.start());
        QVERIFY(sway.start());
        QVERIFY(shows(sway, Green));
        QVERIFY(isSettled(&session));

        sway.kill();
        QVERIFY(session.waitForStatus(Sway, [](const QJsonObject& status) {
            return !status.value(QStringLiteral("present")).toBool();
        }));
        QVERIFY(sway.start());

        QVERIFY(shows(sway, Green));
        // Sway may have ended while the bridge was calling it.
        for (const QString& warning : session.takeWarnings()) {
            QVERIFY2(warning.startsWith(QLatin1String("sway: ")), qPrintable(warning));
        }
    }

    void restoresTheBackgroundOfTheUser()
    {
        HeadlessSway sway;
        BridgeSession session;
        QVERIFY(sway.start("output * bg #14a03c solid_color\n"));
        QVERIFY(shows(sway, Green));
        QVERIFY(session.start());
        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Red), Blue);
        QVERIFY(shows(sway, Red));

        QVERIFY2(session.run({QStringLiteral("--restore")}) == 0, qPrintable(session.output()));

        QVERIFY(shows(sway, Green));
    }

    void takesDataFoldersWithOddNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isTaken");
        QTest::newRow("umlaut and percent") << QString::fromUtf8("d\xc3\xa4ta%20") << true;
        QTest::newRow("space") << QStringLiteral("my data") << false;
        QTest::newRow("both quotes") << QStringLiteral("d'a\"ta") << false;
        QTest::newRow("line break") << QStringLiteral("da\nta") << false;
        QTest::newRow("dollar") << QStringLiteral("$HOME") << false;
    }

    void takesDataFoldersWithOddNames()
    {
        QFETCH(QString, name);
        QFETCH(bool, isTaken);
        HeadlessSway sway;
        BridgeSession session;
        QVERIFY(sway.start());
        session.folder.makeDirectory(name);
        session.setEnvironment(QStringLiteral("XDG_DATA_HOME"), session.folder.path(name));
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Red), Blue);

        if (isTaken) {
            QVERIFY(shows(sway, Red));
        } else {
            QVERIFY(session.waitForFailure(
                Sway, QStringLiteral("has characters that sway does not understand")));
        }
        session.kill();
        session.folder.removeTree(name);
    }

    void tellsThatThePainterIsMissing()
    {
        HeadlessSway sway;
        BridgeSession session;
        QVERIFY(sway.start("swaybg_command /bin/true\n"));
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Red), Blue);

        const QString failure =
            QStringLiteral("Sway has not started \"swaybg\", which shows pictures.");
        QVERIFY(session.waitForFailure(Sway, failure));
        QCOMPARE(session.takeWarnings(), QStringList(QStringLiteral("sway: ") + failure));
    }
};

QTEST_GUILESS_MAIN(BridgeSwayTest)

#include "tst_bridgesway.moc"
