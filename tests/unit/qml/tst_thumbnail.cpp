// SPDX-License-Identifier: BSD-3-Clause
#include "decompressionbomb.h"
#include "encodedpicture.h"
#include "exifbuilder.h"
#include "hostilepicture.h"
#include "thumbnail.h"
#include "thumbnailcache.h"

#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <memory>

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A picture whose left half is red and whose right half is blue.
QImage halves(const QSize& size)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::red);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = size.width() / 2; x < size.width(); ++x) {
            picture.setPixelColor(x, y, Qt::blue);
        }
    }
    return picture;
}

bool isRed(const QColor& color)
{
    return color.red() > 180 && color.blue() < 80;
}

bool isGreen(const QColor& color)
{
    return color.green() > 100 && color.red() < 80 && color.blue() < 80;
}

/// Exif directories with a thumbnail after the main directory, and an orientation in it.
QByteArray exifWithThumbnail(const QByteArray& thumbnail, quint16 orientation)
{
    QByteArray block;
    QDataStream stream(&block, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    const auto entry = [&stream](quint16 tag, quint16 type, quint32 value) {
        stream << tag << type << quint32(1) << value;
    };
    constexpr quint16 shortType = 3;
    constexpr quint16 longType = 4;
    constexpr quint32 mainDirectory = 8;
    constexpr quint32 secondDirectory = mainDirectory + 2 + 12 + 4;
    constexpr quint32 thumbnailOffset = secondDirectory + 2 + 24 + 4;
    stream.writeRawData("II*", 3);
    stream << quint8(0) << mainDirectory;
    stream << quint16(1);
    entry(0x0112, shortType, orientation);
    stream << secondDirectory;
    stream << quint16(2);
    entry(0x0201, longType, thumbnailOffset);
    entry(0x0202, longType, quint32(thumbnail.size()));
    stream << quint32(0);
    return block + thumbnail;
}

} // namespace

