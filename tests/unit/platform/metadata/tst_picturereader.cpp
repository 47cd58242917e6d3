// SPDX-License-Identifier: BSD-3-Clause
#include "picturereader.h"

#include "byteorder.h"
#include "decompressionbomb.h"
#include "encodedpicture.h"
#include "exifbuilder.h"
#include "hostilepicture.h"
#include "messagelog.h"
#include "paintedpicture.h"
#include "testfolder.h"

#include <QFile>
#include <QTest>

#include <limits>
#include <sys/resource.h>

namespace {

const QString Name = QStringLiteral("a.jpg");
const QSize Size(40, 30);

QByteArray sample(const char* name)
{
    QFile file(QStringLiteral(SAMPLE_PICTURES "/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage asRgb(const QImage& image)
{
    return image.convertToFormat(QImage::Format_RGB32);
}

/// The format that Qt alone finds, when it asks all of its plugins.
QByteArray formatForQt(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QImageReader::imageFormat(&file) : QByteArray();
}

/// A JPEG picture with this many bytes between two of its segments.
QByteArray paddedJpeg(qint64 padding)
{
    constexpr int startOfImage = 2;
    return encodedPicture(quadrantPicture(Size), "jpeg")
        .insert(startOfImage, QByteArray(int(padding), '\0'))
        .insert(startOfImage, QByteArray("\xff\xfe\0\x02", 4));
}

/// The peak of this process's memory in KiB.
long peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

class PictureReaderTest : public QObject
{
    Q_OBJECT

private:
    TestFolder m_folder;

    QString path() const { return m_folder.path(Name); }

private Q_SLOTS:
    void pictureOfAnyKindIsReadWhateverItsName_data()
    {
        const QImage picture = quadrantPicture(Size);
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QSize>("size");
        QTest::newRow("JPEG") << encodedPicture(picture, "jpeg") << Size;
        QTest::newRow("PNG") << encodedPicture(picture, "png") << Size;
        QTest::newRow("WebP") << encodedPicture(picture, "webp") << Size;
        QTest::newRow("TIFF") << encodedPicture(picture, "tiff") << Size;
        QTest::newRow("GIF") << sample("quadrants.gif") << QSize(64, 64);
        QTest::newRow("BMP") << encodedPicture(picture, "bmp") << Size;
        QTest::newRow("BMP, from top to bottom") << topDownBmp(picture) << Size;
        for (const char* const format : {"pbm", "pgm", "ppm"}) {
            QTest::newRow(format) << encodedPicture(picture, format) << Size;
        }
        QTest::newRow("plain pbm")
            << QByteArray("P1\n4 3\n0 1 0 1\n1 0 1 0\n1 1 1 1\n") << QSize(4, 3);
    }

    void pictureOfAnyKindIsReadWhateverItsName()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QSize, size);
        const MessageLog log;

        for (const char* const name : {"a.jpg", "a.png", "a.svg", "a.mng", "a", ":a.webp"}) {
            m_folder.write(QLatin1String(name), bytes);
            PictureReader reader(m_folder.path(QLatin1String(name)));
            QCOMPARE(reader.size(), size);
            QCOMPARE(reader.read().size(), size);
        }
        PictureReader inMemory(bytes);
        QCOMPARE(inMemory.size(), size);
        QCOMPARE(inMemory.read().size(), size);
    }

    void pictureIsGivenAsItIsStored()
    {
        const MessageLog log;
        const QImage picture = coordinatePicture(Size);
        const QByteArray bytes = pngWithExif(picture, exifBlock({}, 6));
        m_folder.write(Name, bytes);

        QCOMPARE(asRgb(PictureReader(path()).read()), picture);
        QCOMPARE(asRgb(PictureReader(bytes).read()), picture);
    }

    void pictureStandsUprightIfAskedFor()
    {
        const MessageLog log;
        m_folder.write(Name, jpegWithExif(quadrantPicture(QSize(60, 40)), exifBlock({}, 6)));
        PictureReader reader(path());
        reader.setAutoTransform(true);

        const QImage image = reader.read();

        QCOMPARE(image.size(), QSize(40, 60));
        QCOMPARE(quadrants(image), QStringLiteral("BRGW"));
    }

    void partIsCutAndScaled()
    {
        const MessageLog log;
        const QImage picture = noisePicture(QSize(100, 60));
        m_folder.write(Name, encodedPicture(picture, "png"));

        const QImage image = PictureReader(path()).read(QRect(20, 0, 60, 60), QSize(30, 30));

        QCOMPARE(
            asRgb(image),
            asRgb(picture.copy(20, 0, 60, 60)
                      .scaled(30, 30, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
    }

    void picturesOfOtherFormatsCannotBeRead_data() { addUnlistedFormats(); }

    void picturesOfOtherFormatsCannotBeRead()
    {
        QFETCH(QByteArray, bytes);
        const MessageLog log;
        m_folder.write(Name, bytes);
        PictureReader reader(path());
        PictureReader inMemory(bytes);

        for (PictureReader* const each : {&reader, &inMemory}) {
            QCOMPARE(each->size(), QSize());
            QVERIFY(each->read().isNull());
        }
        QVERIFY2(!formatForQt(path()).isEmpty(), "no plugin would read it");
    }

    // Their decoders never end with these.
    void decodersOfOtherFormatsAreNotAsked_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("MNG") << endlessAnimation() << QByteArrayLiteral("mng");
        QTest::newRow("SVG") << nestedVectorPicture() << QByteArrayLiteral("svg");
    }

    void decodersOfOtherFormatsAreNotAsked()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, format);
        const MessageLog log;
        m_folder.write(Name, bytes);
        PictureReader reader(path());
        PictureReader inMemory(bytes);

        for (PictureReader* const each : {&reader, &inMemory}) {
            QCOMPARE(each->size(), QSize());
            QVERIFY(each->read(QRect(0, 0, 1, 1), Size).isNull());
        }
        QCOMPARE(formatForQt(path()), format);
    }

    void contentWithoutAPictureGivesNone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("null") << QByteArray();
        QTest::newRow("text") << QByteArrayLiteral("<html>no picture</html>");
        QTest::newRow("the start of a PNG") << encodedPicture(quadrantPicture(Size), "png").left(9);
        QTest::newRow("the start of a GIF") << sample("quadrants.gif").left(10);
    }

    void contentWithoutAPictureGivesNone()
    {
        QFETCH(QByteArray, bytes);
        const MessageLog log;
        PictureReader reader(bytes);

        QCOMPARE(reader.size(), QSize());
        QVERIFY(reader.read().isNull());
    }

    void pathWithoutAFileGivesNone_data()
    {
        m_folder.write(
            QStringLiteral("namesake.png"), encodedPicture(quadrantPicture(Size), "png"));
        m_folder.makeFifo(QStringLiteral("fifo"));
        m_folder.makeLink(QStringLiteral("link to a device"), QStringLiteral("/dev/zero"));
        QTest::addColumn<QString>("path");
        for (const char* const name : {"missing", "namesake", "fifo", "link to a device"}) {
            QTest::newRow(name) << m_folder.path(QLatin1String(name));
        }
        QTest::newRow("folder") << m_folder.path();
        QTest::newRow("empty") << QString();
        QTest::newRow("resource") << QStringLiteral(":/a.png");
    }

    void pathWithoutAFileGivesNone()
    {
        QFETCH(QString, path);
        const MessageLog log;
        PictureReader reader(path);

        QCOMPARE(reader.size(), QSize());
        QVERIFY(reader.read().isNull());
    }

    void sizesArePositiveOrInvalid_data()
    {
        constexpr int least = std::numeric_limits<int>::min();
        QTest::addColumn<QSize>("claim");
        QTest::addColumn<QSize>("size");
        QTest::newRow("from top to bottom") << QSize(64, -48) << QSize(64, 48);
        QTest::newRow("one row, from top to bottom") << QSize(64, -1) << QSize(64, 1);
        QTest::newRow("no rows") << QSize(64, 0) << QSize();
        QTest::newRow("no columns") << QSize(0, 64) << QSize();
        QTest::newRow("from right to left") << QSize(-64, 48) << QSize();
        QTest::newRow("both ways round") << QSize(-64, -48) << QSize();
        QTest::newRow("a height without a positive counterpart") << QSize(64, least) << QSize();
    }

    void sizesArePositiveOrInvalid()
    {
        QFETCH(QSize, claim);
        QFETCH(QSize, size);
        const MessageLog log;

        QCOMPARE(PictureReader(bmpBomb(claim)).size(), size);
    }

    void sizeIsLookedForInTheStartOfAFileAlone()
    {
        MessageLog log;
        m_folder.write(Name, paddedJpeg(PictureReader::HeaderLimit - 20000));
        QCOMPARE(PictureReader(path()).size(), Size);

        m_folder.write(Name, paddedJpeg(PictureReader::HeaderLimit));
        QCOMPARE(PictureReader(path()).size(), QSize());

        // We do not control what decoders log.
        log.takeMessages();
    }

    // A TIFF file gives the position of its directory, and programs write the directory after the
    // pixels.
    void sizeAtTheEndOfALargeFileIsFound()
    {
        const MessageLog log;
        m_folder.write(Name, encodedPicture(quadrantPicture(Size), "tiff"));
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QByteArray bytes = file.readAll();
        QVERIFY(bytes.startsWith("II"));
        constexpr int pointer = 4;
        const int directory = qFromLittleEndian<int>(bytes.constData() + pointer);
        const qint64 end = 2 * PictureReader::HeaderLimit;
        QVERIFY(file.seek(end));
        QVERIFY(file.write(bytes.mid(directory)) > 0);
        QVERIFY(file.seek(pointer));
        QVERIFY(file.write(littleEndian(quint32(end))) > 0);
        file.close();

        QCOMPARE(PictureReader(path()).size(), Size);
        QCOMPARE(quadrants(PictureReader(path()).read()), QStringLiteral("RGWB"));
    }

    // This does not depend on the bytes that were read for the size.
    void pictureIsReadBehindALongSearchForItsSize()
    {
        const MessageLog log;
        m_folder.write(Name, sample("quadrants.gif"));
        QVERIFY(QFile::resize(path(), 2 * PictureReader::HeaderLimit));
        PictureReader reader(path());

        QCOMPARE(reader.size(), QSize(64, 64));
        QCOMPARE(quadrants(reader.read()), QStringLiteral("RGWB"));
    }

    // The decoder would take memory for all of it, and then find that it is cut off.
    void chunkThatClaimsGigabytesTakesNoMemory_data()
    {
        QTest::addColumn<char>("place");
        QTest::addColumn<QSize>("size");
        QTest::newRow("before the pixels") << char('H') << QSize();
        QTest::newRow("after the pixels") << char('E') << Size;
    }

    void chunkThatClaimsGigabytesTakesNoMemory()
    {
        QFETCH(char, place);
        QFETCH(QSize, size);
        const MessageLog log;
        QByteArray bytes = encodedPicture(quadrantPicture(Size), "png");
        constexpr int headerEnd = 33;
        constexpr int lastChunk = 12;
        const int offset = place == 'H' ? headerEnd : bytes.size() - lastChunk;
        bytes.insert(offset, bigEndian(quint32(0x60000000)) + QByteArrayLiteral("zTXta\0\0"));
        m_folder.write(Name, bytes);
        PictureReader reader(path());
        PictureReader inMemory(bytes);
        const long peak = peakMemory();

        for (PictureReader* const each : {&reader, &inMemory}) {
            QCOMPARE(each->size(), size);
            QVERIFY(each->read().isNull());
        }
        constexpr long kibOfChunk = 0x60000000 / 1024;
        QVERIFY2(peakMemory() - peak < kibOfChunk / 8, "the chunk's length has been allocated");
    }

    void pixelsThatAreCutOffAreLeftToTheDecoder()
    {
        MessageLog log;
        constexpr int end = 20;
        const QByteArray bytes = encodedPicture(quadrantPicture(Size), "png").chopped(end);
        PictureReader reader(bytes);

        QCOMPARE(reader.size(), Size);
        QCOMPARE(reader.read(), QImage::fromData(bytes, "png"));
        // What decoders say is not ours to choose.
        log.takeMessages();
    }

    void startOfAnEndlessFileGivesNone_data() { addStartsOfPictures(); }

    void startOfAnEndlessFileGivesNone()
    {
        QFETCH(QByteArray, bytes);
        MessageLog log;
        m_folder.write(Name, bytes);
        QVERIFY(QFile::resize(path(), qint64(1) << 40));
        PictureReader reader(path());

        QCOMPARE(reader.size(), QSize());
        QVERIFY(reader.read().isNull());
        // We do not control what decoders log.
        log.takeMessages();
    }
};

QTEST_GUILESS_MAIN(PictureReaderTest)

#include "tst_picturereader.moc"
