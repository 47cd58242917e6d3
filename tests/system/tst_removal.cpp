// SPDX-License-Identifier: BSD-3-Clause
#include "picturefile.h"
#include "themesession.h"

#include <QFile>
#include <QTest>

/// Tests what is announced when a file is removed.
class RemovalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void announcesAPictureAsAFileOnly()
    {
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(writePicture(picture, QSize(3, 2)));
        QVERIFY(session.start());
        QVERIFY(session.forgetAnnouncements());

        QVERIFY(QFile::remove(picture));

        QVERIFY(session.waitUntilComplete());
        QVERIFY(session.waitUntilAnnounced());
        QCOMPARE(session.client.announcements(), QList<int>({0, DaemonSession::LastAnnouncedType}));
    }

    void announcesAMoodsetFileAsAFileOnly()
    {
        ThemeSession session;
        const QString bundle = QStringLiteral("a");
        QVERIFY(ThemeSession::writeBundle(bundle, R"({"wallpaper": "w.png"})"));
        QVERIFY(session.startAtRest());
        const QString moodsets = QStringLiteral("SELECT count(*) FROM moodset");
        QCOMPARE(session.library().value(moodsets).toInt(), 1);

        QVERIFY(QFile::remove(ThemeSession::bundleFile(bundle)));

        QTRY_COMPARE_WITH_TIMEOUT(
            session.library().value(moodsets).toInt(), 0, DaemonProcess::deadlineMs);
        QCOMPARE(session.takeAnnouncements(), QList<int>{0});
    }
};

QTEST_GUILESS_MAIN(RemovalTest)

#include "tst_removal.moc"
