// SPDX-License-Identifier: BSD-3-Clause
#include "picturecheck.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <picturereader.h>

#include <sys/resource.h>

namespace {

/// How many bytes this process may still allocate, including the decoded picture. 0 if there is no
/// limit.
quint64 addressLimit()
{
    rlimit limit{};
    return getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY ? limit.rlim_cur
                                                                                : 0;
}

/// Whether the pixels alone need more memory than the process may have.
bool isTooLarge(const QSize& size)
{
    constexpr quint64 bytesPerPixel = 4;
    const quint64 limit = addressLimit();
    return limit > 0 && quint64(size.width()) * quint64(size.height()) * bytesPerPixel > limit;
}

QString fault(const QString& path, QJsonObject* check)
{
    const QFileInfo info(path);
    if (!info.isFile()) {
        return QStringLiteral("not-regular");
    }
    if (!info.isReadable()) {
        return QStringLiteral("unreadable");
    }
    if (info.size() == 0) {
        return QStringLiteral("empty");
    }
    PictureReader reader(path);
    const QByteArray format = decoderName(reader.format());
    if (format.isEmpty()) {
        return QStringLiteral("unknown-format");
    }
    check->insert(QStringLiteral("format"), QString::fromLatin1(format));
    if (!QImageReader::supportedImageFormats().contains(format)) {
        return QStringLiteral("not-decoded");
    }
    const QSize size = reader.size();
    check->insert(QStringLiteral("width"), size.width());
    check->insert(QStringLiteral("height"), size.height());
    if (!reader.read().isNull()) {
        return {};
    }
    return isTooLarge(size) ? QStringLiteral("too-large") : QStringLiteral("damaged");
}

} // namespace

QJsonObject checkPicture(const QString& path)
{
    QJsonObject check;
    check.insert(QStringLiteral("fault"), fault(path, &check));
    return check;
}
