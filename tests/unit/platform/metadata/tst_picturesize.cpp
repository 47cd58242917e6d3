// SPDX-License-Identifier: BSD-3-Clause
#include "picturesize.h"

#include "byteorder.h"
#include "exifbuilder.h"
#include "headersize.h"
#include "hostilepicture.h"
#include "mediapicture.h"
#include "messagelog.h"
#include "pictureformat.h"
#include "picturereader.h"
#include "samplepictures.h"
#include "testfolder.h"
#include "windowedfile.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <map>

namespace {

const QString Name = QStringLiteral("a.jpg");

/// The size that the header alone gives, without any decoder.
std::optional<QSize> headersSize(const QByteArray& decoder, WindowedFile& file)
{
    static const std::map<QByteArray, std::optional<QSize> (*)(WindowedFile&)> functions{
        {"jpeg", jpegSize}, {"png", pngSize}, {"webp", webpSize}, {"tiff", tiffSize},
        {"gif", gifSize},   {"bmp", bmpSize}, {"ppm", pnmSize}};
    return functions.at(decoder)(file);
}

} // namespace

class PictureSizeTest : public QObject
{
    Q_OBJECT

private:
    TestFolder m_folder;

    QString path() const { return m_folder.path(Name); }

    QSize sizeOf(const QByteArray& bytes)
    {
        m_folder.write(Name, bytes);
        WindowedFile file(path());
        return pictureSize(file);
    }

private Q_SLOTS:
    void sizeIsTheDecodersOne_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        for (const SamplePicture& sample : samplePictures()) {
            QTest::newRow(sample.name.constData()) << sample.bytes;
        }
        for (const QString& name : QDir(QStringLiteral(SAMPLE_PICTURES)).entryList(QDir::Files)) {
            QFile file(QStringLiteral(SAMPLE_PICTURES "/") + name);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QTest::newRow(qPrintable(name)) << file.readAll();
        }
    }

    void sizeIsTheDecodersOne()
    {
        QFETCH(QByteArray, bytes);
        MessageLog log;
        const QSize size = sizeOf(bytes);

        QCOMPARE(size, PictureReader(path()).size());
        QVERIFY(size.isValid());
        log.takeWarnings(); // of the decoder
    }

    void headerOfAnOrdinaryPictureIsEnough()
    {
        for (const SamplePicture& sample : samplePictures()) {
            m_folder.write(Name, sample.bytes);
            WindowedFile file(path());
            const auto size = headersSize(decoderName(pictureFormat(sample.bytes)), file);

            QVERIFY2(size || sample.name == "JPEG padded with abc", sample.name);
        }
    }

    void cutPictureHasTheDecodersSize()
    {
        constexpr int mostBytes = 1200;
        MessageLog log;
        for (const SamplePicture& sample : samplePictures()) {
            // The decoder reads all frames first.
            const bool isAnimation = sample.name == "WebP, animated";
            for (int length = qMin(sample.bytes.size(), mostBytes) - 1; length >= 0; --length) {
                const QSize size = sizeOf(sample.bytes.left(length));
                const QSize decoders = PictureReader(path()).size();
                QVERIFY2(
                    size == decoders || (isAnimation && !decoders.isValid()),
                    sample.name + ", " + QByteArray::number(length) + " bytes");
            }
        }
        log.takeWarnings(); // of the decoders
    }

    void picturesWithoutADecoderHaveTheSizeOfTheMainOne_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QVector<QSize> sizes{{512, 512}, {4032, 3024}, {320, 240}};
        for (const char* const brand : {"heic", "avif"}) {
            for (const auto numbers : {PropertyNumbers::Short, PropertyNumbers::Long}) {
                QTest::addRow("%s, %d", brand, int(numbers))
                    << mediaPicture(brand, sizes, 1, numbers);
            }
        }
    }

    void picturesWithoutADecoderHaveTheSizeOfTheMainOne()
    {
        QFETCH(QByteArray, bytes);
        const MessageLog log;

        QCOMPARE(sizeOf(bytes), QSize(4032, 3024));
        for (int length = bytes.size() - 1; length >= 0; --length) {
            QCOMPARE(sizeOf(bytes.left(length)), QSize());
        }
    }

    void impossibleSizesAreNone()
    {
        const MessageLog log;
        for (const QSize size : {QSize(0, 10), QSize(10, 0), QSize(-1, 10), QSize(10, 1000001)}) {
            QCOMPARE(sizeOf(mediaPicture("heic", {size}, 0)), QSize());
        }
        QCOMPARE(sizeOf(mediaPicture("heic", {QSize(1, 1)}, 7)), QSize());
    }

    void otherFormatsHaveNoSize_data() { addUnlistedFormats(); }

    void otherFormatsHaveNoSize()
    {
        QFETCH(QByteArray, bytes);
        const MessageLog log;

        QCOMPARE(sizeOf(bytes), QSize());
    }

    void nothingButARegularFileHasASize()
    {
        const MessageLog log;
        m_folder.makeFifo(QStringLiteral("fifo"));
        m_folder.makeLink(QStringLiteral("device"), QStringLiteral("/dev/zero"));
        for (const char* const name : {"fifo", "device", "missing", "."}) {
            WindowedFile file(m_folder.path(QLatin1String(name)));
            QCOMPARE(pictureSize(file), QSize());
        }
    }

    void fileThatShrinksOrVanishesWhileItIsOpenCostsNothingElse()
    {
        MessageLog log;
        for (const SamplePicture& sample : samplePictures()) {
            m_folder.write(Name, sample.bytes);
            WindowedFile shrinking(path());
            m_folder.write(Name, {});
            QCOMPARE(pictureSize(shrinking), QSize());
        }
        m_folder.write(Name, mediaPicture("heic", {QSize(4, 3)}, 0));
        WindowedFile vanished(path());
        m_folder.remove(Name);
        QCOMPARE(pictureSize(vanished), QSize(4, 3));
        log.takeWarnings(); // of the decoders
    }

    void hostileHeadersEndSoon_data()
    {
        const QByteArray mediaHead(
            "\0\0\0\x10"
            "ftypheic\0\0\0\0",
            16);
        QTest::addColumn<QByteArray>("start");
        QTest::addColumn<QByteArray>("piece");
        QTest::newRow("JPEG, empty segments")
            << QByteArray("\xff\xd8") << QByteArray("\xff\xe0\0\2", 4);
        QTest::newRow("JPEG, fill bytes") << QByteArray("\xff\xd8\xff") << QByteArray("\xff");
        QTest::newRow("PNG, empty chunks") << pngWithChunks({}).left(33) << pngChunk("teXt", {});
        QTest::newRow("GIF, extensions")
            << QByteArray("GIF89a\4\0\3\0\0\0\0", 13) << QByteArray("!\xfe\0", 3);
        QTest::newRow("GIF, one extension")
            << QByteArray("GIF89a\4\0\3\0\0\0\0!\xfe", 15) << QByteArray("\1a");
        QTest::newRow("PNM, comments") << QByteArray("P6 ") << QByteArray("#\n");
        QTest::newRow("HEIF, empty boxes") << mediaHead << box("free", {});
        QTest::newRow("HEIF, box of 2^63 bytes")
            << mediaHead + QByteArray("\0\0\0\1meta\x7f\xff\xff\xff\xff\xff\xff\xff", 16)
            << box("ipco", {});
    }

    void hostileHeadersEndSoon()
    {
        QFETCH(QByteArray, start);
        QFETCH(QByteArray, piece);
        constexpr int fileSize = 8 * 1024 * 1024;
        MessageLog log;
        m_folder.write(Name, start + piece.repeated(fileSize / piece.size()));
        WindowedFile file(path());

        // A reader that follows every piece would not end before the time limit of the test.
        QCOMPARE(pictureSize(file), PictureReader(path()).size());
        log.takeWarnings(); // of the decoders
    }

    void directoryThatHoldsItselfEndsSoon()
    {
        MessageLog log;
        // The entry points to its own directory, and so does the next directory.
        const QByteArray header = "II*" + QByteArray(1, '\0') + littleEndian(quint32(8));
        const QByteArray entry = littleEndian(quint16(0x8769)) + littleEndian(quint16(4))
            + littleEndian(quint32(1)) + littleEndian(quint32(8));

        QCOMPARE(
            sizeOf(header + littleEndian(quint16(1)) + entry + littleEndian(quint32(8))), QSize());
        log.takeWarnings(); // of the decoder
    }
};

QTEST_GUILESS_MAIN(PictureSizeTest)

#include "tst_picturesize.moc"
