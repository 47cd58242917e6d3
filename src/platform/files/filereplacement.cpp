// SPDX-License-Identifier: BSD-3-Clause
#include "filereplacement.h"

#include <QSaveFile>

#include <cerrno>

// A full disk takes some of the bytes first. After that, a QSaveFile knows no reason of its own.
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

QString replaceFile(
    const QString& path, const QByteArray& content,
    const std::optional<QFileDevice::Permissions>& permissions)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return file.errorString();
    }
    if (permissions && !file.setPermissions(*permissions)) {
        return file.errorString();
    }
    QString problem = writeAll(&file, content.constData(), content.size());
    if (problem.isEmpty() && !file.commit()) {
        problem = file.errorString();
    }
    return problem;
}
