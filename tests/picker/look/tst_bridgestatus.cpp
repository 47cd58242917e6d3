// SPDX-License-Identifier: BSD-3-Clause
#include "bridgestatus.h"
#include "playedservice.h"
#include "statusreport.h"
#include "testfolder.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

/// What the app reads of the bridge's status.
class BridgeStatusTest : public QObject
{
    Q_OBJECT

private:
    static constexpr int DeadlineMs = 20000;

    /// The shells of a report, each as "name: text", with "!" before a failure.
    static QStringList lines(const QVariantList& shells)
    {
        QStringList lines;
        for (const QVariant& value : shells) {
            const QVariantMap shell = value.toMap();
            lines.append(
                QLatin1String(shell.value(QStringLiteral("failed")).toBool() ? "!" : "")
                + shell.value(QStringLiteral("name")).toString() + QStringLiteral(": ")
                + shell.value(QStringLiteral("text")).toString());
        }
        return lines;
    }

    /// What the app makes of what the bridge itself would print.
    static BridgeStatus::Report reportOf(const StateRecord& state, bool isRunning)
    {
        return BridgeStatus::Report::fromJson(
            QJsonDocument(statusToJson(state, isRunning)).toJson(QJsonDocument::Compact));
    }

    static AdapterState adapter(const QStringList& names)
    {
        AdapterState state;
        state.setting = QStringLiteral("auto");
        state.isPresent = true;
        for (const QString& name : names) {
            state.record.set.insert(name, QStringLiteral("value"));
        }
        return state;
    }

    /// A program in place of the bridge.
    QString program(const QByteArray& lines)
    {
        const QString path = m_folder.path(QStringLiteral("bridge"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + lines) < 0
            || !file.setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner)) {
            QTest::qFail("The program cannot be written", __FILE__, __LINE__);
        }
        return path;
    }

    TestFolder m_folder;

private Q_SLOTS:
    void cleanup() { QFile::remove(m_folder.path(QStringLiteral("bridge"))); }

    void tellsWhatReachesTheShells()
    {
        StateRecord state(m_folder.path(QStringLiteral("state.json")));
        state.adapters[QStringLiteral("gnome")] = adapter(
            {QStringLiteral("/org/gnome/desktop/background/picture-uri"),
             QStringLiteral("/org/gnome/desktop/background/picture-uri-dark"),
             QStringLiteral("/org/gnome/desktop/background/picture-options"),
             QStringLiteral("/org/gnome/desktop/interface/accent-color")});
        state.adapters[QStringLiteral("plasma")] =
            adapter({QStringLiteral("Image"), QStringLiteral("AccentColor")});
        state.adapters[QStringLiteral("sway")] = adapter({QStringLiteral("output * bg")});
        state.adapters[QStringLiteral("feedbackd")] =
            adapter({QStringLiteral("phone-incoming-call")});
        state.adapters[QStringLiteral("files")] = adapter({});
        state.adapters[QStringLiteral("portal")] = adapter({QStringLiteral("accent-color")});
        state.adapters[QStringLiteral("portal")].failure =
            QStringLiteral("It shows another colour.");

        const BridgeStatus::Report report = reportOf(state, true);
        QVERIFY(report.isKnown);
        QVERIFY(report.isRunning);
        QCOMPARE(
            lines(report.shells),
            QStringList(
                {QStringLiteral("Sounds of the phone: Tones"),
                 QStringLiteral("Your own files: Nothing so far"),
                 QStringLiteral("GNOME and Phosh: Accent colour, wallpaper"),
                 QStringLiteral("Plasma: Accent colour, wallpaper"),
                 QStringLiteral("!Applications: It shows another colour."),
                 QStringLiteral("sway: Wallpaper")}));
    }

    void leavesOutWhatIsNotThere()
    {
        StateRecord state(m_folder.path(QStringLiteral("state.json")));
        state.adapters[QStringLiteral("sway")] = adapter({QStringLiteral("output * bg")});
        state.adapters[QStringLiteral("sway")].isPresent = false;
        state.adapters[QStringLiteral("gnome")] = adapter({});
        state.adapters[QStringLiteral("gnome")].setting = QStringLiteral("off");

        QCOMPARE(lines(reportOf(state, true).shells), QStringList());
    }

    void knowsABridgeThatDoesNotRun()
    {
        StateRecord state(m_folder.path(QStringLiteral("state.json")));
        state.adapters[QStringLiteral("sway")] = adapter({QStringLiteral("output * bg")});

        const BridgeStatus::Report report = reportOf(state, false);
        QVERIFY(report.isKnown);
        QVERIFY(!report.isRunning);
        QCOMPARE(lines(report.shells), QStringList());
    }

    void understandsNothingElse_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("words") << QByteArray("No such option.");
        QTest::newRow("another object") << QByteArray("{\"adapters\": []}");
        QTest::newRow("a list") << QByteArray("[true]");
    }

    void understandsNothingElse()
    {
        QFETCH(const QByteArray, json);
        QVERIFY(!BridgeStatus::Report::fromJson(json).isKnown);
    }

    void asksTheProgram()
    {
        // It prints nothing unless it is asked in the way that the bridge understands.
        BridgeStatus status(program("[ \"$*\" = '--status --json' ] && "
                                    "echo '{\"running\": true, \"adapters\": []}'\n"));
        QVERIFY(!status.isKnown());
        QTRY_VERIFY_WITH_TIMEOUT(status.isKnown(), DeadlineMs);
        QVERIFY(status.isRunning());
    }

    void isSilentWithoutAProgram()
    {
        BridgeStatus nothing{QString()};
        nothing.askSoon();
        BridgeStatus gone(m_folder.path(QStringLiteral("gone")));
        BridgeStatus failing(program("echo '{\"running\": true}'; exit 1\n"));
        QSignalSpy answers(&failing, &BridgeStatus::changed);
        QVERIFY(answers.wait(DeadlineMs));
        QVERIFY(!nothing.isKnown());
        QVERIFY(!gone.isKnown());
        QVERIFY(!failing.isKnown());
    }

    void endsAProgramThatDoesNotAnswer()
    {
        BridgeStatus status(program("exec sleep 1000\n"));
        QSignalSpy answers(&status, &BridgeStatus::changed);
        QVERIFY(answers.wait(DeadlineMs));
        QVERIFY(!status.isKnown());
    }

    void asksAgainWhenTheBridgeStartsOrEnds()
    {
        const QString flag = m_folder.path(QStringLiteral("runs"));
        BridgeStatus status(program(
            "[ -e '" + QFile::encodeName(flag)
            + "' ] && state=true || state=false\necho \"{\\\"running\\\": $state}\"\n"));
        QTRY_VERIFY_WITH_TIMEOUT(status.isKnown(), DeadlineMs);
        QVERIFY(!status.isRunning());

        QFile file(flag);
        QVERIFY(file.open(QIODevice::WriteOnly));
        PlayedService bridge(
            QDBusConnection::SessionBus, QStringLiteral("com.zavro.moodsetbridge"));
        QVERIFY(bridge.appear());
        QTRY_VERIFY_WITH_TIMEOUT(status.isRunning(), DeadlineMs);

        QVERIFY(file.remove());
        bridge.vanish();
        QTRY_VERIFY_WITH_TIMEOUT(!status.isRunning(), DeadlineMs);
    }
};

QTEST_GUILESS_MAIN(BridgeStatusTest)

#include "tst_bridgestatus.moc"
