// SPDX-License-Identifier: BSD-3-Clause
#include "encodedpicture.h"
#include "pickersession.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QMimeData>
#include <QTest>
#include <QUrl>

/// The ways to a new moodset.
class PickerNewTest : public QObject
{
    Q_OBJECT

private:
    PickerWindow& window() { return m_session->window(); }
    QString path(const QString& name) const { return m_session->user.folders.elsewhere(name); }
    bool hasMoodset(const QString& file) const
    {
        return !m_session->user.library().moodset(file, QStringLiteral("favorite")).isEmpty();
    }

    static QImage picture()
    {
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        return picture;
    }

    bool writeBundle(const QString& name, const QByteArray& content) const
    {
        const QString folder = path(name);
        return InstalledBundles::write(folder + QStringLiteral("/%1.moodset").arg(name), content)
            && QDir(folder).mkpath(QStringLiteral("images"))
            && ThemeSession::writePicture(folder + QStringLiteral("/images/w.png"));
    }

    bool openAdding()
    {
        return m_session->goHome() && window().tap(QStringLiteral("Add a moodset"))
            && window().waitForPage(QStringLiteral("addPage"));
    }

    /// Types an address on the page for new moodsets, and has the app look at it.
    bool enter(const QString& address)
    {
        if (!openAdding() || !window().tap(QStringLiteral("address"))) {
            return false;
        }
        window().type(address);
        return window().tap(QStringLiteral("openAddress"));
    }

    bool drop(const QUrl& url)
    {
        QMimeData data;
        data.setUrls({url});
        return window().drop(data);
    }

    std::unique_ptr<PickerSession> m_session;

private Q_SLOTS:
    void initTestCase()
    {
        m_session = std::make_unique<PickerSession>();
        QVERIFY(picture().save(m_session->user.folders.picture(QStringLiteral("sea.png"))));
        QVERIFY(m_session->user.startAtRest());
        QVERIFY(m_session->open());
    }

    void init() { QVERIFY(m_session->goHome()); }

    void cleanup() { QVERIFY(m_session->verifyNoWarnings()); }

    void cleanupTestCase() { m_session.reset(); }

