// SPDX-License-Identifier: BSD-3-Clause
#include "quillmetadata.h"

#include "byteorder.h"
#include "decompressionbomb.h"
#include "exifbuilder.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

#include <cerrno>
#include <ctime>
#include <random>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

Q_DECLARE_METATYPE(ExifBuilder::Order)

namespace {

/// Records what is written to the standard error stream, through Qt's messages or directly, while
/// it lives.
class ErrorStreamCapture
{
public:
    ErrorStreamCapture()
    {
        if (!m_file.open()) {
            qFatal("cannot capture the error stream");
        }
        m_original = dup(STDERR_FILENO);
        dup2(m_file.handle(), STDERR_FILENO);
        m_handler = qInstallMessageHandler(writeMessage);
    }

    ~ErrorStreamCapture()
    {
        qInstallMessageHandler(m_handler);
        dup2(m_original, STDERR_FILENO);
        close(m_original);
    }
    Q_DISABLE_COPY_MOVE(ErrorStreamCapture)

    QByteArray written() const
    {
        QFile file(m_file.fileName());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no capture");
    }

private:
    static void writeMessage(QtMsgType, const QMessageLogContext&, const QString& message)
    {
        fprintf(stderr, "%s\n", qPrintable(message));
        fflush(stderr);
    }

    QTemporaryFile m_file;
    int m_original = -1;
    QtMessageHandler m_handler = nullptr;
};

/// The processor time of this thread. Other processes do not influence it.
qint64 processorMilliseconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

qint64 peakMemoryMegabytes()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

const QByteArray Date("2020:01:02 03:04:05");

QDateTime moment(int milliseconds = 0)
{
    return {QDate(2020, 1, 2), QTime(3, 4, 5, milliseconds)};
}

/// A directory in a block of `size` bytes, in which every entry claims the whole block as its
/// value.
QByteArray blockOfOverlappingValues(int size)
{
    ExifBuilder builder;
    for (quint16 tag = 0xc000; tag < 0xc0f0; ++tag) {
        // The text is too long for its entry, so the four bytes count as its position.
        builder.value(tag, ExifBuilder::Undefined, quint32(size - 8), QByteArray("\x08\0\0\0", 4));
    }
    const QByteArray block = builder.number(ExifBuilder::Orientation, 3).block();
    return block.leftJustified(size, '\0');
}

/// Boxes that are nested several times.
QByteArray nestedBoxes(const QByteArray& type, int depth)
{
    constexpr int headSize = 8;
    QByteArray boxes = bigEndian(quint32(16)) + "ftypheic" + bigEndian(quint32(0));
    for (int level = depth; level > 0; --level) {
        boxes += bigEndian(quint32(level * headSize)) + type;
    }
    return boxes;
}

} // namespace

class QuillMetadataTest : public QObject
{
    Q_OBJECT

    static void addKinds();
    QString path(const QString& name) const { return m_folder->filePath(name); }
    QString write(const QByteArray& content, const QString& name = QStringLiteral("picture")) const;
    void compareEntries(
        const QByteArray& content, const QDateTime& timestamp, int orientation,
        int formats = QuillMetadata::AllFormats) const;

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<ErrorStreamCapture> m_capture;

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void dateAndOrientationOfEachKindAreRead_data();
    void dateAndOrientationOfEachKindAreRead();
    void bothByteOrdersAreRead_data();
    void bothByteOrdersAreRead();
    void theKindIsToldFromTheContent();
    void tagsBehindThePixelsOfPngAreRead();
    void paddingBetweenJpegSegmentsIsSkipped();
    void webpChunkOfOddSizeIsPadded();
    void exifPrefixOfJpegIsSkippedInOtherKinds();

    void firstValidExifDateIsTaken_data();
    void firstValidExifDateIsTaken();
    void dateSpellingsOfCamerasAreRead_data();
    void dateSpellingsOfCamerasAreRead();
    void eachDateHasItsOwnSubSecondsAndOffset();
    void textOfFourBytesStandsInItsEntry();
    void entriesBeforeTheEndOfACutOffDirectoryAreRead();
    void dateStoredAsBytesIsRead();
    void firstOfTwoEqualTagsIsTaken();
    void firstOfTwoOrientationsIsTaken();
    void orientationOfOtherIntegerTypesIsRead_data();
    void orientationOfOtherIntegerTypesIsRead();
    void orientationOutsideOneToEightIsInvalid_data();
    void orientationOutsideOneToEightIsInvalid();

    void boxWithALongSizeIsRead();
    void boxUpToTheEndIsRead();
    void xmpOfEachKindIsRead_data();
    void xmpOfEachKindIsRead();
    void firstValidXmpDateIsTaken_data();
    void firstValidXmpDateIsTaken();
    void exifIsBelievedBeforeXmp();
    void xmpFillsWhatExifLeavesOpen();
    void xmpElementsAreRead();
    void malformedXmpIsIgnored_data();
    void malformedXmpIsIgnored();
    void formatsSelectTheSources_data();
    void formatsSelectTheSources();

