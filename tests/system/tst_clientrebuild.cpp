// SPDX-License-Identifier: BSD-3-Clause
#include "clientsession.h"
#include "librarydatabase.h"
#include "picturefile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QProcess>
#include <QTest>

#include <csignal>

namespace {

using Result = ClientSession::Result;

Result run(const QStringList& arguments)
{
    return ClientSession::runJson(arguments);
}

/// A user with three moodsets, which were made from the pictures a, b and c. The moodset of b has
/// the name "Kept".
struct EditedSession : ClientSession
{
    bool prepare() const
    {
        bool isDone = true;
        for (const char* const name : {"a", "b", "c"}) {
            const QString path = picture(QLatin1String(name));
            isDone = isDone && writePicture(path, QSize(3, 2))
                && run({QStringLiteral("create"), path}).exitCode == 0;
        }
        return isDone
            && run({QStringLiteral("edit"), QStringLiteral("b"), QStringLiteral("name=Kept"),
                    QStringLiteral("highlight=#102030")})
                   .exitCode
            == 0;
    }

    QString picture(const QString& name) const
    {
        return folders.elsewhere(name + QStringLiteral(".png"));
    }
};

/// The pictures of the favourites, without their suffixes, in the order of the table.
QString favorites()
{
    QStringList names;
    const QJsonArray moodsets = run({QStringLiteral("moodsets"), QStringLiteral("--favorites")})
                                    .result()
                                    .value(QLatin1String("moodsets"))
                                    .toArray();
    for (const QJsonValue& moodset : moodsets) {
        names.append(
            QFileInfo(moodset.toObject().value(QLatin1String("file")).toString()).baseName());
    }
    return names.join(QLatin1Char(' '));
}

QJsonObject checkup(const QString& id)
{
    const QJsonArray checkups =
        run({QStringLiteral("doctor")}).result().value(QLatin1String("checkups")).toArray();
    for (const QJsonValue& value : checkups) {
        if (value.toObject().value(QLatin1String("id")) == id) {
            return value.toObject();
        }
    }
    return {};
}

int idOf(const QString& name)
{
    return run({QStringLiteral("show"), name})
        .result()
        .value(QLatin1String("moodset"))
        .toObject()
        .value(QLatin1String("id"))
        .toInt();
}

bool isKept()
{
    return run({QStringLiteral("show"), QStringLiteral("Kept")})
               .result()
               .value(QLatin1String("moodset"))
               .toObject()
               .value(QLatin1String("colors"))
               .toObject()
               .value(QLatin1String("highlight"))
        == QLatin1String("#ff102030");
}

} // namespace

