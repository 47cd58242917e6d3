// SPDX-License-Identifier: BSD-3-Clause
#include "decodableimage.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>
#include <QThreadPool>

#include <mutex>
#include <new>

namespace {

/// Has QImage scale and convert on one thread, which is there before a picture takes memory. It
/// would else start threads then, and wait for ever for one that there is no memory for.
void keepWorker()
{
    static std::once_flag isKept;
    std::call_once(isKept, [] {
        constexpr int never = -1;
        QThreadPool* const pool = QThreadPool::globalInstance();
        pool->setMaxThreadCount(1);
        pool->setExpiryTimeout(never);
        pool->start([] {});
    });
}

} // namespace

bool isDecodable(const QImageReader& reader)
{
    const QByteArray format = reader.format();
    return format != "svg" && format != "svgz";
}

QImage decoded(QImageReader* reader, const std::function<QImage(QImageReader*)>& decode)
{
    keepWorker();
    try {
        return isDecodable(*reader) ? decode(reader) : QImage();
    } catch (const std::bad_alloc&) {
        // Some of the reader's plugins hold a whole file in memory.
        return QImage();
    }
}

QImage imageFromData(const QByteArray& data)
{
    QBuffer buffer;
    buffer.setData(data);
    QImageReader reader(&buffer);
    return decoded(&reader, [](QImageReader* source) { return source->read(); });
}