/// Tests thumbnails of files, including files that no camera has made.
class ThumbnailTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        qputenv("XDG_CACHE_HOME", QFile::encodeName(m_folder->filePath(QStringLiteral("cache"))));
    }

    void coversWhatIsAskedFor_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("wanted");
        QTest::addColumn<QSize>("given");
        QTest::newRow("both") << QSize(400, 300) << QSize(100, 100) << QSize(133, 100);
        QTest::newRow("width") << QSize(400, 300) << QSize(100, 0) << QSize(100, 75);
        QTest::newRow("height") << QSize(400, 300) << QSize(-1, 30) << QSize(40, 30);
        QTest::newRow("none") << QSize(1600, 1200) << QSize() << QSize(341, 256);
        QTest::newRow("smaller") << QSize(40, 30) << QSize(100, 100) << QSize(40, 30);
        QTest::newRow("panorama") << QSize(4000, 100) << QSize(50, 50) << QSize(200, 5);
        QTest::newRow("line") << QSize(4000, 1) << QSize(50, 50) << QSize(200, 1);
    }

    void coversWhatIsAskedFor()
    {
        QFETCH(QSize, picture);
        QFETCH(QSize, wanted);
        QFETCH(QSize, given);
        const QString path = write("a.png", encodedPicture(halves(picture), "png"));

        QCOMPARE(thumbnail(path, wanted).size(), given);
        QCOMPARE(thumbnail(path, wanted).size(), given); // the same from the cache
    }

    void standsUpright_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QPoint>("red");
        QTest::addColumn<QSize>("size");
        const QSize lying(40, 20);
        const QSize standing(20, 40);
        QTest::newRow("1") << 1 << QPoint(2, 10) << lying;
        QTest::newRow("2") << 2 << QPoint(37, 10) << lying;
        QTest::newRow("3") << 3 << QPoint(37, 10) << lying;
        QTest::newRow("4") << 4 << QPoint(2, 10) << lying;
        QTest::newRow("5") << 5 << QPoint(10, 2) << standing;
        QTest::newRow("6") << 6 << QPoint(10, 2) << standing;
        QTest::newRow("7") << 7 << QPoint(10, 37) << standing;
        QTest::newRow("8") << 8 << QPoint(10, 37) << standing;
        QTest::newRow("9") << 9 << QPoint(2, 10) << lying;
    }

    void standsUpright()
    {
        QFETCH(int, orientation);
        QFETCH(QPoint, red);
        QFETCH(QSize, size);
        const QByteArray exif = exifBlock({}, orientation);
        for (const QByteArray& file :
             {jpegWithExif(halves({200, 100}), exif), pngWithExif(halves({200, 100}), exif)}) {
            const QImage image = thumbnail(write("a", file), size);
            QCOMPARE(image.size(), size);
            QVERIFY(isRed(image.pixelColor(red)));
        }
    }

    void theCamerasThumbnailIsShownIfItFits_data()
    {
        QTest::addColumn<QSize>("camera");
        QTest::addColumn<QSize>("wanted");
        QTest::addColumn<bool>("isShown");
        QTest::newRow("fits") << QSize(160, 120) << QSize(120, 90) << true;
        QTest::newRow("nearly") << QSize(160, 120) << QSize(200, 150) << true;
        QTest::newRow("too small") << QSize(160, 120) << QSize(240, 180) << false;
        QTest::newRow("other aspect") << QSize(160, 107) << QSize(120, 80) << false;
    }

    void theCamerasThumbnailIsShownIfItFits()
    {
        QFETCH(QSize, camera);
        QFETCH(QSize, wanted);
        QFETCH(bool, isShown);
        QImage small(camera, QImage::Format_RGB32);
        small.fill(Qt::darkGreen);
        const QString path = write(
            "a.jpg",
            jpegWithExif(halves({800, 600}), exifWithThumbnail(encodedPicture(small, "jpg"), 1)));

        const QImage image = thumbnail(path, wanted);

        QCOMPARE(isGreen(image.pixelColor(5, 5)), isShown);
    }

    void theCamerasThumbnailStandsUpright()
    {
        const QString path = write(
            "a.jpg",
            jpegWithExif(
                QImage(800, 600, QImage::Format_RGB32),
                exifWithThumbnail(encodedPicture(halves({160, 120}), "jpg"), 6)));

        const QImage image = thumbnail(path, {90, 120});

        QCOMPARE(image.size(), QSize(90, 120));
        QVERIFY(isRed(image.pixelColor(45, 10)));
    }

    void damagedThumbnailsOfCamerasAreNotBelieved()
    {
        QImage small(160, 120, QImage::Format_RGB32);
        small.fill(Qt::darkGreen);
        const QByteArray jpeg = encodedPicture(small, "jpg");
        const QByteArray exif = exifWithThumbnail(jpeg, 1);
        for (int length = 0; length < exif.size(); length += 7) {
            const QString path =
                write("a.jpg", jpegWithExif(halves({800, 600}), exif.left(length)));
            const QImage image = thumbnail(path, {120, 90});
            QCOMPARE(image.size(), QSize(120, 90));
            QVERIFY(isRed(image.pixelColor(5, 85)));
        }
    }

    void thumbnailsAreSharedWithTheDesktop()
    {
        const QString path = write("a b#ü.jpg", encodedPicture(halves({800, 600}), "jpg"));
        makeOld(path);

        QVERIFY(!thumbnail(path, {200, 150}).isNull());

        const QDir cache(m_folder->filePath(QStringLiteral("cache/thumbnails/large")));
        const QStringList files = cache.entryList(QDir::Files);
        QCOMPARE(files.size(), 1);
        QVERIFY(files.constFirst().contains(
            QRegularExpression(QStringLiteral("^[0-9a-f]{32}\\.png$"))));
        const QImage stored(cache.filePath(files.constFirst()));
        QCOMPARE(stored.size(), QSize(256, 192));
        QCOMPARE(
            stored.text(QStringLiteral("Thumb::URI")),
            QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()));
        QCOMPARE(
            stored.text(QStringLiteral("Thumb::MTime")),
            QString::number(QFileInfo(path).lastModified().toSecsSinceEpoch()));
        struct stat state
        {
        };
        QCOMPARE(
            stat(QFile::encodeName(cache.filePath(files.constFirst())).constData(), &state), 0);
        QCOMPARE(state.st_mode & 0777U, 0600U);
        QCOMPARE(stat(QFile::encodeName(cache.path()).constData(), &state), 0);
        QCOMPARE(state.st_mode & 0777U, 0700U);
    }

    void whatOthersHaveStoredIsShownUnlessItIsStale()
    {
        const QString path = write("a.png", encodedPicture(halves({800, 600}), "png"));
        makeOld(path);
        QImage others(256, 192, QImage::Format_RGB32);
        others.fill(Qt::darkGreen);
        ThumbnailCache::store(path, QFileInfo(path).lastModified(), 256, others);

        QVERIFY(isGreen(thumbnail(path, {200, 150}).pixelColor(3, 3)));

        write("a.png", encodedPicture(halves({800, 600}), "png"));
        QVERIFY(isRed(thumbnail(path, {200, 150}).pixelColor(3, 3)));
    }

    void aPictureThatHasJustChangedIsNotStored()
    {
        const QString path = write("a.png", encodedPicture(halves({800, 600}), "png"));

        QVERIFY(!thumbnail(path, {200, 150}).isNull());

        const QString cache = m_folder->filePath(QStringLiteral("cache/thumbnails"));
        QVERIFY(!QFileInfo::exists(cache));
        makeOld(path);
        QVERIFY(!thumbnail(path, {200, 150}).isNull());
        QVERIFY(QFileInfo::exists(cache));
    }

    void aCacheThatCannotBeWrittenDoesNoHarm()
    {
        const QString path = write("a.png", encodedPicture(halves({800, 600}), "png"));
        makeOld(path);
        QFile blocked(m_folder->filePath(QStringLiteral("cache")));
        QVERIFY(blocked.open(QIODevice::WriteOnly));

        QVERIFY(!thumbnail(path, {200, 150}).isNull());
    }

    void whatIsNoPictureIsNotWaitedFor()
    {
        const QString fifo = m_folder->filePath(QStringLiteral("fifo.jpg"));
        QCOMPARE(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
        const QString loop = m_folder->filePath(QStringLiteral("loop.jpg"));
        QVERIFY(QFile::link(loop, loop));
        const QString toFifo = m_folder->filePath(QStringLiteral("link.jpg"));
        QVERIFY(QFile::link(fifo, toFifo));
        const QString sparse = m_folder->filePath(QStringLiteral("sparse.jpg"));
        QFile file(sparse);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(qint64(1) << 40));
        // A reader that waited for one of these would not end before the time limit of the test.
        for (const QString& path :
             {fifo, loop, toFifo, sparse, m_folder->path(), QStringLiteral("/dev/zero"),
              QStringLiteral("/dev/urandom"), QStringLiteral("/proc/self/mem"), QString(),
              QStringLiteral("relative.jpg"), m_folder->filePath(QStringLiteral("missing"))}) {
            QVERIFY2(thumbnail(path, {100, 100}).isNull(), qPrintable(path));
        }
    }

    void otherFormatsAreNotDecoded_data() { addUnlistedFormats(); }

    void otherFormatsAreNotDecoded()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(isRefused(bytes));
    }

    void startsOfPicturesAreNoPictures_data() { addStartsOfPictures(); }

    void startsOfPicturesAreNoPictures()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(isRefused(bytes));
    }

    void bombsAreNotDecoded_data() { addBombRows(); }

    void bombsAreNotDecoded()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(isRefused(bytes));
    }

private:
    /// Whether a file with these bytes has no thumbnail, while a good picture in its place has one.
    bool isRefused(const QByteArray& bytes) const
    {
        const QSize size(100, 100);
        return thumbnail(write("a.jpg", bytes), size).isNull()
            && !thumbnail(write("a.jpg", encodedPicture(halves({8, 6}), "jpg")), size).isNull();
    }

    QString write(const char* name, const QByteArray& bytes) const
    {
        QString path = m_folder->filePath(QString::fromUtf8(name));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            QTest::qFail("Cannot write a file", __FILE__, __LINE__);
        }
        return path;
    }

    /// A file that has not changed recently.
    static void makeOld(const QString& path)
    {
        QFile file(path);
        constexpr int seconds = 100;
        if (!file.open(QIODevice::ReadWrite)
            || !file.setFileTime(
                QDateTime::currentDateTime().addSecs(-seconds), QFile::FileModificationTime)) {
            QTest::qFail("Cannot change the time of a file", __FILE__, __LINE__);
        }
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(ThumbnailTest)

#include "tst_thumbnail.moc"