    void unknownTagIsInvalid();
    void whatIsNoPictureHasNoEntries_data();
    void whatIsNoPictureHasNoEntries();
    void missingFileAndDirectoryHaveNoEntries();
    void fifoIsNotOpened();
    void symbolicLinkIsFollowed();
    void namesOutsideAsciiAreRead();

    void everyTruncationGivesTheValueOrNone_data();
    void everyTruncationGivesTheValueOrNone();
    void randomDamageGivesSaneValuesOrNone_data();
    void randomDamageGivesSaneValuesOrNone();
    void hostileFileTakesLittleTimeAndMemory_data();
    void hostileFileTakesLittleTimeAndMemory();
};

void QuillMetadataTest::initTestCase()
{
    qputenv("TZ", "Europe/Berlin");
    tzset();
}

void QuillMetadataTest::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
    m_capture.reset(new ErrorStreamCapture);
}

void QuillMetadataTest::cleanup()
{
    const QByteArray written = m_capture->written();
    m_capture.reset();
    QCOMPARE(written, QByteArray());
}

QString QuillMetadataTest::write(const QByteArray& content, const QString& name) const
{
    // This makes a new file each time, because some file systems wait for the disk when a file is
    // overwritten.
    QFile file(path(name));
    file.remove();
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write a test file");
    }
    return file.fileName();
}

/// An invalid timestamp and an orientation of 0 mean invalid entries.
void QuillMetadataTest::compareEntries(
    const QByteArray& content, const QDateTime& timestamp, int orientation, int formats) const
{
    const QuillMetadata metadata(write(content), formats);

    const QVariant date = metadata.entry(QuillMetadata::TimestampTag);
    QCOMPARE(date, timestamp.isValid() ? QVariant(timestamp) : QVariant());
    const QVariant number = metadata.entry(QuillMetadata::OrientationTag);
    QCOMPARE(number, orientation > 0 ? QVariant(orientation) : QVariant());
}

void QuillMetadataTest::dateAndOrientationOfEachKindAreRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("orientation");

    for (int orientation = 1; orientation <= 8; ++orientation) {
        const QByteArray exif = exifBlock(Date, orientation);
        ExifBuilder builder;
        builder.text(ExifBuilder::DateTimeOriginal, Date);
        builder.number(ExifBuilder::Orientation, quint16(orientation));
        QTest::addRow("JPEG %d", orientation) << jpegWithExif(exif) << orientation;
        QTest::addRow("PNG %d", orientation) << pngWithExif(exif) << orientation;
        QTest::addRow("WebP %d", orientation) << webpWithExif(exif) << orientation;
        QTest::addRow("TIFF %d", orientation) << tiffWithExif(builder) << orientation;
        QTest::addRow("HEIF %d", orientation) << heifWithExif(exif) << orientation;
        QTest::addRow("HEIF with long numbers %d", orientation)
            << heifWithExif(exif, {}, HeifLayout::MediaDataLongNumbers) << orientation;
        QTest::addRow("HEIF with a data box %d", orientation)
            << heifWithExif(exif, {}, HeifLayout::DataBox) << orientation;
    }
}

void QuillMetadataTest::dateAndOrientationOfEachKindAreRead()
{
    QFETCH(QByteArray, content);
    QFETCH(int, orientation);

    compareEntries(content, moment(), orientation);
}

void QuillMetadataTest::bothByteOrdersAreRead_data()
{
    QTest::addColumn<ExifBuilder::Order>("order");

    QTest::newRow("little endian") << ExifBuilder::Order::LittleEndian;
    QTest::newRow("big endian") << ExifBuilder::Order::BigEndian;
}

void QuillMetadataTest::bothByteOrdersAreRead()
{
    QFETCH(ExifBuilder::Order, order);
    ExifBuilder builder(order);
    builder.text(ExifBuilder::DateTime, Date).number(ExifBuilder::Orientation, 6);

    compareEntries(jpegWithExif(builder.block()), moment(), 6);
    compareEntries(tiffWithExif(builder), moment(), 6);
}

void QuillMetadataTest::theKindIsToldFromTheContent()
{
    const QString path = write(pngWithExif(exifBlock(Date)), QStringLiteral("picture.jpg"));

    QCOMPARE(QuillMetadata(path).entry(QuillMetadata::TimestampTag), QVariant(moment()));
}

void QuillMetadataTest::tagsBehindThePixelsOfPngAreRead()
{
    const QByteArray plain = pngWithExif({});
    const QByteArray tagged = pngWithExif(exifBlock(Date, 5));
    constexpr int afterHeader = 33;
    constexpr int endChunkSize = 12;
    const QByteArray chunk = tagged.mid(afterHeader, tagged.size() - plain.size());
    QByteArray moved = plain;
    moved.insert(plain.size() - endChunkSize, chunk);

    compareEntries(moved, moment(), 5);
}

