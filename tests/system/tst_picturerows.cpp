// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"
#include "exifbuilder.h"

#include <QRegularExpression>
#include <QTest>

/// Tests the rows of the table `image` for real, odd and damaged pictures.
class PictureRowsTest : public QObject
{
    Q_OBJECT

private:
    const QByteArray m_date = QByteArrayLiteral("2020:01:02 03:04:05");

    static bool writeFile(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    /// The columns dateTaken, width, height and orientation of a picture.
    static QVariantList imageRow(DaemonSession& session, const QString& picture)
    {
        return session.library()
            .rows(
                QStringLiteral(
                    "SELECT dateTaken, width, height, orientation FROM image WHERE fileId = ?"),
                {session.fileId(picture)})
            .value(0);
    }

    /// The JPEG library reports what is wrong with a picture in one to three lines. The daemon
    /// itself must log nothing.
    static void verifyReaderWarnings(const QStringList& warnings, int pictureCount)
    {
        QVERIFY(warnings.count() <= 3 * pictureCount);
        const QRegularExpression known(QStringLiteral("JPEG|Huffman|DQT|component ID"));
        QCOMPARE(warnings.filter(known), warnings);
    }

private Q_SLOTS:
    void keepsTheOrientationAndTheSizeAsStored_data()
    {
        QTest::addColumn<int>("orientation");
        for (int orientation = 1; orientation <= 8; ++orientation) {
            QTest::addRow("%d", orientation) << orientation;
        }
    }

    void keepsTheOrientationAndTheSizeAsStored()
    {
        QFETCH(int, orientation);
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.jpg"));
        QVERIFY(writeFile(picture, jpegWithExif(exifBlock(m_date, orientation), {}, {40, 30})));

        QVERIFY(session.start());

        const QVariantList row = imageRow(session, picture);
        QCOMPARE(row.value(1).toInt(), 40);
        QCOMPARE(row.value(2).toInt(), 30);
        QCOMPARE(row.value(3).toInt(), orientation);
    }

    void leavesOutWhatThePictureDoesNotTell_data()
    {
        QTest::addColumn<QByteArray>("date");
        QTest::addColumn<int>("orientation");
        QTest::newRow("none") << QByteArray() << -1;
        QTest::newRow("zeros") << QByteArrayLiteral("0000:00:00 00:00:00") << 0;
        QTest::newRow("blanks") << QByteArrayLiteral("    :  :     :  :  ") << 9;
        QTest::newRow("an impossible date") << QByteArrayLiteral("2021:02:30 10:00:00") << 65535;
        QTest::newRow("a text") << QByteArrayLiteral("yesterday, in the sun") << 255;
    }

    void leavesOutWhatThePictureDoesNotTell()
    {
        QFETCH(QByteArray, date);
        QFETCH(int, orientation);
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.jpg"));
        QVERIFY(writeFile(picture, jpegWithExif(exifBlock(date, orientation), {}, {40, 30})));

        QVERIFY(session.start());

        const QVariantList row = imageRow(session, picture);
        QCOMPARE(row.count(), 4);
        QVERIFY(row.at(0).isNull());
        QCOMPARE(row.at(1).toInt(), 40);
        QVERIFY(row.at(3).isNull());
    }

    void keepsTheTimeOfTaking_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        const QByteArray exif = exifBlock(m_date, 6);
        QTest::newRow("JPEG") << QStringLiteral("a.jpg") << jpegWithExif(exif, {}, {40, 30});
        QTest::newRow("PNG") << QStringLiteral("a.png") << pngWithExif(exif, {}, {40, 30});
        QTest::newRow("WebP") << QStringLiteral("a.webp") << webpWithExif(exif, {}, {40, 30});
    }

    void keepsTheTimeOfTaking()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        DaemonSession session;
        const QString picture = session.folders.picture(name);
        QVERIFY(writeFile(picture, content));

