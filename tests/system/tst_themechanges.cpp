// SPDX-License-Identifier: BSD-3-Clause
#include "storewatcher.h"
#include "themekeys.h"
#include "themesession.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

namespace {

const QString Highlight = QStringLiteral("highlightColor");

/// A daemon with one picture, which is applied.
struct PictureSession : ThemeSession
{
    bool startWithTheme()
    {
        return writePicture(path) && startAtRest() && set(path)
            && takeAnnouncements() == QList<int>{1};
    }

    const QString path = folders.picture(QStringLiteral("a.png"));
};

/// A daemon with one bundle, which is applied.
struct BundleSession : ThemeSession
{
    bool startWithTheme()
    {
        return write("#ff010203") && startAtRest() && set(path)
            && takeAnnouncements() == QList<int>{1};
    }

    static bool write(const QByteArray& highlightColor)
    {
        return writeBundle(
            QStringLiteral("a"),
            R"({"wallpaper": "w.png", "version": 2, "ringerVolume": 20, "highlightColor": ")"
                + highlightColor + R"("})");
    }

    static bool install()
    {
        return BusClient::call(QStringLiteral("installPackage"), {package()}).type()
            == QDBusMessage::ReplyMessage;
    }

    static QString package() { return InstalledBundles::folder() + QLatin1Char('a'); }

    const QString path = bundleFile(QStringLiteral("a"));
};

const QString Foreign = QStringLiteral("'foreign'");

/// Makes another process overwrite all keys of the theme except the one with the active moodset.
/// After this, a test can see which keys the daemon writes again.
void overwriteTheme()
{
    for (const QString& key : ThemeKeys::names()) {
        if (key != ThemeKeys::Picture) {
            UserStore::write(key, Foreign);
        }
    }
}

/// The keys that still have the values of the other process.
QStringList foreignKeys()
{
    QStringList keys;
    for (const QString& key : ThemeKeys::names()) {
        if (UserStore::value(key) == Foreign) {
            keys.append(key);
        }
    }
    return keys;
}

/// The keys that are not colours, without the one with the active moodset.
QStringList otherKeys()
{
    return {ThemeKeys::HomeWallpaper, ThemeKeys::ApplicationWallpaper, ThemeKeys::ActiveMoodset};
}

} // namespace