void QuillMetadataTest::paddingBetweenJpegSegmentsIsSkipped()
{
    QByteArray content = jpegWithExif(exifBlock(Date, 5));
    content.insert(2, QByteArray("\xff\xe0\0\x04zz\0\0\xff", 9));

    compareEntries(content, moment(), 5);
}

void QuillMetadataTest::webpChunkOfOddSizeIsPadded()
{
    constexpr int afterCanvas = 30;
    QByteArray content = webpWithExif(exifBlock(Date, 5));

    content.insert(afterCanvas, QByteArray("ODD \x01\0\0\0x\0", 10));

    compareEntries(content, moment(), 5);
}

void QuillMetadataTest::exifPrefixOfJpegIsSkippedInOtherKinds()
{
    const QByteArray prefixed = QByteArray("Exif\0\0", 6) + exifBlock(Date, 5);

    compareEntries(pngWithExif(prefixed), moment(), 5);
    compareEntries(webpWithExif(prefixed), moment(), 5);
}

void QuillMetadataTest::firstValidExifDateIsTaken_data()
{
    QTest::addColumn<QByteArray>("original");
    QTest::addColumn<QByteArray>("digitized");
    QTest::addColumn<QByteArray>("modified");
    QTest::addColumn<int>("year");

    const QByteArray original("2001:01:01 00:00:00");
    const QByteArray digitized("2002:01:01 00:00:00");
    const QByteArray modified("2003:01:01 00:00:00");
    const QByteArray zeros("0000:00:00 00:00:00");
    const QByteArray blanks("    :  :     :  :  ");
    QTest::newRow("all") << original << digitized << modified << 2001;
    QTest::newRow("no original") << QByteArray() << digitized << modified << 2002;
    QTest::newRow("modified only") << QByteArray() << QByteArray() << modified << 2003;
    QTest::newRow("zeros for the original") << zeros << digitized << modified << 2002;
    QTest::newRow("zeros and blanks") << zeros << blanks << modified << 2003;
    QTest::newRow("none valid") << zeros << blanks << zeros << 0;
}

void QuillMetadataTest::firstValidExifDateIsTaken()
{
    QFETCH(QByteArray, original);
    QFETCH(QByteArray, digitized);
    QFETCH(QByteArray, modified);
    QFETCH(int, year);
    ExifBuilder builder;
    builder.text(ExifBuilder::DateTimeOriginal, original);
    builder.text(ExifBuilder::DateTimeDigitized, digitized);
    builder.text(ExifBuilder::DateTime, modified);

    const QDateTime expected = year > 0 ? QDateTime(QDate(year, 1, 1), QTime(0, 0)) : QDateTime();

    compareEntries(jpegWithExif(builder.block()), expected, 0);
}

void QuillMetadataTest::dateSpellingsOfCamerasAreRead_data()
{
    QTest::addColumn<QByteArray>("date");
    QTest::addColumn<QDateTime>("expected");

    QTest::newRow("standard") << Date << moment();
    QTest::newRow("dashes") << QByteArray("2020-01-02 03:04:05") << moment();
    QTest::newRow("slashes") << QByteArray("2020/01/02 03:04:05") << moment();
    QTest::newRow("ISO 8601") << QByteArray("2020-01-02T03:04:05") << moment();
    QTest::newRow("blanks at the end") << QByteArray("2020:01:02 03:04:05   ") << moment();
    QTest::newRow("NULs at the end") << Date + QByteArray(8, '\0') << moment();
    QTest::newRow("blanks for zeros") << QByteArray("2020: 1: 2  3: 4: 5") << moment();
    QTest::newRow("day only") << QByteArray("2020:01:02")
                              << QDateTime(QDate(2020, 1, 2), QTime(0, 0));
    QTest::newRow("zeros") << QByteArray("0000:00:00 00:00:00") << QDateTime();
    QTest::newRow("blanks") << QByteArray("    :  :     :  :  ") << QDateTime();
    QTest::newRow("all blank") << QByteArray(19, ' ') << QDateTime();
    QTest::newRow("month 13") << QByteArray("2021:13:01 00:00:00") << QDateTime();
    QTest::newRow("30 February") << QByteArray("2021:02:30 00:00:00") << QDateTime();
    QTest::newRow("hour 25") << QByteArray("2021:01:02 25:00:00") << QDateTime();
}

void QuillMetadataTest::dateSpellingsOfCamerasAreRead()
{
    QFETCH(QByteArray, date);
    QFETCH(QDateTime, expected);

    compareEntries(jpegWithExif(exifBlock(date)), expected, 0);
}

