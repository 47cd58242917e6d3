// SPDX-License-Identifier: BSD-3-Clause
#include "addresslimit.h"
#include "decompressionbomb.h"
#include "encodedpicture.h"
#include "imaging/wallpaperfile.h"
#include "messagelog.h"
#include "paintedpicture.h"
#include "testfolder.h"
#include "theme/backgroundpicture.h"
#include "theme/scalingthread.h"

#include <picturereader.h>

#include <QFile>
#include <QTest>

#include <malloc.h>

namespace {

constexpr qint64 MiB = qint64(1024) * 1024;
const QSize Huge(30000, 30000);

/// The messages of decoders and QImage if there is not enough memory for a picture.
QStringList messagesOfWant()
{
    return {
        QStringLiteral("Insufficient memory (case 0)"),
        QStringLiteral("Insufficient memory (case 2)"),
        QStringLiteral("Insufficient memory (case 4)"),
        QStringLiteral("QImage: out of memory, returning null"),
        QStringLiteral("QImage: out of memory, returning null image"),
        QStringLiteral("QImage::scaled: Image is a null image"),
        QStringLiteral("libpng warning: Out of memory"),
        QStringLiteral("libpng error: IDAT: insufficient memory"),
    };
}

} // namespace

/// Tests pictures that are larger than the address space that the process may have.
class WantOfMemoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Freed memory can be used again at once, and not only for the next picture.
        QCOMPARE(mallopt(M_MMAP_THRESHOLD, int(MiB) / 8), 1);
        keepScalingThread();
    }

    void pictureThatNearlyFitsEndsNothing_data()
    {
        const QImage image = quadrantPicture(QSize(1500, 1500));
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("PNG") << encodedPicture(image, "png");
        QTest::newRow("JPEG") << encodedPicture(image, "jpeg");
        QTest::newRow("progressive JPEG") << encodedPicture(image, "jpeg", true);
    }

    // This comes before the other tests, because some of them leave memory with the allocator. Any
    // allocation may fail: that of the pixels, of a scaled copy, or of a thread for scaling.
    void pictureThatNearlyFitsEndsNothing()
    {
        QFETCH(QByteArray, bytes);
        MessageLog log;
        TestFolder folder;
        const QString path = folder.path(QStringLiteral("a.jpg"));
        folder.write(QStringLiteral("a.jpg"), encodedPicture(quadrantPicture(QSize(2, 2)), "png"));
        QVERIFY(!loadBackgroundImage(path, QSize(54, 96)).isNull());
        folder.write(QStringLiteral("a.jpg"), bytes);

        int failures = 0;
        int successes = 0;
        for (qint64 headroom = MiB; headroom <= 32 * MiB; headroom += MiB / 2) {
            const QImage image = [&] {
                const AddressLimit limit(headroom);
                return loadBackgroundImage(path, QSize(540, 960));
            }();
            (image.isNull() ? failures : successes) += 1;
        }

        QVERIFY(failures > 0);
        QVERIFY(successes > 0);
        const QStringList messages = log.takeMessages();
        for (const QString& message : messages) {
            QVERIFY2(messagesOfWant().contains(message), qPrintable(message));
        }
    }

    void bombIsOneMorePictureThatCannotBeRead_data() { addBombRows(); }

    void bombIsOneMorePictureThatCannotBeRead()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, messages);
        MessageLog log;
        TestFolder folder;
        folder.write(QStringLiteral("a.jpg"), bytes);

        {
            const AddressLimit limit(512 * MiB);
            QVERIFY(
                loadBackgroundImage(folder.path(QStringLiteral("a.jpg")), QSize(54, 96)).isNull());
        }

        QCOMPARE(log.takeMessages(), messages);
    }

    void bombInMemoryIsOneMorePictureThatCannotBeRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("PNG") << pngBomb(Huge);
        QTest::newRow("JPEG") << jpegBomb(Huge);
        QTest::newRow("progressive JPEG") << jpegBomb(Huge, true);
        QTest::newRow("BMP") << bmpBomb(Huge);
        QTest::newRow("GIF") << gifBomb(Huge);
    }

    void bombInMemoryIsOneMorePictureThatCannotBeRead()
    {
        QFETCH(QByteArray, bytes);
        MessageLog log;

        {
            const AddressLimit limit(512 * MiB);
            QVERIFY(PictureReader(bytes).read().isNull());
        }

        QCOMPARE(log.takeMessages(), QStringList());
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

    void wallpaperIsWrittenWithoutMemoryForACopy()
    {
        const MessageLog log;
        const TestFolder folder;
        const QString path = folder.path(QStringLiteral("a.jpg"));
        QImage image(QSize(4096, 4096), QImage::Format_RGB32);
        image.fill(Qt::darkGreen);

        {
            const AddressLimit limit(image.sizeInBytes() / 2);
            QCOMPARE(writeWallpaper(image, path), QString());
        }

        QCOMPARE(PictureReader(path).size(), image.size());
    }

    void fileLargerThanMemoryIsOneMorePictureThatCannotBeRead()
    {
        const MessageLog log;
        TestFolder folder;
        // The plugin for WebP reads a whole file before it decodes it.
        folder.write(
            QStringLiteral("a.webp"), QByteArray("RIFF\xf8\xff\xff\x3fWEBPVP8X\x0a\0\0\0", 20));
        QVERIFY(QFile::resize(folder.path(QStringLiteral("a.webp")), 1024 * MiB));

        const AddressLimit limit(512 * MiB);
        QVERIFY(loadBackgroundImage(folder.path(QStringLiteral("a.webp")), QSize(54, 96)).isNull());
        QVERIFY(loadWholeImage(folder.path(QStringLiteral("a.webp"))).isNull());
    }
};

QTEST_GUILESS_MAIN(WantOfMemoryTest)

#include "tst_wantofmemory.moc"
