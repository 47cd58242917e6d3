// SPDX-License-Identifier: BSD-3-Clause
#include "headersize.h"

#include "bytereader.h"
#include "jpegsegment.h"
#include "windowedfile.h"

#include <QByteArray>

namespace {

enum Marker : quint8 {
    BaselineFrame = 0xc0,
    SequentialFrame = 0xc1,
    ProgressiveFrame = 0xc2,
    HuffmanTables = 0xc4,
    QuantizationTables = 0xdb,
    RestartInterval = 0xdd,
    FirstApplication = 0xe0,
    LastApplication = 0xef,
    Comment = 0xfe
};

constexpr int Tables = 4;

bool hasQuantizationTables(ByteReader segment, int end)
{
    constexpr int values = 64;
    while (segment.isGood() && segment.position() < end) {
        const quint8 head = segment.u8();
        const int valueSize = (head >> 4) != 0 ? 2 : 1;
        segment.take(values * valueSize);
        if ((head & 0xf) >= Tables) {
            return false;
        }
    }
    return segment.isGood();
}

bool hasHuffmanTables(ByteReader segment, int end)
{
    constexpr int codeLengths = 16;
    constexpr int maximumCodes = 256;
    constexpr quint8 coefficients = 0x10; // the bit for coefficients other than the mean values
    while (segment.isGood() && segment.position() < end) {
        const quint8 head = segment.u8();
        int codes = 0;
        for (int i = 0; i < codeLengths; ++i) {
            codes += segment.u8();
        }
        segment.take(codes);
        if ((head & ~coefficients) >= Tables || codes > maximumCodes) {
            return false;
        }
    }
    return segment.isGood();
}

/// The frame of a picture.
struct Frame
{
    QSize size;
    QByteArray components; // their numbers
};

std::optional<Frame> readFrame(ByteReader segment, int end)
{
    constexpr int largestSide = 65500; // the limit of the decoder
    constexpr int samplePrecision = 8;
    constexpr int maximumSampling = 4;
    const quint8 precision = segment.u8();
    const int height = segment.u16();
    const int width = segment.u16();
    const int components = segment.u8();
    Frame frame{QSize(width, height), {}};
    bool isSampled = true;
    for (int i = 0; i < components; ++i) {
        frame.components += char(segment.u8());
        const quint8 sampling = segment.u8();
        segment.u8(); // the table
        for (const int rate : {sampling >> 4, sampling & 0xf}) {
            isSampled = isSampled && rate >= 1 && rate <= maximumSampling;
        }
    }
    const bool isColor = components == 1 || components == 3 || components == 4;
    const bool hasSides = !frame.size.isEmpty() && qMax(width, height) <= largestSide;
    if (!segment.isGood() || segment.position() != end || precision != samplePrecision || !isColor
        || !hasSides || !isSampled) {
        return {};
    }
    return frame;
}

bool isScanOf(const Frame& frame, ByteReader segment, int end)
{
    constexpr int selection = 3; // which coefficients, and which of their bits
    const int components = segment.u8();
    QByteArray seen;
    bool isKnown = components >= 1 && components <= frame.components.size();
    for (int i = 0; i < components; ++i) {
        const char component = char(segment.u8());
        segment.u8(); // the tables
        isKnown = isKnown && frame.components.contains(component) && !seen.contains(component);
        seen += component;
    }
    segment.take(selection);
    return segment.isGood() && segment.position() == end && isKnown;
}

/// Reads the segments that the decoder reads before the pixels.
class HeaderWalk
{
public:
    explicit HeaderWalk(WindowedFile& file)
        : m_file(file)
    {
    }

    std::optional<QSize> size()
    {
        qint64 offset = FirstJpegSegment;
        while (const std::optional<JpegSegment> segment = jpegSegmentAt(m_file, offset)) {
            if (segment->isPadded) {
                break;
            }
            if (segment->marker == JpegSegment::StartOfScan) {
                const bool isWhole =
                    m_frame && isScanOf(*m_frame, read(*segment), length(*segment));
                return isWhole ? std::make_optional(m_frame->size) : std::nullopt;
            }
            if (!take(*segment)) {
                break;
            }
            offset = segment->content.end();
        }
        return {};
    }

private:
    static int length(const JpegSegment& segment) { return int(segment.content.length); }

    ByteReader read(const JpegSegment& segment)
    {
        return ByteReader(m_file.read(segment.content.offset, length(segment)));
    }

    /// Whether the segment is known and correct.
    bool take(const JpegSegment& segment)
    {
        constexpr int intervalSize = 2;
        switch (segment.marker) {
        case BaselineFrame:
        case SequentialFrame:
        case ProgressiveFrame:
            if (m_frame) {
                return false;
            }
            m_frame = readFrame(read(segment), length(segment));
            return m_frame.has_value();
        case HuffmanTables:
            return hasHuffmanTables(read(segment), length(segment));
        case QuantizationTables:
            return hasQuantizationTables(read(segment), length(segment));
        case RestartInterval:
            return length(segment) == intervalSize;
        }
        // The content of these segments is not read. Thumbnails and profiles are among them.
        return (segment.marker >= FirstApplication && segment.marker <= LastApplication)
            || segment.marker == Comment;
    }

    WindowedFile& m_file;
    std::optional<Frame> m_frame;
};

} // namespace

std::optional<QSize> jpegSize(WindowedFile& file)
{
    return HeaderWalk(file).size();
}