    void previewsAPictureBeforeAnythingIsStored()
    {
        const QString file = m_session->user.folders.picture(QStringLiteral("sea.png"));
        QVERIFY(window().tap(QStringLiteral("picturesTab")));
        QVERIFY(window().tap(QStringLiteral("sea.png")));
        QVERIFY(window().waitForPage(QStringLiteral("picturePage")));
        QVERIFY(window().waitFor(QStringLiteral("homePreview")));
        QVERIFY(!hasMoodset(file));

        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("createPicture")),
            QStringLiteral(u"“sea” is one of your moodsets now."));
        QVERIFY(hasMoodset(file));
        QCOMPARE(PickerSession::activeMoodset(), QString());
        QVERIFY(window().waitForPage(QStringLiteral("tabs")));
        QVERIFY(window().waitFor(QStringLiteral("Apply sea")));
        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("undo")),
            QStringLiteral(u"“sea” has been removed."));
        QVERIFY(window().waitUntilGone(QStringLiteral("Apply sea")));
    }

    void makesAndAppliesADroppedPicture()
    {
        const QString file = path(QStringLiteral("dropped.png"));
        QVERIFY(picture().save(file));
        QVERIFY(drop(QUrl::fromLocalFile(file)));
        QVERIFY(window().waitForPage(QStringLiteral("picturePage")));

        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("setPicture")),
            QStringLiteral(u"“dropped” is active."));
        QCOMPARE(PickerSession::activeMoodset(), file);
        QVERIFY(window().waitFor(QStringLiteral("dropped, active")));
    }

    void saysWhyThereIsNoMoodsetInAFile_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("reason");
        QTest::newRow("empty") << "empty.jpg" << QByteArray() << "The file is empty";
        QTest::newRow("text") << "text.jpg" << QByteArray("This is no picture.")
                              << "It is no picture of a format that the daemon decodes";
        QTest::newRow("half") << "half.jpg" << encodedPicture(picture(), "jpg").left(300)
                              << "The picture is damaged or cut off; its format is JPEG";
    }

    void saysWhyThereIsNoMoodsetInAFile()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, content);
        QFETCH(const QString, reason);
        QVERIFY(InstalledBundles::write(path(name), content));
        QVERIFY(drop(QUrl::fromLocalFile(path(name))));

        QVERIFY(window().waitFor(QStringLiteral("No moodset can be made of this")));
        QVERIFY(window().waitFor(name));
        QVERIFY(window().waitFor(reason));
        QVERIFY(!window().shows(QStringLiteral("setPicture")));
        QVERIFY(!hasMoodset(path(name)));
    }

    void makesAMoodsetOfAnAddress()
    {
        const QString address = QStringLiteral("/there.jpg");
        m_session->server.answer(address, encodedPicture(picture(), "jpg"));
        QVERIFY(enter(m_session->server.url(address).toString()));
        QVERIFY(window().waitForPage(QStringLiteral("picturePage")));
        QVERIFY(!window().waitForStart(QStringLiteral("The picture is on the network.")).isEmpty());
        QVERIFY(!window().shows(QStringLiteral("homePreview")));

        m_session->server.hold(address);
        m_session->forgetNotice();
        QVERIFY(window().tap(QStringLiteral("setPicture")));
        QVERIFY(window().waitFor(QStringLiteral("Please wait …")));
        QTRY_VERIFY_WITH_TIMEOUT(m_session->server.isHolding(address), DaemonProcess::deadlineMs);
        QCOMPARE(m_session->notice(), QString());
        m_session->server.release(address);
        const QString text = m_session->nextNotice();
        QVERIFY2(text.endsWith(QStringLiteral(u"” is active.")), qPrintable(text));
        const QString active = PickerSession::activeMoodset();
        QVERIFY2(QFileInfo::exists(active), qPrintable(active));
        QVERIFY(hasMoodset(active));
        // The daemon may hear of the file that it has downloaded itself.
        const QStringList warnings = m_session->user.daemon.takeWarnings();
        QVERIFY2(
            warnings.isEmpty() || warnings == DaemonSession::rowExistsWarnings(),
            qPrintable(warnings.join(QLatin1Char('\n'))));
    }

    void saysWhyThereIsNoMoodsetAtAnAddress_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << "/missing.jpg"
                                 << "The address does not answer as it should: ";
        QTest::newRow("a page") << "/page"
                                << "There is no picture at the address";
    }

    void saysWhyThereIsNoMoodsetAtAnAddress()
    {
        QFETCH(const QString, path);
        QFETCH(const QString, reason);
        m_session->server.answer(
            QStringLiteral("/page"), "<html></html>", "200 OK", "Content-Type: text/html\r\n");
        const QString address = m_session->server.url(path).toString();
        QVERIFY(enter(address));
        QVERIFY(window().waitFor(QStringLiteral("No moodset can be made of this")));
        QVERIFY(window().waitFor(address));
        QVERIFY(!window().waitForStart(reason).isEmpty());
    }

    void tellsThatAPictureHasNotCome()
    {
        // It is there when the app asks, and not when the daemon does.
        const QString address = QStringLiteral("/vanishing.jpg");
        m_session->server.answer(address, encodedPicture(picture(), "jpg"));
        QVERIFY(enter(m_session->server.url(address).toString()));
        QVERIFY(!window().waitForStart(QStringLiteral("The picture is on the network.")).isEmpty());
        m_session->server.answer(address, "", "404 Not Found");
        m_session->setNetworkTimeout(500);

        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("createPicture")),
            QStringLiteral("The picture has not come within the time. It may still come later."));
        QVERIFY(window().waitForPage(QStringLiteral("picturePage")));
        QVERIFY(window().find(QStringLiteral("createPicture"))->isEnabled());
        m_session->setNetworkTimeout(60000);
        m_session->user.daemon.takeWarnings();
    }

    void pastesAnAddress()
    {
        const QString address = QStringLiteral("/there.jpg");
        m_session->server.answer(address, encodedPicture(picture(), "jpg"));
        QGuiApplication::clipboard()->setText(
            m_session->server.url(address).toString() + QStringLiteral("\nand more"));
        QVERIFY(openAdding());
        QVERIFY(window().tap(QStringLiteral("Paste")));
        QVERIFY(window().waitForPage(QStringLiteral("picturePage")));
        QVERIFY(window().waitFor(m_session->server.url(address).toString()));
    }

    void pastesAFileByKey()
    {
        const QString file = path(QStringLiteral("copied.png"));
        QVERIFY(picture().save(file));
        auto* const data = new QMimeData;
        data->setUrls({QUrl::fromLocalFile(file)});
        QGuiApplication::clipboard()->setMimeData(data);
        window().press(Qt::Key_V, Qt::ControlModifier);
        QVERIFY(window().waitForPage(QStringLiteral("picturePage")));
        QVERIFY(window().waitFor(QStringLiteral("copied.png")));
    }

    void saysWhyATextIsOfNoUse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("reason");
        QTest::newRow("nothing") << ""
                                 << "There is nothing to paste. Copy an address or a picture's "
                                    "file first.";
        QTest::newRow("words") << "a walk by the sea"
                               << "This is no address of a picture. It should begin with https://.";
        QTest::newRow("no file") << "/no/such.jpg"
                                 << "There is no such file or folder.";
    }

    void saysWhyATextIsOfNoUse()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, reason);
        QGuiApplication::clipboard()->setText(text);
        window().press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(m_session->nextNotice(), reason);
        QVERIFY(window().waitForPage(QStringLiteral("tabs")));
    }

    void choosesAPictureOfTheDisk()
    {
        QVERIFY(QDir().mkpath(m_session->user.folders.picture(QStringLiteral("album"))));
        QVERIFY(picture().save(m_session->user.folders.picture(QStringLiteral("album/day.png"))));
        QVERIFY(openAdding());
        QVERIFY(window().tap(QStringLiteral("choosePicture")));
        QVERIFY(window().waitForPage(QStringLiteral("folderPage")));
        QVERIFY(window().tap(QStringLiteral("album")));
        QVERIFY(window().waitFor(QStringLiteral("day.png")));
        QVERIFY(!window().shows(QStringLiteral("sea.png")));
        QVERIFY(window().tap(QStringLiteral("The folder above")));
        QVERIFY(window().waitFor(QStringLiteral("sea.png")));
        QVERIFY(window().tap(QStringLiteral("album")));
        QVERIFY(window().tap(QStringLiteral("day.png")));
        QVERIFY(window().waitForPage(QStringLiteral("picturePage")));
        QVERIFY(window().waitFor(QStringLiteral("homePreview")));
    }

    void installsABundle()
    {
        const QString name = QStringLiteral("harbour");
        QVERIFY(writeBundle(name, R"({"displayName": "Harbour", "wallpaper": "w.png"})"));
        QVERIFY(drop(QUrl::fromLocalFile(path(name))));
        QVERIFY(window().waitForPage(QStringLiteral("bundlePage")));
        QVERIFY(window().waitFor(name));
        QVERIFY(!window().shows(QStringLiteral("fault")));
        QVERIFY(window().tap(QStringLiteral("install")));
        QVERIFY(window().waitForPage(QStringLiteral("tabs")));
        QVERIFY(window().waitFor(QStringLiteral("Apply Harbour")));
    }

    void saysWhyABundleIsRefused_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no JSON") << "cut" << QByteArray(R"({"displayName": )") << "cut.moodset: ";
        QTest::newRow("no wallpaper")
            << "bare" << QByteArray(R"({"displayName": "Bare"})") << "bare.moodset: ";
    }

    void saysWhyABundleIsRefused()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, content);
        QFETCH(const QString, reason);
        QVERIFY(writeBundle(name, content));
        QVERIFY(openAdding());
        QVERIFY(window().tap(QStringLiteral("chooseBundle")));
        QVERIFY(window().tap(QStringLiteral("The folder above")));
        QVERIFY(window().tap(QStringLiteral("elsewhere")));
        QVERIFY(window().tap(name));
        QVERIFY(window().tap(QStringLiteral("chooseFolder")));
        QVERIFY(window().waitForPage(QStringLiteral("bundlePage")));

        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("install")),
            QStringLiteral("This did not work: the daemon has not made a moodset of %1.moodset")
                .arg(name));
        QVERIFY(window().waitFor(QStringLiteral("fault")));
        const QString fault = PickerWindow::nameOf(window().find(QStringLiteral("fault")));
        QVERIFY2(fault.startsWith(reason) && fault.size() > reason.size(), qPrintable(fault));
        QVERIFY(window().find(QStringLiteral("install"))->isEnabled());
        m_session->user.daemon.takeWarnings();
    }

    void saysThatAFolderHoldsNoBundle()
    {
        QVERIFY(QDir().mkpath(path(QStringLiteral("nothing"))));
        QVERIFY(drop(QUrl::fromLocalFile(path(QStringLiteral("nothing")))));
        QVERIFY(!m_session->noticeAfter(QStringLiteral("install")).isEmpty());
        QVERIFY(window().waitFor(QStringLiteral("There is no moodset file in this folder.")));
    }

    void findsNewBundles()
    {
        QVERIFY(ThemeSession::writeBundle(
            QStringLiteral("fresh"), R"({"displayName": "Fresh", "wallpaper": "w.png"})"));
        QVERIFY(openAdding());
        QVERIFY(window().tap(QStringLiteral("Look for new bundles")));
        QVERIFY(m_session->goHome());
        QVERIFY(window().waitFor(QStringLiteral("Apply Fresh")));
    }
};

int main(int argc, char** argv)
{
    return runPickerTest<PickerNewTest>(argc, argv);
}

#include "tst_pickernew.moc"
