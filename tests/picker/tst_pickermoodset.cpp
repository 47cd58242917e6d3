// SPDX-License-Identifier: BSD-3-Clause
#include "pickersession.h"

#include <QColor>
#include <QFile>
#include <QImage>
#include <QTest>

namespace {

const QString Picture = QStringLiteral("a");
const QString OtherPicture = QStringLiteral("b");
const QString Bundle = QStringLiteral("Coast light");

QColor colorOf(const QQuickItem* item)
{
    return item->property("color").value<QColor>();
}

} // namespace

/// A moodset's page, and what is done with a moodset.
class PickerMoodsetTest : public QObject
{
    Q_OBJECT

private:
    PickerWindow& window() { return m_session->window(); }
    QString path(const QString& name) const
    {
        return m_session->user.folders.elsewhere(name + QStringLiteral(".png"));
    }
    /// A column of a moodset, as another process reads it.
    QString column(const QString& file, const QString& name) const
    {
        return m_session->user.library().moodset(file, name).value(0);
    }
    QString bundleFile() const { return ThemeSession::bundleFile(QStringLiteral("coast-light")); }

    bool makeMoodset(const QString& name, Qt::GlobalColor color) const
    {
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(color);
        return picture.save(path(name)) && ThemeSession::create(path(name));
    }

    /// Drags a view with a finger until its end is in view.
    bool dragToEnd(QQuickItem* view)
    {
        const auto isAtEnd = [view] { return view->property("atYEnd").toBool(); };
        constexpr int mostDrags = 40;
        constexpr qreal way = 200;
        for (int i = 0; i < mostDrags && !isAtEnd(); ++i) {
            const QPointF middle = PickerWindow::placeOf(view).center();
            window().drag(middle, middle - QPointF(0, way));
            if (!QTest::qWaitFor(
                    [view] { return !view->property("moving").toBool(); },
                    DaemonProcess::deadlineMs)) {
                return false;
            }
        }
        return isAtEnd();
    }

    std::unique_ptr<PickerSession> m_session;

private Q_SLOTS:
    void initTestCase()
    {
        m_session = std::make_unique<PickerSession>();
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(m_session->user.startAtRest());
        QVERIFY(makeMoodset(Picture, Qt::darkRed));
        QVERIFY(makeMoodset(OtherPicture, Qt::darkGreen));
        QVERIFY(m_session->open());
        QVERIFY(window().waitFor(Bundle));
    }

    void init() { QVERIFY(m_session->goHome()); }

    void cleanup() { QVERIFY(m_session->verifyNoWarnings()); }

    void cleanupTestCase() { m_session.reset(); }