void QuillMetadataTest::eachDateHasItsOwnSubSecondsAndOffset()
{
    const auto entryWith = [this](quint16 date, quint16 subSeconds, quint16 offset) {
        ExifBuilder builder;
        builder.text(ExifBuilder::SubSecTime, "1").text(ExifBuilder::OffsetTime, "+01:00");
        builder.text(ExifBuilder::SubSecTimeOriginal, "1");
        builder.text(ExifBuilder::OffsetTimeOriginal, "+01:00");
        builder.text(ExifBuilder::SubSecTimeDigitized, "1");
        builder.text(ExifBuilder::OffsetTimeDigitized, "+01:00");
        builder.text(date, Date).text(subSeconds, "25").text(offset, "-03:30");
        const QuillMetadata metadata(write(jpegWithExif(builder.block())));
        return metadata.entry(QuillMetadata::TimestampTag).toDateTime().toString(Qt::ISODateWithMs);
    };
    const QString expected = QStringLiteral("2020-01-02T03:04:05.250-03:30");

    QCOMPARE(
        entryWith(
            ExifBuilder::DateTimeOriginal, ExifBuilder::SubSecTimeOriginal,
            ExifBuilder::OffsetTimeOriginal),
        expected);
    QCOMPARE(
        entryWith(
            ExifBuilder::DateTimeDigitized, ExifBuilder::SubSecTimeDigitized,
            ExifBuilder::OffsetTimeDigitized),
        expected);
    QCOMPARE(
        entryWith(ExifBuilder::DateTime, ExifBuilder::SubSecTime, ExifBuilder::OffsetTime),
        expected);
}

void QuillMetadataTest::textOfFourBytesStandsInItsEntry()
{
    ExifBuilder builder;
    builder.text(ExifBuilder::DateTimeOriginal, Date).text(ExifBuilder::SubSecTimeOriginal, "250");

    compareEntries(jpegWithExif(builder.block()), moment(250), 0);
}

void QuillMetadataTest::entriesBeforeTheEndOfACutOffDirectoryAreRead()
{
    constexpr int directory = 8;
    QByteArray block = exifBlock({}, 6);
    QCOMPARE(block.mid(directory, 2), QByteArray("\x01\0", 2));
    block[directory] = 5;

    compareEntries(jpegWithExif(block), {}, 6);
}

void QuillMetadataTest::dateStoredAsBytesIsRead()
{
    ExifBuilder builder;
    builder.value(
        ExifBuilder::DateTimeOriginal, ExifBuilder::Undefined, quint32(Date.size()), Date);

    compareEntries(jpegWithExif(builder.block()), moment(), 0);
}

void QuillMetadataTest::firstOfTwoEqualTagsIsTaken()
{
    ExifBuilder builder;
    builder.text(ExifBuilder::DateTimeOriginal, Date);
    builder.text(ExifBuilder::DateTimeDigitized, "2021:01:01 00:00:00");
    QByteArray block = builder.block();
    block.replace("\x04\x90", "\x03\x90");

    compareEntries(jpegWithExif(block), moment(), 0);
}

void QuillMetadataTest::firstOfTwoOrientationsIsTaken()
{
    constexpr quint16 nextTag = ExifBuilder::Orientation + 1;
    ExifBuilder builder;
    builder.number(ExifBuilder::Orientation, 6).number(nextTag, 3);
    QByteArray block = builder.block();
    block.replace("\x13\x01", "\x12\x01");

    const QuillMetadata metadata(write(jpegWithExif(block)));

    QCOMPARE(metadata.entry(QuillMetadata::OrientationTag), QVariant(6));
}

void QuillMetadataTest::orientationOfOtherIntegerTypesIsRead_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("byte") << int(ExifBuilder::Byte) << QByteArray("\x06");
    QTest::newRow("long") << int(ExifBuilder::Long) << QByteArray("\x06\0\0\0", 4);
}

void QuillMetadataTest::orientationOfOtherIntegerTypesIsRead()
{
    QFETCH(int, type);
    QFETCH(QByteArray, bytes);
    ExifBuilder builder;
    builder.value(ExifBuilder::Orientation, quint16(type), 1, bytes);

    compareEntries(jpegWithExif(builder.block()), {}, 6);
}

void QuillMetadataTest::orientationOutsideOneToEightIsInvalid_data()
{
    QTest::addColumn<int>("orientation");

    for (const int orientation : {0, 9, 255, 256, 0x0600, 65535}) {
        QTest::addRow("%d", orientation) << orientation;
    }
}

void QuillMetadataTest::orientationOutsideOneToEightIsInvalid()
{
    QFETCH(int, orientation);

    compareEntries(jpegWithExif(exifBlock(Date, orientation)), moment(), 0);
}