/// Tests what other processes see when the theme changes, and when it does not.
class ThemeChangesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Changes that are written while the store's service handles the first key may be announced
    /// together.
    void keysAreAnnouncedInTheirOrder()
    {
        ThemeSession session;
        const QString path = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(ThemeSession::writePicture(path));
        QVERIFY(session.startAtRest());
        StoreWatcher watcher;

        QVERIFY(ThemeSession::set(path));

        QVERIFY(watcher.catchUp());
        const QStringList& keys = ThemeKeys::names();
        QCOMPARE(watcher.announcements().value(0), QStringList(keys.first()));
        for (int i = 1; i < keys.size(); ++i) {
            QVERIFY2(
                watcher.announcementOf(keys.at(i)) >= watcher.announcementOf(keys.at(i - 1)),
                qPrintable(keys.at(i)));
        }
        QVERIFY(
            watcher.announcementOf(ThemeKeys::PartnerSpace)
            > watcher.announcementOf(ThemeKeys::ActiveMoodset));
    }

    void secondRequestForTheThemeChangesNothing()
    {
        PictureSession session;
        QVERIFY(session.startWithTheme());
        const QString columns = QStringLiteral("*");
        const QStringList row = session.library().moodset(session.path, columns);
        StoreWatcher watcher;

        QVERIFY(ThemeSession::set(session.path));

        QVERIFY(watcher.catchUp());
        QCOMPARE(watcher.announcements(), QList<QStringList>());
        QCOMPARE(session.library().moodset(session.path, columns), row);
        QCOMPARE(session.takeAnnouncements(), QList<int>{1});
    }

    void secondRequestForTheThemeWritesItsWallpapersAnew()
    {
        PictureSession session;
        QVERIFY(session.startWithTheme());
        const QString home = ThemeSession::homeWallpaper(session.path);
        const QString application = ThemeSession::applicationWallpaper(session.path);
        QVERIFY(QFile::remove(home) && QFile::remove(application));

        QVERIFY(ThemeSession::set(session.path));

        QVERIFY(QFileInfo(home).size() > 0);
        QVERIFY(QFileInfo(application).size() > 0);
    }

    void secondRequestTakesBackWhatOthersWrote()
    {
        PictureSession session;
        QVERIFY(session.startWithTheme());
        const QStringList theme = ThemeSession::theme();
        UserStore::write(ThemeKeys::PrimaryColor, QStringLiteral("'#ff123456'"));

        QVERIFY(ThemeSession::set(session.path));

        QCOMPARE(ThemeSession::theme(), theme);
    }

    void editOfTheThemeRewritesItsColours()
    {
        PictureSession session;
        QVERIFY(session.startWithTheme());
        const QStringList profile = ThemeSession::profile();
        overwriteTheme();

        QVERIFY(session.edit(
            session.path,
            {{Highlight, QStringLiteral("#010203")}, {QStringLiteral("ringerVolume"), 5}}));

        QTRY_COMPARE_WITH_TIMEOUT(foreignKeys(), otherKeys(), DaemonProcess::deadlineMs);
        QCOMPARE(UserStore::value(ThemeKeys::HighlightColor), QStringLiteral("'#ff010203'"));
        QCOMPARE(
            UserStore::value(ThemeKeys::SecondaryHighlightColor), QStringLiteral("'#ffcc6666'"));
        QCOMPARE(UserStore::value(ThemeKeys::PrimaryColor), QStringLiteral("'#ffffffff'"));
        QCOMPARE(UserStore::value(ThemeKeys::SecondaryColor), QStringLiteral("'#b0ffffff'"));
        QCOMPARE(ThemeSession::profile(), profile);
        QCOMPARE(session.takeAnnouncements(), QList<int>{1});
    }

    void editRightAfterARequestReachesTheTheme()
    {
        PictureSession session;
        QVERIFY(session.startWithTheme());
        const QString other = session.folders.elsewhere(QStringLiteral("b.png"));
        QVERIFY(ThemeSession::writePicture(other));
        QVERIFY(ThemeSession::create(other));

        QVERIFY(session.setAndEdit(
            QUrl::fromLocalFile(other), other, {{Highlight, QStringLiteral("#ff010203")}}));

        QCOMPARE(ThemeSession::theme(), session.expectedTheme(other));
        QCOMPARE(UserStore::value(ThemeKeys::HighlightColor), QStringLiteral("'#ff010203'"));
    }

    /// The edit was sent before.
    void editOfAThemeThatAnotherProcessTakesAwayWritesNothing()
    {
        PictureSession session;
        QVERIFY(session.startWithTheme());
        QVERIFY(session.daemon.pause());
        session.callEdit(session.path, {{Highlight, QStringLiteral("#ff010203")}});
        UserStore::write(ThemeKeys::Picture, QStringLiteral("'/no/moodset'"));
        overwriteTheme();

        session.daemon.resume();

        QVERIFY(BusClient::isAnswered());
        QCOMPARE(
            session.library().moodset(session.path, QStringLiteral("highlightColor")),
            QStringList(QStringLiteral("#ff010203")));
        QCOMPARE(foreignKeys().size(), ThemeKeys::names().size() - 1);
    }

    void editOfAnotherMoodsetLeavesTheThemeAlone()
    {
        PictureSession session;
        QVERIFY(session.startWithTheme());
        const QString other = session.folders.elsewhere(QStringLiteral("b.png"));
        QVERIFY(ThemeSession::writePicture(other));
        QVERIFY(ThemeSession::create(other));
        StoreWatcher watcher;

        QVERIFY(session.edit(other, {{Highlight, QStringLiteral("#010203")}}));
        // The changes arrive in the order in which the daemon writes them.
        QVERIFY(session.edit(session.path, {{Highlight, QStringLiteral("#040506")}}));

        QTRY_VERIFY_WITH_TIMEOUT(!watcher.announcements().isEmpty(), DaemonProcess::deadlineMs);
        QCOMPARE(
            watcher.announcements(), QList<QStringList>{QStringList(ThemeKeys::HighlightColor)});
        QCOMPARE(UserStore::value(ThemeKeys::HighlightColor), QStringLiteral("'#ff040506'"));
    }

    void editIsFollowedAfterARestart()
    {
        PictureSession session;
        QVERIFY(session.startWithTheme());
        QVERIFY(session.daemon.terminate());
        QVERIFY(session.startAtRest());

        QVERIFY(session.edit(session.path, {{Highlight, QStringLiteral("#010203")}}));

        QTRY_COMPARE_WITH_TIMEOUT(
            UserStore::value(ThemeKeys::HighlightColor), QStringLiteral("'#ff010203'"),
            DaemonProcess::deadlineMs);
    }

    /// These are the colours of the library, which keeps those of the first version.
    void newVersionOfTheThemesPackageRewritesItsColours()
    {
        BundleSession session;
        QVERIFY(session.startWithTheme());
        const QStringList profile = ThemeSession::profile();
        overwriteTheme();
        QVERIFY(BundleSession::write("#ff040506"));

        QVERIFY(BundleSession::install());

        QTRY_COMPARE_WITH_TIMEOUT(foreignKeys(), otherKeys(), DaemonProcess::deadlineMs);
        QCOMPARE(UserStore::value(ThemeKeys::HighlightColor), QStringLiteral("'#ff010203'"));
        QCOMPARE(ThemeSession::profile(), profile);
    }

    void brokenVersionOfTheThemesPackageLeavesTheThemeAlone()
    {
        BundleSession session;
        QVERIFY(session.startWithTheme());
        overwriteTheme();
        StoreWatcher watcher;
        QVERIFY(InstalledBundles::write(session.path, "{"));

        QVERIFY(BundleSession::install());

        QTRY_COMPARE_WITH_TIMEOUT(
            session.library().moodset(session.path, QStringLiteral("version")), QStringList(),
            DaemonProcess::deadlineMs);
        QVERIFY(session.hasWrittenNothing(&watcher));
        // This text has no end, and it is the end of the file.
        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList(QStringLiteral("Failed to parse moodset 1 1")));
    }

    void removedPackageOfTheThemeLeavesTheThemeAlone()
    {
        BundleSession session;
        QVERIFY(session.startWithTheme());
        overwriteTheme();
        StoreWatcher watcher;

        QVERIFY(QDir(BundleSession::package()).removeRecursively());

        QTRY_COMPARE_WITH_TIMEOUT(session.fileId(session.path), 0, DaemonProcess::deadlineMs);
        QVERIFY(session.hasWrittenNothing(&watcher));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void createdMoodsetLeavesTheThemeAlone()
    {
        PictureSession session;
        QVERIFY(session.startWithTheme());
        const QString other = session.folders.elsewhere(QStringLiteral("b.png"));
        QVERIFY(ThemeSession::writePicture(other));
        const QStringList theme = ThemeSession::theme();

        QVERIFY(ThemeSession::create(other));

        QCOMPARE(ThemeSession::theme(), theme);
        QVERIFY(session.takeAnnouncements().contains(1));
        QCOMPARE(
            session.library().moodset(other, QStringLiteral("homeWallpaper")),
            QStringList(ThemeSession::homeWallpaper(other)));
    }

    void badRequestLeavesTheThemeAlone_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("text as a picture") << QStringLiteral("b.jpg") << QByteArray("text");
        QTest::newRow("drawing with text")
            << QStringLiteral("b.svg")
            << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>"
                          "<text y='9'>a</text></svg>");
        QTest::newRow("moodset that is no JSON") << QStringLiteral("b.moodset") << QByteArray("{");
        QTest::newRow("missing picture") << QStringLiteral("none.jpg") << QByteArray();
    }

    void badRequestLeavesTheThemeAlone()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        PictureSession session;
        QVERIFY(session.startWithTheme());
        const QStringList theme = ThemeSession::theme();
        const QString path = session.folders.elsewhere(name);
        QVERIFY(content.isEmpty() || InstalledBundles::write(path, content));

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(ThemeSession::theme(), theme);
        QVERIFY(!session.takeAnnouncements().contains(1));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }
};

QTEST_GUILESS_MAIN(ThemeChangesTest)

#include "tst_themechanges.moc"
