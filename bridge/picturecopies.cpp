// SPDX-License-Identifier: BSD-3-Clause
#include "picturecopies.h"

#include "filecontent.h"

#include <filereplacement.h>
#include <regularfile.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <sys/stat.h>
#include <vector>

namespace {

const QString SourceKey = QStringLiteral("source");
const QString StampKey = QStringLiteral("stamp");
const QString CopyKey = QStringLiteral("copy");

/// A text that changes when the file changes; empty if there is no file.
QString stampOf(const QString& path)
{
    struct stat status
    {
    };
    if (stat(QFile::encodeName(path).constData(), &status) != 0) {
        return {};
    }
    return QStringLiteral("%1 %2 %3.%4")
        .arg(quint64(status.st_ino))
        .arg(qint64(status.st_size))
        .arg(qint64(status.st_mtim.tv_sec))
        .arg(qint64(status.st_mtim.tv_nsec));
}

/// Returns what went wrong, or an empty text.
QString copyContent(const RegularFile& source, QSaveFile* target)
{
    constexpr qint64 chunkSize = qint64(256) * 1024;
    std::vector<char> chunk(chunkSize);
    qint64 offset = 0;
    while (offset < source.size()) {
        const qint64 length = source.read(offset, chunk.data(), chunkSize);
        if (length <= 0) {
            return QStringLiteral("it cannot be read to its end");
        }
        QString problem = writeAll(target, chunk.data(), length);
        if (!problem.isEmpty()) {
            return problem;
        }
        offset += length;
    }
    return {};
}

} // namespace

PictureCopies::PictureCopies(const QString& directory, const QJsonObject& last)
    : m_directory(directory)
    , m_last(last)
{
}

PictureCopies::Copy PictureCopies::copyOf(const QString& source)
{
    const QString stamp = stampOf(source);
    const QString lastCopy = m_last.value(CopyKey).toString();
    if (m_last.value(SourceKey) == source && QFile::exists(lastCopy)
        && (stamp.isEmpty() || m_last.value(StampKey) == stamp)) {
        return {lastCopy, {}};
    }
    const QString suffix = pictureSuffix(source);
    if (suffix.isEmpty()) {
        return {{}, QStringLiteral("The wallpaper is no JPEG or PNG picture: %1").arg(source)};
    }
    Copy copy = makeCopy(source, suffix);
    if (copy.problem.isEmpty()) {
        m_last = {{SourceKey, source}, {StampKey, stamp}, {CopyKey, copy.path}};
    }
    return copy;
}

PictureCopies::Copy PictureCopies::makeCopy(const QString& source, const QString& suffix) const
{
    constexpr int radix = 36;
    const QString base = m_directory + QStringLiteral("/wallpaper-");
    qint64 number = QDateTime::currentMSecsSinceEpoch();
    QString path;
    do {
        path = base + QString::number(number++, radix) + QLatin1Char('.') + suffix;
    } while (QFile::exists(path));

    static_cast<void>(QDir().mkpath(m_directory)); // if this fails, opening the file fails, too
    const RegularFile file(source);
    QSaveFile target(path);
    QString problem;
    if (!file.isOpen()) {
        problem = QStringLiteral("it cannot be opened");
    } else if (!target.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        problem = target.errorString();
    } else {
        problem = copyContent(file, &target);
    }
    if (problem.isEmpty() && !target.commit()) {
        problem = target.errorString();
    }
    if (!problem.isEmpty()) {
        return {{}, QStringLiteral("The wallpaper %1 cannot be copied: %2").arg(source, problem)};
    }
    return {path, {}};
}

void PictureCopies::removeUnused(const QString& usedIn) const
{
    const QString last = QFileInfo(m_last.value(CopyKey).toString()).fileName();
    QDir directory(m_directory);
    const QStringList names = directory.entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        if (name != last && !usedIn.contains(name)) {
            static_cast<void>(directory.remove(name)); // the next call tries again
        }
    }
}

void PictureCopies::removeAll() const
{
    // A file that cannot be removed does no harm.
    static_cast<void>(QDir(m_directory).removeRecursively());
}
