// SPDX-License-Identifier: BSD-3-Clause
#include "undorecord.h"

#include "text.h"
#include "wholefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace {

const auto KindKey = QStringLiteral("kind");
const auto FileKey = QStringLiteral("file");
const auto AttributesKey = QStringLiteral("attributes");
const auto SetKind = QStringLiteral("set");
const auto EditKind = QStringLiteral("edit");

} // namespace

QString UndoRecord::path()
{
    QString folder = QString::fromLocal8Bit(qgetenv("XDG_STATE_HOME"));
    if (!QDir::isAbsolutePath(folder)) {
        folder = QDir::homePath() + QStringLiteral("/.local/state");
    }
    return folder + QStringLiteral("/moodsetctl/undo.json");
}

UndoRecord UndoRecord::read()
{
    QFile file(path());
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    UndoRecord record;
    const QString kind = object.value(KindKey).toString();
    record.kind = kind == SetKind ? Kind::Set : kind == EditKind ? Kind::Edit : Kind::None;
    record.file = object.value(FileKey).toString();
    record.attributes = object.value(AttributesKey).toObject().toVariantMap();
    return record;
}

QString UndoRecord::write() const
{
    const QJsonObject object{
        {KindKey, kind == Kind::Set ? SetKind : EditKind},
        {FileKey, file},
        {AttributesKey, QJsonObject::fromVariantMap(attributes)}};
    QDir().mkpath(QFileInfo(path()).path());
    const QString fault = writeWholeFile(path(), QJsonDocument(object).toJson());
    return fault.isEmpty()
        ? QString()
        : Text::tr("the former values cannot be stored for undo in %1: %2").arg(path(), fault);
}
