// SPDX-License-Identifier: BSD-3-Clause
#include "bridgesession.h"
#include "gnomeshell.h"
#include "headlesssway.h"
#include "neededprograms.h"
#include "themesession.h"

#include <QImage>
#include <QJsonObject>
#include <QTest>

namespace {

QColor middleOf(const QString& path)
{
    const QImage image(path);
    return image.isNull() ? QColor() : image.pixelColor(image.rect().center());
}

} // namespace

/// Tests the way from a call of the real daemon to the shells. The session is that of the process,
/// so a test program has only one.
class BridgeDaemonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void handsOnWhatTheDaemonIsToldToSet()
    {
        ThemeSession theme;
        GnomeShell gnome;
        HeadlessSway sway;
        BridgeSession session;
        QVERIFY(gnome.appear());
        const bool hasSway = missingPrograms(HeadlessSway::programs()).isEmpty();
        QVERIFY(!hasSway || sway.start());
        QVERIFY(session.start());
        QVERIFY(theme.startAtRest());
        const QString red = theme.folders.elsewhere(QStringLiteral("red.png"));
        QVERIFY(ThemeSession::writePicture(red));

        QVERIFY(ThemeSession::set(red));

        const QColor color = middleOf(BridgeSession::stored(BridgeSession::WallpaperKey));
        QVERIFY(color.isValid());
        QVERIFY(waitUntil([&] {
            return BridgeSession::stored(BridgeSession::AccentKey) == QStringLiteral("red");
        }));
        QCOMPARE(middleOf(shownPicture()), color);
        if (hasSway) {
            QVERIFY(waitUntil([&] { return isClose(sway.middle(), color); }));
        }

        // The same path with another picture: no key changes, and the moodset keeps its colours.
        QImage other(60, 60, QImage::Format_RGB32);
        other.fill(Qt::blue);
        QVERIFY(other.save(red));
        QVERIFY(ThemeSession::set(red));
        const QColor second = middleOf(BridgeSession::stored(BridgeSession::WallpaperKey));
        QVERIFY(waitUntil([&] { return middleOf(shownPicture()) == second; }));

        // Of a burst, the last one counts.
        const QString green = theme.folders.elsewhere(QStringLiteral("green.png"));
        other.fill(Qt::green);
        QVERIFY(other.save(green));
        for (int i = 0; i < 50; ++i) {
            QVERIFY(ThemeSession::set(i % 2 == 0 ? red : green));
        }
        QVERIFY(waitUntil([&] {
            return BridgeSession::stored(BridgeSession::AccentKey) == QStringLiteral("green");
        }));
        const QColor last = middleOf(BridgeSession::stored(BridgeSession::WallpaperKey));
        QVERIFY(waitUntil([&] { return middleOf(shownPicture()) == last; }));
    }
};

QTEST_GUILESS_MAIN(BridgeDaemonTest)

#include "tst_bridgedaemon.moc"
