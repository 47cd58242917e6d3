// SPDX-License-Identifier: BSD-3-Clause
#include "command.h"
#include "daemonsession.h"
#include "installedbundles.h"
#include "openedfiles.h"

#include <QDir>
#include <QTest>

namespace {

const QString InstallPath = InstalledBundles::folder();

bool write(const QString& path, const QByteArray& content)
{
    return InstalledBundles::write(path, content);
}

/// Sets a modification time that no other file has.
bool makeOlder(const QString& path)
{
    static int days = 0;
    QFile file(path);
    return file.open(QIODevice::ReadWrite)
        && file.setFileTime(
            QDateTime::currentDateTime().addDays(--days), QFileDevice::FileModificationTime);
}

/// Calls a method of the daemon's interface with gdbus, a client without Qt.
bool callWithoutQt(const QString& method, const QStringList& arguments)
{
    return runCommand(
        QStringLiteral("gdbus"),
        QStringList{
            QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"),
            QStringLiteral("com.zavro.moodsetd"), QStringLiteral("--object-path"),
            QStringLiteral("/com/zavro/moodsetd"), QStringLiteral("--method"),
            QStringLiteral("com.zavro.moodsetd.") + method}
            + arguments);
}

/// Sends the signal of the store client for a package of the cover "cover-7".
bool tellOfInstalled(const QString& package)
{
    return runCommand(
        QStringLiteral("gdbus"),
        {QStringLiteral("emit"), QStringLiteral("--session"), QStringLiteral("--object-path"),
         QStringLiteral("/StoreClient"), QStringLiteral("--signal"),
         QStringLiteral("com.zavro.zavrostore.installedMoodset"), package,
         QStringLiteral("cover-7")});
}

/// A moodset file with a name, beside its wallpaper.
bool writePackage(const QString& package, const QByteArray& displayName)
{
    const QString path = InstallPath + package;
    return write(path + QStringLiteral("/images/wall.jpg"), "picture")
        && write(
               path + QStringLiteral("/set.moodset"),
               R"({"wallpaper": "wall.jpg", "highlightColor": "#ff102030", "displayName": ")"
                   + displayName + R"("})");
}

/// A daemon that knows the file types of bundles, and the bundles in /usr/share.
struct BundleSession : DaemonSession
{
    bool startWithBundles() { return m_bundles.isValid() && startOnBus(); }
    bool startAtRest() { return m_bundles.isValid() && DaemonSession::startAtRest(); }
    bool startWithSamplesAtRest()
    {
        for (const auto& name :
             {QStringLiteral("coast-light"), QStringLiteral("first-snow"),
              QStringLiteral("autumn-walk")}) {
            if (!InstalledBundles::installSample(name)) {
                return false;
            }
        }
        return startAtRest();
    }
    /// The display names of all moodsets, sorted.
    QStringList moodsetNames()
    {
        QStringList names;
        const LibraryDatabase::Rows rows =
            library().rows(QStringLiteral("SELECT displayName FROM file JOIN moodset ON id = "
                                          "moodset.fileId ORDER BY displayName"));
        for (const QVariantList& row : rows) {
            names.append(row.constFirst().toString());
        }
        return names;
    }
    QVariant moodsetColumn(const QString& column, const QString& path)
    {
        const LibraryDatabase::Rows rows = library().rows(
            QStringLiteral("SELECT %1 FROM moodset WHERE fileId = ?").arg(column), {fileId(path)});
        return rows.isEmpty() ? QVariant() : rows.constFirst().constFirst();
    }
    /// The paths of a moodset's tones by their kind.
    QMap<QString, QString> tones(const QString& path)
    {
        QMap<QString, QString> tones;
        const LibraryDatabase::Rows rows = library().rows(
            QStringLiteral("SELECT resourceType, path || '/' || fileName FROM resource "
                           "JOIN file ON file.id = resourceId "
                           "JOIN directory ON directory.id = directoryId WHERE fileId = ?"),
            {fileId(path)});
        for (const QVariantList& row : rows) {
            tones.insert(row.at(0).toString(), row.at(1).toString());
        }
        return tones;
    }

private:
    const InstalledBundles m_bundles{folders};
};

} // namespace