void QuillMetadataTest::addKinds()
{
    QTest::addColumn<QByteArray>("content");

    const QByteArray exif = exifBlock(Date, 6);
    ExifBuilder builder;
    builder.text(ExifBuilder::DateTimeOriginal, Date).number(ExifBuilder::Orientation, 6);
    QTest::newRow("JPEG") << jpegWithExif(exif);
    QTest::newRow("PNG") << pngWithExif(exif);
    QTest::newRow("PNG with a text of digits")
        << pngWithChunks(pngText("zTXt", "Raw profile type exif", rawProfile("exif", exif)));
    QTest::newRow("WebP") << webpWithExif(exif);
    QTest::newRow("TIFF") << tiffWithExif(builder);
    QTest::newRow("HEIF") << heifWithExif(exif);
    QTest::newRow("HEIF with long numbers")
        << heifWithExif(exif, {}, HeifLayout::MediaDataLongNumbers);
    QTest::newRow("HEIF with a data box") << heifWithExif(exif, {}, HeifLayout::DataBox);
}

void QuillMetadataTest::boxWithALongSizeIsRead()
{
    constexpr int sizeLength = 4;
    QByteArray content = heifWithExif(exifBlock(Date, 6), {}, HeifLayout::DataBox);
    const int start = content.indexOf("meta") - sizeLength;
    const auto size = qFromBigEndian<quint32>(content.constData() + start);
    content.replace(
        start, sizeLength + sizeLength,
        bigEndian(quint32(1)) + "meta" + bigEndian(quint64(size) + sizeof(quint64)));

    compareEntries(content, moment(), 6);
}

void QuillMetadataTest::boxUpToTheEndIsRead()
{
    constexpr int sizeLength = 4;
    QByteArray content = heifWithExif(exifBlock(Date, 6), {}, HeifLayout::DataBox);
    content.replace(content.indexOf("meta") - sizeLength, sizeLength, bigEndian(quint32(0)));

    compareEntries(content, moment(), 6);
}

void QuillMetadataTest::xmpOfEachKindIsRead_data()
{
    QTest::addColumn<QByteArray>("content");

    const QByteArray xmp =
        xmpPacket(R"(exif:DateTimeOriginal="2020-01-02T03:04:05.25+02:00" tiff:Orientation="8")");
    QTest::newRow("JPEG") << jpegWithExif(QByteArray(), xmp);
    QTest::newRow("PNG") << pngWithExif(QByteArray(), xmp);
    QTest::newRow("WebP") << webpWithExif(QByteArray(), xmp);
    QTest::newRow("TIFF") << tiffWithExif(ExifBuilder(), xmp);
    QTest::newRow("HEIF") << heifWithExif(QByteArray(), xmp);
    QTest::newRow("HEIF with long numbers")
        << heifWithExif(QByteArray(), xmp, HeifLayout::MediaDataLongNumbers);
    QTest::newRow("HEIF with a data box") << heifWithExif(QByteArray(), xmp, HeifLayout::DataBox);
}

void QuillMetadataTest::xmpOfEachKindIsRead()
{
    QFETCH(QByteArray, content);
    constexpr int twoHours = 7200;

    compareEntries(
        content, QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5, 250), Qt::OffsetFromUTC, twoHours), 8);
}

void QuillMetadataTest::firstValidXmpDateIsTaken_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<int>("year");

    const QByteArray original(R"(exif:DateTimeOriginal="2001-01-01" )");
    const QByteArray created(R"(photoshop:DateCreated="2002-01-01" )");
    const QByteArray digitized(R"(xmp:CreateDate="2003-01-01" )");
    const QByteArray invalid(R"(exif:DateTimeOriginal="2001-02-30" )");
    QTest::newRow("all") << original + created + digitized << 2001;
    QTest::newRow("no original") << created + digitized << 2002;
    QTest::newRow("digitized only") << digitized << 2003;
    QTest::newRow("invalid original") << invalid + digitized << 2003;
    QTest::newRow("none valid") << invalid << 0;
}

void QuillMetadataTest::firstValidXmpDateIsTaken()
{
    QFETCH(QByteArray, attributes);
    QFETCH(int, year);
    const QDateTime expected = year > 0 ? QDateTime(QDate(year, 1, 1), QTime(0, 0)) : QDateTime();

    compareEntries(jpegWithExif(QByteArray(), xmpPacket(attributes)), expected, 0);
}

void QuillMetadataTest::exifIsBelievedBeforeXmp()
{
    const QByteArray xmp = xmpPacket(R"(exif:DateTimeOriginal="1999-01-01" tiff:Orientation="8")");

    compareEntries(jpegWithExif(exifBlock(Date, 3), xmp), moment(), 3);
}

