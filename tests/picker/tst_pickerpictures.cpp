// SPDX-License-Identifier: BSD-3-Clause
#include "exifbuilder.h"
#include "pickersession.h"

#include <QRegularExpression>
#include <QTest>

/// The list of the pictures.
class PickerPicturesTest : public QObject
{
    Q_OBJECT

private:
    PickerWindow& window() { return m_session->window(); }

    /// A picture with a time, such as "2020:01:02 03:04:05".
    bool writePhoto(const QString& name, const QByteArray& time) const
    {
        return InstalledBundles::write(
            m_session->user.folders.picture(name), jpegWithExif(exifBlock(time), {}, QSize(8, 6)));
    }

    /// The names of the months and pictures, from the top.
    QStringList shown()
    {
        return window().names().filter(QRegularExpression(QStringLiteral("\\.jpg$| 20\\d\\d$")));
    }

    bool search(const QString& text)
    {
        window().press(Qt::Key_F, Qt::ControlModifier);
        window().press(Qt::Key_A, Qt::ControlModifier);
        window().press(Qt::Key_Delete);
        window().type(text);
        return window().find(QStringLiteral("search"))->property("text").toString() == text;
    }

    std::unique_ptr<PickerSession> m_session;

private Q_SLOTS:
    void initTestCase()
    {
        m_session = std::make_unique<PickerSession>();
        QVERIFY(writePhoto(QStringLiteral("walk.jpg"), "2024:03:05 12:00:00"));
        QVERIFY(writePhoto(QStringLiteral("sea.jpg"), "2024:03:31 12:00:00"));
        QVERIFY(writePhoto(QStringLiteral("album/snow.jpg"), "2023:12:24 18:00:00"));
        QVERIFY(writePhoto(QStringLiteral("album/hill.jpg"), "2024:03:01 12:00:00"));
        QVERIFY(m_session->user.startAtRest());
        QVERIFY(m_session->open());
    }

    void init()
    {
        QVERIFY(m_session->goHome());
        QVERIFY(window().tap(QStringLiteral("picturesTab")));
        QVERIFY(window().waitFor(QStringLiteral("search")));
        QVERIFY(search({}));
        QVERIFY(window().waitFor(QStringLiteral("snow.jpg")));
    }

    void cleanup() { QVERIFY(m_session->verifyNoWarnings()); }

    void cleanupTestCase() { m_session.reset(); }

    void showsPicturesByMonthNewestFirst()
    {
        QTRY_COMPARE_WITH_TIMEOUT(
            shown(),
            QStringList(
                {QStringLiteral("March 2024"), QStringLiteral("sea.jpg"),
                 QStringLiteral("walk.jpg"), QStringLiteral("hill.jpg"),
                 QStringLiteral("December 2023"), QStringLiteral("snow.jpg")}),
            DaemonProcess::deadlineMs);
    }

    void findsPictures_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("found");
        QTest::newRow("folder") << "album"
                                << QStringList(
                                       {QStringLiteral("March 2024"), QStringLiteral("hill.jpg"),
                                        QStringLiteral("December 2023"),
                                        QStringLiteral("snow.jpg")});
        QTest::newRow("name") << "WALK"
                              << QStringList(
                                     {QStringLiteral("March 2024"), QStringLiteral("walk.jpg")});
        QTest::newRow("month")
            << "2023-12"
            << QStringList({QStringLiteral("December 2023"), QStringLiteral("snow.jpg")});
        QTest::newRow("day") << "2024-03-31"
                             << QStringList(
                                    {QStringLiteral("March 2024"), QStringLiteral("sea.jpg")});
        QTest::newRow("folder and date")
            << "album 2024"
            << QStringList({QStringLiteral("March 2024"), QStringLiteral("hill.jpg")});
    }

    void findsPictures()
    {
        QFETCH(const QString, text);
        QFETCH(const QStringList, found);
        QVERIFY(search(text));
        // Joined, so that a failure names what is shown.
        QTRY_COMPARE_WITH_TIMEOUT(
            shown().join(QLatin1Char('|')), found.join(QLatin1Char('|')),
            DaemonProcess::deadlineMs);
    }

    void saysThatNothingWasFound()
    {
        QVERIFY(search(QStringLiteral("desert")));
        QVERIFY(window().waitFor(QStringLiteral("Nothing found")));
        QTRY_COMPARE_WITH_TIMEOUT(shown(), QStringList(), DaemonProcess::deadlineMs);
        QVERIFY(window().tap(QStringLiteral("Show all pictures")));
        QVERIFY(window().waitFor(QStringLiteral("snow.jpg")));
        QCOMPARE(window().find(QStringLiteral("search"))->property("text").toString(), QString());
    }

    void followsAFinger()
    {
        constexpr int years = 12;
        for (int year = 0; year < years; ++year) {
            QVERIFY(writePhoto(
                QStringLiteral("%1.jpg").arg(2000 + year),
                QByteArray::number(2000 + year) + ":06:01 12:00:00"));
        }
        QQuickItem* const list = window().find(QStringLiteral("pictures"));
        QTRY_VERIFY_WITH_TIMEOUT(
            list->property("count").toInt() > 2 * years + 4, DaemonProcess::deadlineMs);
        window().resize(PickerSession::Phone);
        QVERIFY(window().waitForRest(list));
        QVERIFY(!window().shows(QStringLiteral("2000.jpg")));

        const QPointF middle = PickerWindow::placeOf(list).center();
        constexpr int mostDrags = 40;
        for (int i = 0; i < mostDrags && !list->property("atYEnd").toBool(); ++i) {
            window().drag(middle, middle - QPointF(0, 200));
            QTRY_VERIFY_WITH_TIMEOUT(!list->property("moving").toBool(), DaemonProcess::deadlineMs);
        }
        QVERIFY(list->property("atYEnd").toBool());
        QVERIFY(window().waitFor(QStringLiteral("2000.jpg")));
        QVERIFY(window().tap(QStringLiteral("2000.jpg")));
        QVERIFY(window().waitForPage(QStringLiteral("picturePage")));

        // The list is where it was.
        window().press(Qt::Key_Escape);
        QVERIFY(window().waitForPage(QStringLiteral("tabs")));
        QVERIFY(window().waitFor(QStringLiteral("2000.jpg")));
    }
};

int main(int argc, char** argv)
{
    return runPickerTest<PickerPicturesTest>(argc, argv);
}

#include "tst_pickerpictures.moc"
