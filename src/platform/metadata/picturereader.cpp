// SPDX-License-Identifier: BSD-3-Clause
#include "picturereader.h"

#include "boundedfile.h"
#include "pngchunks.h"

#include <QBuffer>
#include <QByteArray>
#include <QRect>
#include <QString>

#include <limits>
#include <new>
#include <utility>

namespace {

/// The result of `ask`, which calls a decoder; `none` if there is not enough memory.
template <typename Value, typename Ask>
Value answer(const Value& none, Ask ask)
{
    try {
        return ask();
    } catch (const std::bad_alloc&) {
        // Some plugins keep a whole file in memory.
        return none;
    }
}

/// The height of a BMP file. A negative one means that the rows go from top to bottom.
int heightOfRows(int height)
{
    return height > std::numeric_limits<int>::min() ? qAbs(height) : 0;
}

} // namespace

PictureReader::PictureReader(const QString& path)
    : PictureReader(std::make_unique<BoundedFile>(path))
{
}

PictureReader::PictureReader(std::shared_ptr<const RegularFile> file)
    : PictureReader(std::make_unique<BoundedFile>(std::move(file)))
{
}

PictureReader::PictureReader(std::unique_ptr<BoundedFile> file)
{
    file->allow(HeaderLimit);
    m_file = file.get();
    m_device = std::move(file);
    openPicture();
}

PictureReader::PictureReader(const QByteArray& content)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(content);
    buffer->open(QIODevice::ReadOnly);
    m_device = std::move(buffer);
    openPicture();
}

PictureReader::~PictureReader() = default;

/// Sets the decoder of the picture's format, if pictures of this format may be read.
void PictureReader::openPicture()
{
    if (m_device->isOpen()) {
        m_format = pictureFormat(m_device->peek(PictureSignatureSize));
    }
    // Without a name and without detection, the reader uses no decoder.
    m_reader.setAutoDetectImageFormat(false);
    m_reader.setFormat(decoderName(m_format));
    m_reader.setDevice(m_device.get());
}

/// Whether the decoder would take memory for what the picture does not have.
bool PictureReader::claimsTooMuch(PngChunks chunks, qint64 limit) const
{
    return m_format == PictureFormat::Png && hasOverlongChunk(m_device.get(), chunks, limit);
}

QSize PictureReader::size() const
{
    if (claimsTooMuch(PngChunks::BeforePixels, HeaderLimit)) {
        return {};
    }
    QSize size = answer(QSize(), [&] { return m_reader.size(); });
    if (m_format == PictureFormat::Bmp) {
        size.setHeight(heightOfRows(size.height()));
    }
    return size.isEmpty() ? QSize() : size;
}

QImage PictureReader::read()
{
    if (m_file) {
        m_file->allow(PictureLimit);
    }
    if (claimsTooMuch(PngChunks::All, PictureLimit)) {
        return {};
    }
    return answer(QImage(), [&] { return m_reader.read(); });
}

QImage PictureReader::read(const QRect& clip, const QSize& scaledSize)
{
    m_reader.setClipRect(clip);
    m_reader.setScaledSize(scaledSize);
    return read();
}
