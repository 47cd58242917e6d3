// SPDX-License-Identifier: BSD-3-Clause
#include "unfinishedrebuild.h"

#include "undorecord.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

const auto Unfinished = QStringLiteral("unfinished-rebuild-");
const auto Finished = QStringLiteral("before-rebuild-");

QDir stateFolder()
{
    return QFileInfo(UndoRecord::path()).dir();
}

} // namespace

QString UnfinishedRebuild::newPath()
{
    const QDir folder = stateFolder();
    folder.mkpath(QStringLiteral("."));
    return folder.filePath(
        Unfinished
        + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmmss-zzz'.json'")));
}

QString UnfinishedRebuild::find()
{
    const QDir folder = stateFolder();
    const QStringList names =
        folder.entryList({Unfinished + QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    return names.isEmpty() ? QString() : folder.filePath(names.constLast());
}

QString UnfinishedRebuild::finish(const QString& path)
{
    const QFileInfo file(path);
    if (!file.fileName().startsWith(Unfinished) || file.absoluteDir() != stateFolder()) {
        return path;
    }
    const QString name = stateFolder().filePath(Finished + file.fileName().mid(Unfinished.size()));
    return QFile::rename(path, name) ? name : path;
}