/// Tests that edits survive when a library is rebuilt or restored, also if that is interrupted.
class ClientRebuildTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void favouritesComeBackInTheirOrder_data()
    {
        QTest::addColumn<bool>("isRebuilt");
        QTest::newRow("restore") << false;
        QTest::newRow("rebuild") << true;
    }

    void favouritesComeBackInTheirOrder()
    {
        QFETCH(bool, isRebuilt);
        const EditedSession session;
        QVERIFY(session.prepare());
        for (const char* const name : {"c", "a", "Kept"}) {
            const QStringList words{
                QStringLiteral("favorite"), QLatin1String(name), QStringLiteral("on")};
            QCOMPARE(run(words).exitCode, 0);
            // The daemon notes the time to the second.
            const qint64 second = QDateTime::currentSecsSinceEpoch();
            QTRY_VERIFY(QDateTime::currentSecsSinceEpoch() > second);
        }
        QCOMPARE(favorites(), QStringLiteral("c a b"));
        const QString backup = session.folders.elsewhere(QStringLiteral("backup.json"));
        QCOMPARE(run({QStringLiteral("backup"), backup}).exitCode, 0);

        if (isRebuilt) {
            QCOMPARE(run({QStringLiteral("doctor"), QStringLiteral("--rebuild")}).exitCode, 0);
        } else {
            for (const char* const name : {"c", "a", "Kept"}) {
                QCOMPARE(run({QStringLiteral("remove"), QLatin1String(name)}).exitCode, 0);
            }
            QCOMPARE(run({QStringLiteral("restore"), backup}).exitCode, 0);
        }

        QCOMPARE(favorites(), QStringLiteral("c a b"));
        // A correct favourite is not changed, which would take a second.
        QCOMPARE(run({QStringLiteral("restore"), backup}).exitCode, 0);
        QCOMPARE(favorites(), QStringLiteral("c a b"));
    }

    void nothingChangesWhereTheEditsCannotBeSaved()
    {
        const EditedSession session;
        QVERIFY(session.prepare());
        const QByteArray state = qgetenv("XDG_STATE_HOME");
        qputenv("XDG_STATE_HOME", QFile::encodeName(session.picture(QStringLiteral("a"))));

        const Result refused = run({QStringLiteral("doctor"), QStringLiteral("--rebuild")});
        qputenv("XDG_STATE_HOME", state);

        QCOMPARE(refused.exitCode, 1);
        QVERIFY2(
            refused.errors.contains(QStringLiteral("unfinished-rebuild-")),
            qPrintable(refused.errors));
        QVERIFY(isKept());
        const QFileInfo database(LibraryDatabase::standardPath());
        QCOMPARE(database.dir().entryList({QStringLiteral("*.before-rebuild*")}), QStringList());
    }

    void aLibraryThatIsNotThereIsBuilt()
    {
        const ClientSession session;

        const Result built = run({QStringLiteral("doctor"), QStringLiteral("--rebuild")});

        QCOMPARE(built.errors, QString());
        QCOMPARE(built.exitCode, 0);
        QVERIFY(QFileInfo::exists(LibraryDatabase::standardPath()));
    }

    void aDatabaseThatCannotBeReadIsKept()
    {
        const ClientSession session;
        QVERIFY(ClientSession::endDaemon());
        const QByteArray content("no database, though longer than a header of one is, as one sees"
                                 " when one counts its characters to a hundred");
        QVERIFY(InstalledBundles::write(LibraryDatabase::standardPath(), content));

        const Result built = run({QStringLiteral("doctor"), QStringLiteral("--rebuild")});

        QCOMPARE(built.exitCode, 1);
        QVERIFY2(
            built.errors.contains(QStringLiteral("without the edits")), qPrintable(built.errors));
        QFile kept(built.result().value(QLatin1String("oldDatabase")).toString());
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), content);
        QCOMPARE(run({QStringLiteral("wait")}).exitCode, 0);
    }

    /// The tool is killed later each time, until it ends before that.
    void noEditIsLostWhenARebuildIsCutShort()
    {
        const EditedSession session;
        QVERIFY(session.prepare());
        constexpr int firstMs = 5;
        int unfinished = 0;
        bool isFinished = false;
        for (int delayMs = firstMs; !isFinished; delayMs = delayMs * 5 / 4 + 1) {
            QProcess rebuild;
            rebuild.start(
                QStringLiteral(MOODSETCTL_EXECUTABLE),
                {QStringLiteral("doctor"), QStringLiteral("--rebuild")});
            isFinished = rebuild.waitForFinished(delayMs);
            rebuild.kill();
            rebuild.waitForFinished();
            if (isFinished) {
                QCOMPARE(rebuild.exitCode(), 0);
                break;
            }

            const QString mend =
                checkup(QStringLiteral("rebuild")).value(QLatin1String("mend")).toString();
            if (!mend.isEmpty()) {
                ++unfinished;
                QStringList words = mend.split(QLatin1Char(' '));
                QCOMPARE(words.takeFirst(), QStringLiteral("moodsetctl"));
                QCOMPARE(run({QStringLiteral("doctor"), QStringLiteral("--rebuild")}).exitCode, 1);
                const Result restored = run(words);
                QCOMPARE(restored.errors, QString());
            }
            QVERIFY2(isKept(), qPrintable(QString::number(delayMs)));
            QVERIFY(checkup(QStringLiteral("rebuild")).isEmpty());
        }
        QVERIFY(isKept());
        QVERIFY(unfinished > 0);
    }

    /// The daemon is killed several times while the edits are restored.
    void noEditIsLostWhenTheDaemonIsKilled()
    {
        const EditedSession session;
        QVERIFY(session.prepare());
        const QString backup = session.folders.elsewhere(QStringLiteral("backup.json"));
        QCOMPARE(run({QStringLiteral("backup"), backup}).exitCode, 0);
        constexpr int firstMs = 5;
        const QString id = QString::number(idOf(QStringLiteral("Kept")));
        int interruptions = 0;
        bool isRestored = false;
        for (int delayMs = firstMs; !isRestored; delayMs = delayMs * 5 / 4 + 1) {
            QCOMPARE(
                run({QStringLiteral("edit"), id, QStringLiteral("name=X"),
                     QStringLiteral("highlight=red"), QStringLiteral("favorite=on")})
                    .exitCode,
                0);
            QProcess restore;
            restore.start(
                QStringLiteral(MOODSETCTL_EXECUTABLE), {QStringLiteral("restore"), backup});
            isRestored = restore.waitForFinished(delayMs);
            QVERIFY(ClientSession::endDaemon(SIGKILL));
            // It may have ended at the same time as the daemon.
            QVERIFY(restore.state() == QProcess::NotRunning || restore.waitForFinished());
            QVERIFY(restore.exitStatus() == QProcess::NormalExit);
            // Whether it has failed depends on the moment: it starts a daemon if there is none yet.
            interruptions += isRestored ? 0 : 1;
            QVERIFY(QFileInfo::exists(backup));
        }
        QVERIFY(interruptions > 0);

        QCOMPARE(run({QStringLiteral("restore"), backup}).exitCode, 0);

        QVERIFY(isKept());
    }
};

QTEST_GUILESS_MAIN(ClientRebuildTest)

#include "tst_clientrebuild.moc"