/// Tests how the daemon handles the bundles that are installed on the machine.
class BundlesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void samplesBecomeMoodsets()
    {
        BundleSession session;

        QVERIFY(session.startWithSamplesAtRest());

        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(),
            QStringList(
                {QStringLiteral("Autumn walk"), QStringLiteral("Coast light"),
                 QStringLiteral("First snow")}),
            DaemonProcess::deadlineMs);
        const QString sounds = InstallPath + QStringLiteral("coast-light/sounds/");
        const QMap<QString, QString> tones{
            {QStringLiteral("ringerToneFile"), sounds + QStringLiteral("tide.ogg")},
            {QStringLiteral("messageToneFile"), sounds + QStringLiteral("gull.ogg")},
            {QStringLiteral("calendarToneFile"), sounds + QStringLiteral("buoy.ogg")}};
        QCOMPARE(
            session.tones(InstallPath + QStringLiteral("coast-light/coast-light.moodset")), tones);
        const QString snow = InstallPath + QStringLiteral("first-snow/first-snow.moodset");
        QCOMPARE(session.moodsetColumn(QStringLiteral("favorite"), snow).toInt(), 0);
        QCOMPARE(
            session.moodsetColumn(QStringLiteral("highlightColor"), snow).toString(),
            QStringLiteral("lightsteelblue"));
        const LibraryDatabase::Rows indexed{
            {QStringLiteral("chestnut.ogg"), QStringLiteral("Chestnuts")},
            {QStringLiteral("lantern.ogg"), QStringLiteral("Lantern")},
            {QStringLiteral("leaf.ogg"), QStringLiteral("Leaf")}};
        QTRY_COMPARE_WITH_TIMEOUT(
            session.library().rows(
                QStringLiteral("SELECT fileName, displayName FROM file WHERE directoryId = (SELECT "
                               "id FROM directory WHERE path = ?) ORDER BY fileName"),
                {InstallPath + QStringLiteral("autumn-walk/tones")}),
            indexed, DaemonProcess::deadlineMs);
        QVERIFY(session.daemon.waitForLine(QStringLiteral("InstallManager idle in")));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void packageIsInstalledWhileRunning_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("by its path")
            << QStringLiteral("installPackage") << QStringList{InstallPath + QStringLiteral("new")};
        QTest::newRow("by a refresh") << QStringLiteral("refreshMoodsets") << QStringList();
    }

    void packageIsInstalledWhileRunning()
    {
        QFETCH(QString, method);
        QFETCH(QStringList, arguments);
        BundleSession session;
        QVERIFY(session.startWithBundles());
        QVERIFY(writePackage(QStringLiteral("new"), "New"));

        QVERIFY(callWithoutQt(method, arguments));

        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("New")}, DaemonProcess::deadlineMs);
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void storeTellsOfAPackageAndItsCover()
    {
        BundleSession session;
        QVERIFY(session.startWithBundles());
        QVERIFY(writePackage(QStringLiteral("new"), "New"));

        QVERIFY(tellOfInstalled(InstallPath + QStringLiteral("new")));

        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("New")}, DaemonProcess::deadlineMs);
        const LibraryDatabase::Rows expected{
            {session.fileId(InstallPath + QStringLiteral("new/set.moodset")),
             QStringLiteral("cover-7")}};
        QCOMPARE(
            session.library().rows(QStringLiteral("SELECT fileId, dorselId FROM dorselId")),
            expected);
    }

    void installedPackageIsReadAgainThoughItsTimeIsTheSame_data()
    {
        QTest::addColumn<bool>("isByStore");
        QTest::newRow("by a call") << false;
        QTest::newRow("by the store") << true;
    }

    void installedPackageIsReadAgainThoughItsTimeIsTheSame()
    {
        QFETCH(bool, isByStore);
        const QString package = InstallPath + QStringLiteral("new");
        const auto install = [&] {
            return isByStore ? tellOfInstalled(package)
                             : callWithoutQt(QStringLiteral("installPackage"), {package});
        };
        BundleSession session;
        QVERIFY(session.startWithBundles());
        QVERIFY(writePackage(QStringLiteral("new"), "One"));
        QVERIFY(install());
        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("One")}, DaemonProcess::deadlineMs);
        QFile file(package + QStringLiteral("/set.moodset"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QDateTime time = file.fileTime(QFileDevice::FileModificationTime);
        QVERIFY(writePackage(QStringLiteral("new"), "Two"));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));

        QVERIFY(install());

        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("Two")}, DaemonProcess::deadlineMs);
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void editSurvivesANewVersionOfThePackage()
    {
        BundleSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(session.startWithBundles());
        const QString path = InstallPath + QStringLiteral("coast-light/coast-light.moodset");
        QTRY_COMPARE_WITH_TIMEOUT(session.tones(path).size(), 3, DaemonProcess::deadlineMs);
        const qint64 id = session.fileId(path);
        const QString gull = InstallPath + QStringLiteral("coast-light/sounds/gull.ogg");

        QVERIFY(callWithoutQt(
            QStringLiteral("saveAttributes"),
            {QStringLiteral("1"), QString::number(id),
             QStringLiteral("{'highlightColor': <'#ff010203'>, 'ringerVolume': <15>, 'resources': "
                            "<{'ringerToneFile': <{'url': <'file://%1'>}>}>}")
                 .arg(gull)}));
        QCOMPARE(session.tones(path).value(QStringLiteral("ringerToneFile")), gull);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray content = file.readAll().replace("\"Coast light\"", "\"Coast two\"");
        file.close();
        QVERIFY(write(path, content));
        QVERIFY(callWithoutQt(
            QStringLiteral("installPackage"), {InstallPath + QStringLiteral("coast-light")}));

        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("Coast two")},
            DaemonProcess::deadlineMs);
        QCOMPARE(session.fileId(path), id);
        QCOMPARE(
            session.moodsetColumn(QStringLiteral("highlightColor"), path).toString(),
            QStringLiteral("#ff010203"));
        QCOMPARE(session.moodsetColumn(QStringLiteral("ringerVolume"), path).toInt(), 15);
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void changedFileIsReadAgainAtARefresh()
    {
        BundleSession session;
        QVERIFY(writePackage(QStringLiteral("a"), "Before"));
        QVERIFY(session.startWithBundles());
        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("Before")},
            DaemonProcess::deadlineMs);

        QVERIFY(writePackage(QStringLiteral("a"), "After"));
        QVERIFY(makeOlder(InstallPath + QStringLiteral("a/set.moodset")));
        QVERIFY(callWithoutQt(QStringLiteral("refreshMoodsets"), {}));

        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("After")},
            DaemonProcess::deadlineMs);
    }

    void restartWithNothingChangedOpensNoFile()
    {
        BundleSession session;
        QVERIFY(session.startWithSamplesAtRest());
        QVERIFY(session.daemon.terminate());
        OpenedFiles opened(InstallPath);

        QVERIFY(session.startAtRest());

        QVERIFY(opened.isValid());
        QCOMPARE(opened.paths(), QStringList());
        QCOMPARE(session.moodsetNames().size(), 3);
    }

    void restartOpensTheChangedFileAlone()
    {
        BundleSession session;
        QVERIFY(session.startWithSamplesAtRest());
        QVERIFY(session.daemon.terminate());
        const QString changed = InstallPath + QStringLiteral("first-snow/first-snow.moodset");
        QVERIFY(makeOlder(changed));
        OpenedFiles opened(InstallPath);

        QVERIFY(session.startAtRest());

        QVERIFY(opened.isValid());
        QCOMPARE(opened.paths(), QStringList{changed});
        QCOMPARE(session.moodsetNames().size(), 3);
    }

    void brokenFileLosesItsMoodset()
    {
        BundleSession session;
        QVERIFY(writePackage(QStringLiteral("a"), "Name"));
        QVERIFY(session.startWithBundles());
        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("Name")}, DaemonProcess::deadlineMs);

        QVERIFY(write(InstallPath + QStringLiteral("a/set.moodset"), "{\"wallpaper\""));
        QVERIFY(
            callWithoutQt(QStringLiteral("installPackage"), {InstallPath + QStringLiteral("a")}));

        QTRY_COMPARE_WITH_TIMEOUT(session.moodsetNames(), QStringList(), DaemonProcess::deadlineMs);
        QCOMPARE(
            session.daemon.takeWarnings(),
            // This text has no end, and it is the end of the file.
            QStringList{QStringLiteral("Failed to parse moodset 10 12")});
        QVERIFY(session.fileId(InstallPath + QStringLiteral("a/set.moodset")) != 0);
    }

    void removedPackageLosesItsMoodset()
    {
        BundleSession session;
        QVERIFY(writePackage(QStringLiteral("a"), "Name"));
        QVERIFY(session.startWithBundles());
        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("Name")}, DaemonProcess::deadlineMs);

        QVERIFY(QDir(InstallPath + QStringLiteral("a")).removeRecursively());

        QTRY_COMPARE_WITH_TIMEOUT(session.moodsetNames(), QStringList(), DaemonProcess::deadlineMs);
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void replacedPackageIsReadAgain()
    {
        BundleSession session;
        QVERIFY(writePackage(QStringLiteral("a"), "Old"));
        QVERIFY(session.startWithBundles());
        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("Old")}, DaemonProcess::deadlineMs);

        QVERIFY(QDir(InstallPath + QStringLiteral("a")).removeRecursively());
        QTRY_COMPARE_WITH_TIMEOUT(session.moodsetNames(), QStringList(), DaemonProcess::deadlineMs);
        QVERIFY(writePackage(QStringLiteral("a"), "New"));
        QVERIFY(callWithoutQt(QStringLiteral("refreshMoodsets"), {}));

        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("New")}, DaemonProcess::deadlineMs);
    }

    void manyPackagesAllBecomeMoodsets()
    {
        constexpr int packages = 250;
        BundleSession session;
        QStringList names;
        for (int i = 0; i < packages; ++i) {
            const QString name = QStringLiteral("package %1").arg(i, 3, 10, QLatin1Char('0'));
            QVERIFY(writePackage(name, name.toUtf8()));
            names.append(name);
        }

        QVERIFY(session.startWithBundles());

        QTRY_COMPARE_WITH_TIMEOUT(session.moodsetNames(), names, DaemonProcess::deadlineMs);
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void tonesOfAPackageAreIndexed()
    {
        BundleSession session;
        const QString sounds = QStringLiteral("/usr/share/sounds/");
        QVERIFY(write(sounds + QStringLiteral("bells/tones/low.ogg"), "tone"));
        QVERIFY(write(sounds + QStringLiteral("bells/tones/unlisted.ogg"), "tone"));
        QVERIFY(write(
            sounds + QStringLiteral("bells/tones.index"),
            R"({"files": [{"fileName": "low.ogg", "displayName": "Low bell"}]})"));

        QVERIFY(session.startWithBundles());

        const LibraryDatabase::Rows expected{
            {QStringLiteral("low.ogg"), QStringLiteral("Low bell")}};
        QTRY_COMPARE_WITH_TIMEOUT(
            session.library().rows(
                QStringLiteral("SELECT fileName, displayName FROM file JOIN directory "
                               "ON directory.id = directoryId WHERE path = ?"),
                {sounds + QStringLiteral("bells/tones")}),
            expected, DaemonProcess::deadlineMs);
        QVERIFY(session.daemon.waitForLine(QStringLiteral("InstallManager idle in")));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void installedMoodsetIsAnnounced()
    {
        BundleSession session;
        QVERIFY(session.startWithBundles());
        QVERIFY(session.daemon.waitForLine(QStringLiteral("InstallManager idle in")));
        QVERIFY(!session.client.announcements().contains(1));
        QVERIFY(writePackage(QStringLiteral("new"), "New"));

        QVERIFY(
            callWithoutQt(QStringLiteral("installPackage"), {InstallPath + QStringLiteral("new")}));

        QTRY_VERIFY_WITH_TIMEOUT(
            session.client.announcements().contains(1), DaemonProcess::deadlineMs);
        QCOMPARE(session.moodsetNames(), QStringList{QStringLiteral("New")});
    }

    void newLocaleTranslatesTheName()
    {
        BundleSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(QFile::copy(
            QStringLiteral(GERMAN_CATALOGUE),
            QStringLiteral("/usr/share/translations/moodset-coast-light-de.qm")));
        QVERIFY(session.startWithBundles());
        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QStringLiteral("Coast light")},
            DaemonProcess::deadlineMs);
        QVERIFY(session.daemon.terminate());

        session.daemon.setEnvironment(QStringLiteral("LANG"), QStringLiteral("de_DE.UTF-8"));
        session.daemon.setEnvironment(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
        QVERIFY(session.startWithBundles());

        QTRY_COMPARE_WITH_TIMEOUT(
            session.moodsetNames(), QStringList{QString::fromUtf8("Küstenlicht")},
            DaemonProcess::deadlineMs);
    }

    void enteredBundleFileHasItsType_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("type");
        QTest::newRow("moodset") << QStringLiteral("a.moodset")
                                 << QStringLiteral("application/x-zavro-moodset");
        QTest::newRow("index") << QStringLiteral("a.index")
                               << QStringLiteral("application/x-zavro-index");
    }

    void enteredBundleFileHasItsType()
    {
        QFETCH(QString, fileName);
        QFETCH(QString, type);
        BundleSession session;
        QVERIFY(session.startWithBundles());
        const QString path = session.folders.elsewhere(fileName);
        QVERIFY(write(path, "{}"));

        QVERIFY(callWithoutQt(QStringLiteral("indexFile"), {QStringLiteral("file://") + path}));

        QCOMPARE(
            session.library()
                .value(QStringLiteral("SELECT mimeType FROM file WHERE fileName = ?"), {fileName})
                .toString(),
            type);
    }
};

QTEST_GUILESS_MAIN(BundlesTest)

#include "tst_bundles.moc"