void QuillMetadataTest::xmpFillsWhatExifLeavesOpen()
{
    const QByteArray xmp = xmpPacket(R"(exif:DateTimeOriginal="1999-01-01" tiff:Orientation="8")");
    const QDateTime xmpDate(QDate(1999, 1, 1), QTime(0, 0));

    compareEntries(jpegWithExif(exifBlock(Date), xmp), moment(), 8);
    compareEntries(jpegWithExif(exifBlock({}, 3), xmp), xmpDate, 3);
    compareEntries(jpegWithExif(exifBlock("0000:00:00 00:00:00", 9), xmp), xmpDate, 8);
}

void QuillMetadataTest::xmpElementsAreRead()
{
    const QByteArray attributes = xmpPacket({});
    const QByteArray elements =
        QByteArray(attributes)
            .replace(
                "/></rdf:RDF>",
                "><tiff:Orientation>7</tiff:Orientation>"
                "<xmp:CreateDate>2020-01-02T03:04:05</xmp:CreateDate></rdf:Description></rdf:RDF>");

    compareEntries(jpegWithExif(QByteArray(), elements), moment(), 7);
}

void QuillMetadataTest::malformedXmpIsIgnored_data()
{
    QTest::addColumn<QByteArray>("packet");

    const QByteArray good = xmpPacket(R"(xmp:CreateDate="2020-01-02" tiff:Orientation="8")");
    QTest::newRow("cut off") << good.left(good.indexOf("/></rdf:RDF>"));
    QTest::newRow("no XML") << QByteArray("CreateDate and Orientation");
    QTest::newRow("unknown prefix") << QByteArray(good).replace("xmlns:tiff", "xmlns:other");
    QTest::newRow("not UTF-8") << QByteArray(good).replace("2020", "\xff\xfe\xfd");
    QTest::newRow("entity bomb") << QByteArray(R"(<!DOCTYPE x [<!ENTITY a "aaaaaaaaaaaaaaaa">)"
                                               R"(<!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;">]>)")
            + good;
    QTest::newRow("refused by the library") << QByteArray(good).replace(
        "/></rdf:RDF>",
        R"(><dc:title xmlns:dc="http://purl.org/dc/elements/1.1/" xml:lang="en">)"
        R"(<rdf:Alt><rdf:li xml:lang="en">x</rdf:li></rdf:Alt></dc:title>)"
        "</rdf:Description></rdf:RDF>");
    QTest::newRow("deep") << QByteArray(good).replace(
        "/></rdf:RDF>", ">" + QByteArray("<a>").repeated(10000));
    QTest::newRow("larger than a segment") << good + QByteArray(70000, ' ');
    QTest::newRow("orientation in words") << xmpPacket(R"(tiff:Orientation="top")");
    QTest::newRow("negative orientation") << xmpPacket(R"(tiff:Orientation="-1")");
    QTest::newRow("orientation of many digits") << xmpPacket(R"(tiff:Orientation="4294967297")");
}

void QuillMetadataTest::malformedXmpIsIgnored()
{
    QFETCH(QByteArray, packet);

    compareEntries(pngWithExif(QByteArray(), packet), {}, 0);
}

void QuillMetadataTest::formatsSelectTheSources_data()
{
    QTest::addColumn<int>("formats");
    QTest::addColumn<QDateTime>("timestamp");
    QTest::addColumn<int>("orientation");

    const QDateTime xmpDate(QDate(1999, 1, 1), QTime(0, 0));
    QTest::newRow("none") << 0 << QDateTime() << 0;
    QTest::newRow("neither") << 0x1 << QDateTime() << 0;
    QTest::newRow("Exif") << int(QuillMetadata::ExifFormat) << moment() << 0;
    QTest::newRow("XMP") << int(QuillMetadata::XmpFormat) << xmpDate << 8;
    QTest::newRow("both") << (QuillMetadata::ExifFormat | QuillMetadata::XmpFormat) << moment()
                          << 8;
    QTest::newRow("all") << -2 << moment() << 8;
}

void QuillMetadataTest::formatsSelectTheSources()
{
    QFETCH(int, formats);
    QFETCH(QDateTime, timestamp);
    QFETCH(int, orientation);
    const QByteArray xmp = xmpPacket(R"(exif:DateTimeOriginal="1999-01-01" tiff:Orientation="8")");
    ExifBuilder builder;
    builder.text(ExifBuilder::DateTimeOriginal, Date);

    compareEntries(jpegWithExif(builder.block(), xmp), timestamp, orientation, formats);
    compareEntries(tiffWithExif(builder, xmp), timestamp, orientation, formats);
}

void QuillMetadataTest::unknownTagIsInvalid()
{
    const QuillMetadata metadata(write(jpegWithExif(exifBlock(Date, 6))));

    for (const int tag : {-1, 0, 5, 7, 16, 18, 0x112, 0x9003}) {
        QVERIFY2(!metadata.entry(tag).isValid(), QByteArray::number(tag).constData());
    }
}

