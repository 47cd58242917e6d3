// SPDX-License-Identifier: BSD-3-Clause
#include "packagedfile.h"
#include "contentlog.h"

#include <regularfile.h>

PackagedFile PackagedFile::read(const QString& path)
{
    const RegularFile file(path);
    if (!file.isOpen()) {
        return {};
    }
    if (file.size() > MaximumSize) {
        qCWarning(contentLog) << "static PackagedFile PackagedFile::read(const QString&)"
                              << "File larger than 16 MiB" << path;
        return {TooLarge, {}};
    }
    const auto content = file.read(0, int(file.size()));
    return content ? PackagedFile{Read, *content} : PackagedFile{};
}

QJsonDocument PackagedFile::json(QJsonParseError* error) const
{
    const QByteArray mark = QByteArrayLiteral("\xef\xbb\xbf");
    // A byte order mark at the start of the file is not part of the text.
    const int start = content.startsWith(mark) ? mark.size() : 0;
    if (content.indexOf(mark, start) >= 0) {
        QByteArray escaped = content.mid(start);
        escaped.replace(mark, QByteArrayLiteral("\\ufeff"));
        QJsonDocument document = QJsonDocument::fromJson(escaped, error);
        if (!document.isNull()) {
            return document;
        }
    }
    return QJsonDocument::fromJson(content, error);
}