    void appliesAMoodsetFromTheListAndUndoesIt()
    {
        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("Apply a")), QStringLiteral(u"“a” is active."));
        QCOMPARE(PickerSession::activeMoodset(), path(Picture));
        QVERIFY(window().waitFor(QStringLiteral("a, active")));
        // There was no moodset before it.
        QVERIFY(!window().shows(QStringLiteral("undo")));

        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("Apply b")), QStringLiteral(u"“b” is active."));
        QCOMPARE(PickerSession::activeMoodset(), path(OtherPicture));
        QCOMPARE(m_session->noticeAfter(QStringLiteral("undo")), QStringLiteral(u"“a” is active."));
        QCOMPARE(PickerSession::activeMoodset(), path(Picture));
    }

    void followsAFingerOverTheTilesAndAPage()
    {
        window().resize(PickerSession::Phone);
        QQuickItem* const tiles = window().find(QStringLiteral("moodsets"));
        QVERIFY(window().waitForRest(tiles));
        QVERIFY(!tiles->property("atYEnd").toBool());
        // The finger begins on a tile, and opens it only with a tap.
        QVERIFY(dragToEnd(tiles));
        QVERIFY(window().waitForPage(QStringLiteral("tabs")));

        QVERIFY(m_session->openMoodset(Picture));
        QQuickItem* page = window().find(QStringLiteral("name"));
        while (!page->inherits("QQuickFlickable")) {
            page = page->parentItem();
        }
        QVERIFY(window().waitForRest(page));
        QVERIFY(!page->property("atYEnd").toBool());
        QVERIFY(dragToEnd(page));
        const QQuickItem* const last = window().find(QStringLiteral("remove"));
        QVERIFY(last != nullptr);
        QVERIFY(QRectF(QPointF(), PickerSession::Phone).contains(PickerWindow::placeOf(last)));
        window().resize(PickerSession::Tablet);
    }

    void showsProgressWhileAMoodsetIsApplied()
    {
        QVERIFY(m_session->openMoodset(OtherPicture));
        QVERIFY(m_session->user.daemon.pause());
        QVERIFY(window().tap(QStringLiteral("apply")));
        QVERIFY(window().waitFor(QStringLiteral("Applying …")));
        QVERIFY(window().waitFor(QStringLiteral("Please wait")));
        QVERIFY(!window().find(QStringLiteral("apply"))->isEnabled());
        QCOMPARE(m_session->notice(), QString());

        m_session->user.daemon.resume();
        QCOMPARE(m_session->nextNotice(), QStringLiteral(u"“b” is active."));
        QVERIFY(window().waitFor(QStringLiteral("Active")));
        QVERIFY(!window().shows(QStringLiteral("Please wait")));
        QCOMPARE(PickerSession::activeMoodset(), path(OtherPicture));
    }

    void tellsThatAMoodsetWasNotApplied()
    {
        const QString name = QStringLiteral("broken");
        QVERIFY(makeMoodset(name, Qt::darkBlue));
        QVERIFY(window().waitFor(name));
        QVERIFY(InstalledBundles::write(path(name), "This is no picture."));
        const QString before = PickerSession::activeMoodset();
        QVERIFY(m_session->openMoodset(name));

        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("apply")),
            QStringLiteral("This did not work: the daemon has not made it active"));
        QCOMPARE(PickerSession::activeMoodset(), before);
        QVERIFY(!window().shows(QStringLiteral("undo")));
        QVERIFY(window().waitFor(QStringLiteral("Apply")));
        QVERIFY(window().tap(QStringLiteral("closeNotice")));
        QVERIFY(window().waitUntilGone(QStringLiteral("notice")));
    }

    void makesAMoodsetAFavorite()
    {
        QVERIFY(m_session->openMoodset(Picture));
        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("Make a favourite")),
            QStringLiteral(u"“a” has been changed."));
        QCOMPARE(column(path(Picture), QStringLiteral("favorite")), QStringLiteral("1"));
        QVERIFY(window().waitFor(QStringLiteral("Take from the favourites")));

        QVERIFY(!m_session->noticeAfter(QStringLiteral("undo")).isEmpty());
        QCOMPARE(column(path(Picture), QStringLiteral("favorite")), QStringLiteral("0"));
        QVERIFY(window().waitFor(QStringLiteral("Make a favourite")));
    }

    void renamesAMoodset()
    {
        QVERIFY(m_session->openMoodset(OtherPicture));
        QVERIFY(window().tap(QStringLiteral("name")));
        QTRY_COMPARE(window().focused()->objectName(), QStringLiteral("name"));
        window().press(Qt::Key_A, Qt::ControlModifier);
        window().type(QStringLiteral("Meadow"));
        m_session->forgetNotice();
        window().press(Qt::Key_Return);

        QCOMPARE(m_session->nextNotice(), QStringLiteral(u"“Meadow” has been changed."));
        QVERIFY(m_session->goHome());
        QVERIFY(window().waitFor(QStringLiteral("Meadow")));
    }

    void keepsTheNameIfTheFieldIsLeftEmpty()
    {
        QVERIFY(m_session->openMoodset(Picture));
        QVERIFY(window().tap(QStringLiteral("name")));
        QTRY_COMPARE(window().focused()->objectName(), QStringLiteral("name"));
        QQuickItem* const field = window().focused();
        window().press(Qt::Key_A, Qt::ControlModifier);
        window().press(Qt::Key_Delete);
        QCOMPARE(field->property("text").toString(), QString());
        window().press(Qt::Key_Return);

        QCOMPARE(field->property("text").toString(), Picture);
        QCOMPARE(m_session->notice(), QString());
    }

    void takesAColorThatGoesWithThePicture()
    {
        QVERIFY(m_session->openMoodset(Picture));
        QVERIFY(window().tap(QStringLiteral("highlightColor")));
        const QString candidate = QStringLiteral("candidate2");
        QVERIFY(window().waitFor(candidate));
        const QColor color = colorOf(window().find(candidate));
        const QString before = column(path(Picture), QStringLiteral("highlightColor"));
        QVERIFY(before != color.name(QColor::HexArgb));

        QCOMPARE(m_session->noticeAfter(candidate), QStringLiteral(u"“a” has been changed."));
        QCOMPARE(
            column(path(Picture), QStringLiteral("highlightColor")), color.name(QColor::HexArgb));
        QVERIFY(!m_session->noticeAfter(QStringLiteral("undo")).isEmpty());
        QCOMPARE(column(path(Picture), QStringLiteral("highlightColor")), before);
        // Another tap closes the colours.
        QVERIFY(window().tap(QStringLiteral("highlightColor")));
        QVERIFY(window().waitUntilGone(candidate));
    }

    void mixesAColorWithSliders()
    {
        QVERIFY(m_session->openMoodset(Picture));
        QVERIFY(window().tap(QStringLiteral("secondaryHighlightColor")));
        QVERIFY(window().waitFor(QStringLiteral("Hue")));
        const QList<QPair<QString, qreal>> settings{
            {QStringLiteral("Lightness"), 0.6},
            {QStringLiteral("Saturation"), 0.8},
            {QStringLiteral("Hue"), 0.5},
            {QStringLiteral("Opacity"), 0.9}};
        for (const auto& [name, value] : settings) {
            m_session->forgetNotice();
            QVERIFY(window().slide(name, value));
            QCOMPARE(m_session->nextNotice(), QStringLiteral(u"“a” has been changed."));
        }

        const QColor color(column(path(Picture), QStringLiteral("secondaryHighlightColor")));
        const auto isNear = [](qreal a, qreal b) { return qAbs(a - b) < 0.03; };
        QVERIFY2(
            isNear(color.hslHueF(), 0.5) && isNear(color.hslSaturationF(), 0.8)
                && isNear(color.lightnessF(), 0.6) && isNear(color.alphaF(), 0.9),
            qPrintable(color.name(QColor::HexArgb)));
    }

    void mendsAColorThatIsHardToRead()
    {
        const QString mend = QStringLiteral("Mend the contrast: Text");
        QVERIFY(m_session->openMoodset(Picture));
        QVERIFY(!window().waitForStart(QStringLiteral("Contrast")).isEmpty());
        QVERIFY(!window().shows(mend));
        QVERIFY(m_session->user.edit(
            path(Picture), {{QStringLiteral("primaryColor"), QStringLiteral("#ff600000")}}));
        QVERIFY(window().waitFor(mend));
        QVERIFY(!window().names().filter(QStringLiteral("hard to read")).isEmpty());

        QCOMPARE(m_session->noticeAfter(mend), QStringLiteral(u"“a” has been changed."));
        QVERIFY(window().waitUntilGone(mend));
        QCOMPARE(window().names().filter(QStringLiteral("hard to read")), QStringList());
        const QColor mended(column(path(Picture), QStringLiteral("primaryColor")));
        QVERIFY2(mended.lightnessF() > 0.5, qPrintable(mended.name()));
    }

    void setsTheVolume()
    {
        QVERIFY(m_session->openMoodset(Bundle));
        QVERIFY(window().waitFor(QStringLiteral("60 %")));
        QVERIFY(window().slide(QStringLiteral("volume"), 25));
        QCOMPARE(m_session->nextNotice(), QStringLiteral(u"“Coast light” has been changed."));

        const int volume = column(bundleFile(), QStringLiteral("ringerVolume")).toInt();
        QVERIFY2(qAbs(volume - 25) <= 2, qPrintable(QString::number(volume)));
        QVERIFY(window().waitFor(QStringLiteral("%1 %").arg(volume)));
        QVERIFY(!m_session->noticeAfter(QStringLiteral("undo")).isEmpty());
        QVERIFY(window().waitFor(QStringLiteral("60 %")));
    }

    void choosesATone()
    {
        QVERIFY(m_session->openMoodset(Bundle));
        QVERIFY(!window().shows(QStringLiteral("Play: Mail")));
        QVERIFY(window().tap(QStringLiteral("Choose the tone: Mail")));
        QVERIFY(!m_session->noticeAfter(QStringLiteral("gull.ogg")).isEmpty());
        QVERIFY(window().waitFor(QStringLiteral("Play: Mail")));
        QVERIFY(!m_session->noticeAfter(QStringLiteral("undo")).isEmpty());
        QVERIFY(window().waitUntilGone(QStringLiteral("Play: Mail")));

        QVERIFY(window().tap(QStringLiteral("Choose the tone: Messages")));
        QVERIFY(!m_session->noticeAfter(QStringLiteral("standardTone")).isEmpty());
        QVERIFY(window().waitUntilGone(QStringLiteral("Play: Messages")));
    }

    void turnsAToneOff()
    {
        QVERIFY(m_session->openMoodset(Bundle));
        const QString toggle = QStringLiteral("calendarToneSwitch");
        QVERIFY(window().waitFor(toggle));
        QVERIFY(window().find(toggle)->property("checked").toBool());
        const QString before = column(bundleFile(), QStringLiteral("enabledSounds"));
        QVERIFY(!m_session->noticeAfter(QStringLiteral("Calendar is on")).isEmpty());

        QVERIFY(!window().find(toggle)->property("checked").toBool());
        QVERIFY(column(bundleFile(), QStringLiteral("enabledSounds")) != before);
        QVERIFY(!m_session->noticeAfter(QStringLiteral("undo")).isEmpty());
        QCOMPARE(column(bundleFile(), QStringLiteral("enabledSounds")), before);
        QTRY_VERIFY(window().find(toggle)->property("checked").toBool());
    }

    void playsATone()
    {
        QVERIFY(m_session->openMoodset(Bundle));
        QVERIFY(window().tap(QStringLiteral("Play: Ringtone")));
        QVERIFY(window().waitFor(QStringLiteral("Stop: Ringtone")));
        QVERIFY(window().tap(QStringLiteral("Stop: Ringtone")));
        QVERIFY(window().waitFor(QStringLiteral("Play: Ringtone")));
        QCOMPARE(m_session->notice(), QString());
    }

    void tellsThatAToneCannotBePlayed()
    {
        const QString sounds = InstalledBundles::folder() + QStringLiteral("coast-light/sounds/");
        QVERIFY(InstalledBundles::write(sounds + QStringLiteral("tide.ogg"), "This is no tone."));
        QVERIFY(m_session->openMoodset(Bundle));
        const QString text = m_session->noticeAfter(QStringLiteral("Play: Ringtone"));
        QVERIFY2(text.startsWith(QStringLiteral("The tone cannot be played: ")), qPrintable(text));
        QVERIFY(window().shows(QStringLiteral("Play: Ringtone")));
    }

    void removesAMoodsetAndBringsItBack()
    {
        QVERIFY(m_session->openMoodset(Bundle));
        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("remove")),
            QStringLiteral(u"“Coast light” has been removed."));
        QVERIFY(window().waitForPage(QStringLiteral("tabs")));
        QVERIFY(window().waitUntilGone(Bundle));
        QCOMPARE(column(bundleFile(), QStringLiteral("favorite")), QString());

        QVERIFY(!m_session->noticeAfter(QStringLiteral("undo")).isEmpty());
        QVERIFY(window().waitFor(Bundle));
    }

    void tellsThatAMoodsetIsGone()
    {
        const QString name = QStringLiteral("short-lived");
        QVERIFY(makeMoodset(name, Qt::darkBlue));
        QVERIFY(window().waitFor(name));
        QVERIFY(m_session->openMoodset(name));
        const qint64 id = m_session->user.library().fileId(path(name));
        constexpr int moodsetType = 1;
        BusClient::call(QStringLiteral("remove"), {moodsetType, id});

        QVERIFY(window().waitFor(QStringLiteral("This moodset is not there any more")));
        QVERIFY(!window().shows(QStringLiteral("apply")));
        QVERIFY(window().tap(QStringLiteral("Back")));
        QVERIFY(window().waitForPage(QStringLiteral("tabs")));
    }

    void tellsThatThereIsNoDaemon()
    {
        QVERIFY(m_session->openMoodset(Picture));
        QVERIFY(m_session->user.daemon.kill());
        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("favorite")),
            QStringLiteral("The theme service does not answer. Nothing has been changed."));
        QVERIFY(window().shows(QStringLiteral("Make a favourite")));

        QVERIFY(m_session->user.daemon.start());
        QVERIFY(m_session->user.daemon.waitForName());
        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("favorite")),
            QStringLiteral(u"“a” has been changed."));
        QVERIFY(window().waitFor(QStringLiteral("Take from the favourites")));
    }
};

int main(int argc, char** argv)
{
    return runPickerTest<PickerMoodsetTest>(argc, argv);
}

#include "tst_pickermoodset.moc"