void QuillMetadataTest::whatIsNoPictureHasNoEntries_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one byte") << QByteArray("\xff");
    QTest::newRow("JPEG start") << QByteArray("\xff\xd8\xff");
    QTest::newRow("JPEG without tags") << jpegWithExif({});
    QTest::newRow("PNG without tags") << pngWithExif({});
    QTest::newRow("WebP without tags") << webpWithExif({});
    QTest::newRow("TIFF without tags") << tiffWithExif(ExifBuilder());
    QTest::newRow("HEIF without tags") << heifWithExif({});
    QTest::newRow("text") << QByteArray("DateTimeOriginal 2020:01:02 03:04:05");
    QTest::newRow("XMP alone") << xmpPacket(R"(xmp:CreateDate="2020-01-02")");
    QTest::newRow("Exif prefix alone") << QByteArray("Exif\0\0", 6) + exifBlock(Date, 6);
}

void QuillMetadataTest::whatIsNoPictureHasNoEntries()
{
    QFETCH(QByteArray, content);

    compareEntries(content, {}, 0);
}

void QuillMetadataTest::missingFileAndDirectoryHaveNoEntries()
{
    for (const QString& name : {path(QStringLiteral("missing")), m_folder->path(), QString()}) {
        const QuillMetadata metadata(name);
        QVERIFY(!metadata.entry(QuillMetadata::TimestampTag).isValid());
        QVERIFY(!metadata.entry(QuillMetadata::OrientationTag).isValid());
    }
}

void QuillMetadataTest::fifoIsNotOpened()
{
    const QByteArray name = QFile::encodeName(path(QStringLiteral("fifo.jpg")));
    QCOMPARE(mkfifo(name.constData(), 0600), 0);
    const int watcher = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    QVERIFY(inotify_add_watch(watcher, name.constData(), IN_OPEN) >= 0);

    // Waiting for a writer would last until the test's time limit.
    const QuillMetadata metadata(QFile::decodeName(name));

    QVERIFY(!metadata.entry(QuillMetadata::TimestampTag).isValid());
    inotify_event event = {};
    QCOMPARE(read(watcher, &event, sizeof(event)), ssize_t(-1));
    QCOMPARE(errno, EAGAIN);
    close(watcher);
}

void QuillMetadataTest::symbolicLinkIsFollowed()
{
    const QString target = write(jpegWithExif(exifBlock(Date, 6)));
    const QString link = path(QStringLiteral("link"));
    QVERIFY(QFile::link(target, link));

    QCOMPARE(QuillMetadata(link).entry(QuillMetadata::OrientationTag), QVariant(6));
}

