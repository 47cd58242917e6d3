// SPDX-License-Identifier: BSD-3-Clause
#include "addresslimit.h"
#include "backgroundfixture.h"
#include "decompressionbomb.h"
#include "messagelog.h"
#include "paintedpicture.h"
#include "theme/backgroundpicture.h"
#include "theme/decodableimage.h"
#include "theme/systembackgroundimage.h"

#include <QtTest>

#include <new>

namespace {

using Fixture = BackgroundFixture;

constexpr qint64 MiB = 1024 * 1024;
const QSize Huge(30000, 30000);

} // namespace

/// Pictures that are larger than the address space that the process may have.
class WantOfMemoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bombIsOneMorePictureThatCannotBeRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("warning");
        QTest::newRow("PNG") << pngBomb(Huge) << QString();
        QTest::newRow("PNG with all its pixels")
            << completePngBomb(Huge)
            << QStringLiteral("QImage: out of memory, returning null image");
        QTest::newRow("progressive JPEG")
            << jpegBomb(Huge, true) << QStringLiteral("Insufficient memory (case 4)");
        QTest::newRow("BMP") << bmpBomb(Huge) << QString();
        QTest::newRow("GIF") << gifBomb(Huge) << QString();
    }

    void bombIsOneMorePictureThatCannotBeRead()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, warning);
        MessageLog log;
        TestFolder folder;
        folder.write(QStringLiteral("a.jpg"), bytes);
        const QStringList warnings =
            warning.isEmpty() ? QStringList() : QStringList({warning});

        {
            const AddressLimit limit(512 * MiB);
            QVERIFY(loadBackgroundImage(folder.path(QStringLiteral("a.jpg")), QSize(54, 96))
                        .isNull());
        }

        QCOMPARE(log.takeMessages(), warnings);
    }

    void bombInMemoryIsOneMorePictureThatCannotBeRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("warning");
        QTest::newRow("PNG") << pngBomb(Huge) << QString();
        QTest::newRow("JPEG") << jpegBomb(Huge) << QString();
        QTest::newRow("progressive JPEG")
            << jpegBomb(Huge, true) << QStringLiteral("Insufficient memory (case 4)");
        QTest::newRow("BMP") << bmpBomb(Huge) << QString();
        QTest::newRow("GIF") << gifBomb(Huge) << QString();
    }

    void bombInMemoryIsOneMorePictureThatCannotBeRead()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, warning);
        MessageLog log;
        const QStringList warnings =
            warning.isEmpty() ? QStringList() : QStringList({warning});

        {
            const AddressLimit limit(512 * MiB);
            QVERIFY(imageFromData(bytes).isNull());
        }

        QCOMPARE(log.takeMessages(), warnings);
    }

    void jpegIsCutAndScaledWithoutMemoryForAllOfIt()
    {
        MessageLog log;
        TestFolder folder;
        folder.write(QStringLiteral("a.jpg"), jpegBomb(Huge));

        {
            const AddressLimit limit(512 * MiB);
            QCOMPARE(
                loadBackgroundImage(folder.path(QStringLiteral("a.jpg")), QSize(54, 96)).size(),
                QSize(96, 96));
        }

        QCOMPARE(
            log.takeMessages(),
            QStringList({QStringLiteral("Corrupt JPEG data: premature end of data segment")}));
    }

    void fileLargerThanMemoryIsOneMorePictureThatCannotBeRead()
    {
        const MessageLog log;
        TestFolder folder;
        // The plugin for WebP reads all of a file for its size.
        folder.write(
            QStringLiteral("a.webp"), QByteArray("RIFF\xf8\xff\xff\x3fWEBPVP8X\x0a\0\0\0", 20));
        QVERIFY(QFile::resize(folder.path(QStringLiteral("a.webp")), 1024 * MiB));

        const AddressLimit limit(512 * MiB);
        QVERIFY(loadBackgroundImage(folder.path(QStringLiteral("a.webp")), QSize(54, 96)).isNull());
        QVERIFY(loadWholeImage(folder.path(QStringLiteral("a.webp"))).isNull());
    }

    void buildOutlivesWantOfMemoryAtAnyPoint()
    {
        MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.png"), noisePicture(QSize(1500, 1500)));
        const auto buildWith = [&path](qint64 headroom) {
            const AddressLimit limit(headroom);
            return SystemBackgroundImage().buildBackgroundImages(
                Fixture::recordOf(path), QImage(), QSize(540, 960), QRectF(0, 0, 960, 960), false);
        };

        int failures = 0;
        int successes = 0;
        for (qint64 headroom = 0; headroom <= 64 * MiB; headroom += MiB / 2) {
            try {
                (buildWith(headroom) ? successes : failures) += 1;
            } catch (const std::bad_alloc&) {
                QFAIL(qPrintable(QStringLiteral("not with %1 bytes").arg(headroom)));
            }
            for (const QString& m : log.takeMessages()) fprintf(stderr, "%lld %s\n", (long long)headroom, qPrintable(m));
        }

        QVERIFY(failures > 0);
        QVERIFY(successes > 0);
    }
};

QTEST_GUILESS_MAIN(WantOfMemoryTest)

#include "tst_wantofmemory.moc"