        QVERIFY(session.start());

        const QVariantList row = imageRow(session, picture);
        QCOMPARE(row.value(0).toDateTime(), QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)));
        QCOMPARE(row.value(1).toInt(), 40);
        QCOMPARE(row.value(2).toInt(), 30);
        QCOMPARE(row.value(3).toInt(), 6);
    }

    void readsThePictureAgainThatIsTurned()
    {
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.jpg"));
        QVERIFY(writeFile(picture, jpegWithExif(exifBlock(m_date, 1))));
        QVERIFY(session.start());

        QVERIFY(writeFile(picture, jpegWithExif(exifBlock("2021:01:02 03:04:05", 8))));
        QVERIFY(session.waitUntilFollowed());

        const QVariantList row = imageRow(session, picture);
        QCOMPARE(row.value(0).toDateTime(), QDateTime(QDate(2021, 1, 2), QTime(3, 4, 5)));
        QCOMPARE(row.value(3).toInt(), 8);
    }

    void keepsARowOfEachTruncatedPicture()
    {
        const QByteArray exif = exifBlock(m_date, 3);
        const QMap<QString, QByteArray> pictures{
            {QStringLiteral("jpg"), jpegWithExif(exif, {}, {40, 30})},
            {QStringLiteral("png"), pngWithExif(exif, {}, {40, 30})},
            {QStringLiteral("webp"), webpWithExif(exif, {}, {40, 30})}};
        constexpr int cuts = 40;
        DaemonSession session;
        for (auto picture = pictures.begin(); picture != pictures.end(); ++picture) {
            for (int cut = 0; cut < cuts; ++cut) {
                const QString path =
                    session.folders.picture(QStringLiteral("%1.%2").arg(cut).arg(picture.key()));
                QVERIFY(writeFile(path, picture->left(picture->size() * cut / cuts)));
            }
        }

        QVERIFY(session.start());

        verifyReaderWarnings(session.daemon.takeWarnings(), cuts * pictures.count());
        QCOMPARE(
            session.library().value(QStringLiteral("SELECT count(*) FROM image")).toInt(),
            cuts * pictures.count());
        QCOMPARE(
            session.library()
                .value(QStringLiteral("SELECT count(*) FROM image WHERE NOT ((width = 40 AND "
                                      "height = 30) OR (width = -1 AND height = -1))"))
                .toInt(),
            0);
        for (const auto& type : pictures.keys()) {
            const QString empty = session.folders.picture(QStringLiteral("0.%1").arg(type));
            const QVariantList row = imageRow(session, empty);
            QVERIFY(row.value(0).isNull() && row.value(3).isNull());
            QCOMPARE(session.pictureSize(empty), QSize(-1, -1));
        }
    }

    void keepsARowOfWhatOnlyLooksLikeAPicture_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("a text") << QByteArrayLiteral("no picture");
        QTest::newRow("a start alone") << QByteArrayLiteral("\xff\xd8\xff");
        QTest::newRow("one byte") << QByteArrayLiteral("\xff");
        QTest::newRow("zeros") << QByteArray(100000, '\0');
        QTest::newRow("a start and zeros") << "\xff\xd8\xff\xe1" + QByteArray(100000, '\0');
    }

    void keepsARowOfWhatOnlyLooksLikeAPicture()
    {
        QFETCH(QByteArray, content);
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.jpg"));
        QVERIFY(writeFile(picture, content));

        QVERIFY(session.start());

        const QVariantList row = imageRow(session, picture);
        QCOMPARE(row.count(), 4);
        QVERIFY(row.at(0).isNull());
        QCOMPARE(session.pictureSize(picture), QSize(-1, -1));
        QVERIFY(row.at(3).isNull());
        verifyReaderWarnings(session.daemon.takeWarnings(), 1);
    }
};

QTEST_GUILESS_MAIN(PictureRowsTest)

#include "tst_picturerows.moc"