void QuillMetadataTest::namesOutsideAsciiAreRead()
{
    const QString name =
        write(jpegWithExif(exifBlock(Date, 6)), QStringLiteral(R"(Füße in 写真 'n".jpg)"));

    QCOMPARE(QuillMetadata(name).entry(QuillMetadata::OrientationTag), QVariant(6));
}

void QuillMetadataTest::everyTruncationGivesTheValueOrNone_data()
{
    addKinds();
}

void QuillMetadataTest::everyTruncationGivesTheValueOrNone()
{
    QFETCH(QByteArray, content);
    compareEntries(content, moment(), 6);

    for (int length = 0; length < content.size(); ++length) {
        const QuillMetadata metadata(write(content.left(length)));
        const QVariant timestamp = metadata.entry(QuillMetadata::TimestampTag);
        const QVariant orientation = metadata.entry(QuillMetadata::OrientationTag);
        const QByteArray message = "cut to " + QByteArray::number(length);
        QVERIFY2(!timestamp.isValid() || timestamp == QVariant(moment()), message.constData());
        QVERIFY2(!orientation.isValid() || orientation == QVariant(6), message.constData());
    }
}

void QuillMetadataTest::randomDamageGivesSaneValuesOrNone_data()
{
    addKinds();
    const QByteArray xmp = xmpPacket(R"(xmp:CreateDate="2020-01-02" tiff:Orientation="8")");
    QTest::newRow("XMP") << jpegWithExif(QByteArray(), xmp);
}

void QuillMetadataTest::randomDamageGivesSaneValuesOrNone()
{
    QFETCH(QByteArray, content);
    constexpr int rounds = 2000;
    constexpr unsigned seed = 20200102;
    std::mt19937 random(seed);
    const auto below = [&random](int limit) { return int(random() % unsigned(limit)); };

    for (int round = 0; round < rounds; ++round) {
        QByteArray damaged = content;
        for (int count = 1 + below(4); count > 0; --count) {
            damaged[below(damaged.size())] = char(below(256));
        }
        const QuillMetadata metadata(write(damaged));
        const QVariant timestamp = metadata.entry(QuillMetadata::TimestampTag);
        const QVariant orientation = metadata.entry(QuillMetadata::OrientationTag);
        const int number = orientation.toInt();
        QVERIFY(!timestamp.isValid() || timestamp.toDateTime().isValid());
        QVERIFY(!orientation.isValid() || (number >= 1 && number <= 8));
    }
}

void QuillMetadataTest::hostileFileTakesLittleTimeAndMemory_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<int>("orientation");

    constexpr qint64 huge = 300'000'000;
    constexpr int largestSegment = 65000;
    const QByteArray jpeg("\xff\xd8\xff\xe0\0\x04zz", 8);
    QTest::newRow("zeros after a start") << QByteArray("\xff\xd8") << huge << 0;
    QTest::newRow("zeros after a marker") << QByteArray("\xff\xd8\xff") << huge << 0;
    QTest::newRow("zeros after a segment") << jpeg << huge << 0;
    QTest::newRow("zeros after a picture") << jpegWithExif(exifBlock(Date, 3)) << huge << 3;
    QTest::newRow("padding of JPEG")
        << QByteArray("\xff\xd8") + QByteArray(1 << 22, '\xff') << qint64(1 << 22) << 0;
    QTest::newRow("many segments")
        << "\xff\xd8" + QByteArray("\xff\xe1\0\x02", 4).repeated(1 << 20) << qint64(1 << 22) << 0;
    QTest::newRow("overlapping values in JPEG")
        << jpegWithExif(blockOfOverlappingValues(largestSegment)) << qint64(0) << 3;
    QTest::newRow("overlapping values in TIFF") << blockOfOverlappingValues(1 << 22) << huge << 3;
    QTest::newRow("chunks of nothing")
        << pngWithExif({}).left(33) + QByteArray("\0\0\0\0teSt\0\0\0\0", 12).repeated(1 << 20)
        << qint64(0) << 0;
    const QByteArray bomb = "Raw profile type exif" + QByteArray(2, '\0') + compressedZeros(huge);
    QTest::newRow("text that inflates without end")
        << pngWithChunks(pngChunk("zTXt", bomb)) << qint64(0) << 0;
    QTest::newRow("many such texts")
        << pngWithChunks(pngChunk("zTXt", bomb).repeated(50)) << qint64(0) << 0;
    QTest::newRow("huge text of digits")
        << pngWithExif({}).left(33) + bigEndian(quint32(0x10000000)) + "tEXt"
            + "Raw profile type exif" + '\0' + rawProfile("exif", exifBlock(Date, 3))
        << huge << 3;
    QTest::newRow("zeros for chunks of PNG") << pngWithExif({}).left(33) << huge << 0;
    QTest::newRow("zeros for chunks of WebP") << webpWithExif({}).left(30) << huge << 0;
    QTest::newRow("zeros for boxes") << nestedBoxes("meta", 0) << huge << 0;
    QTest::newRow("huge chunk") << pngWithExif({}).left(33) + bigEndian(quint32(0x10000000))
            + "eXIf" << huge << 0;
    QTest::newRow("huge WebP chunk")
        << webpWithExif({}).left(30) + QByteArray("EXIF\0\0\0\x10", 8) << huge << 0;
    QTest::newRow("nested boxes") << nestedBoxes("moov", 125000) << qint64(0) << 0;
    QTest::newRow("nested descriptions") << nestedBoxes("meta", 125000) << qint64(0) << 0;
    QTest::newRow("item far outside")
        << heifWithExif(exifBlock(Date, 3), {}, HeifLayout::MediaDataLongNumbers)
               .replace(
                   QByteArray("\0\x07\0\0\0\0\0\0\0\0", 10),
                   QByteArray("\0\x07\0\0\0\0\x7f\xff\xff\xff", 10))
        << qint64(0) << 0;
    QTest::newRow("huge description")
        << heifWithExif(exifBlock(Date, 3)).left(24) + bigEndian(quint32(0x10000000)) + "meta"
        << huge << 0;
}

void QuillMetadataTest::hostileFileTakesLittleTimeAndMemory()
{
    QFETCH(QByteArray, start);
    QFETCH(qint64, size);
    QFETCH(int, orientation);
    const QString name = write(start);
    QVERIFY(size <= start.size() || QFile::resize(name, size));
    const qint64 timeBefore = processorMilliseconds();
    const qint64 memoryBefore = peakMemoryMegabytes();

    const QuillMetadata metadata(name);

    // With sanitizers, this takes about ten times as long.
    const qint64 time = processorMilliseconds() - timeBefore;
    QVERIFY2(time < 500, QByteArray::number(time).constData());
    const qint64 memory = peakMemoryMegabytes() - memoryBefore;
    QVERIFY2(memory < 8, QByteArray::number(memory).constData());
    QCOMPARE(metadata.entry(QuillMetadata::OrientationTag).toInt(), orientation);
}

QTEST_GUILESS_MAIN(QuillMetadataTest)
#include "tst_quillmetadata.moc"
