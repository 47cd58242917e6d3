// SPDX-License-Identifier: BSD-3-Clause
#include "filecontent.h"

#include <regularfile.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUrl>

#include <cerrno>
#include <sys/stat.h>

std::optional<QByteArray> readWhole(const QString& path, qint64 largest)
{
    const RegularFile file(path);
    if (!file.isOpen() || file.size() > largest) {
        return std::nullopt;
    }
    return file.read(0, int(file.size()));
}

QString fileStamp(const QString& path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0) {
        return {};
    }
    return QStringLiteral("%1 %2 %3.%4")
        .arg(quint64(status.st_ino))
        .arg(qint64(status.st_size))
        .arg(qint64(status.st_mtim.tv_sec))
        .arg(qint64(status.st_mtim.tv_nsec));
}

QString fileUri(const QString& path)
{
    return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded(QUrl::FullyEncoded));
}

// A full disk takes some of the bytes first, and a QSaveFile knows no reason of its own.
QString writeAll(QIODevice* file, const char* data, qint64 length)
{
    while (length > 0) {
        const qint64 written = file->write(data, length);
        if (written <= 0) {
            return qt_error_string(errno);
        }
        data += written;
        length -= written;
    }
    return {};
}

QString writeWhole(const QString& path, const QByteArray& content)
{
    if (!QDir().mkpath(QFileInfo(path).path())) {
        return QStringLiteral("The directory of %1 cannot be made").arg(path);
    }
    QSaveFile file(path);
    QString problem;
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        problem = writeAll(&file, content.constData(), content.size());
    } else {
        problem = file.errorString();
    }
    if (problem.isEmpty() && !file.commit()) {
        problem = file.errorString();
    }
    if (!problem.isEmpty()) {
        return QStringLiteral("%1 cannot be written: %2").arg(path, problem);
    }
    return {};
}

QString pictureSuffix(const QString& path)
{
    constexpr qint64 largest = qint64(64) * 1024 * 1024;
    const RegularFile file(path);
    if (file.size() > largest) {
        return {};
    }
    const QByteArray bytes = file.read(0, 8).value_or(QByteArray());
    if (bytes.startsWith("\xff\xd8\xff")) {
        return QStringLiteral("jpg");
    }
    return bytes == "\x89PNG\r\n\x1a\n" ? QStringLiteral("png") : QString();
}

bool isPlayableTone(const QString& path)
{
    // An Ogg page has 27 bytes and a table of one segment before its first packet.
    constexpr int packetOffset = 28;
    const QByteArray bytes = RegularFile(path).read(0, packetOffset + 7).value_or(QByteArray());
    return (bytes.startsWith("RIFF") && bytes.mid(8, 4) == "WAVE")
        || (bytes.startsWith("OggS") && bytes.mid(packetOffset) == "\x01vorbis");
}
