// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetfile.h"

#include "content/colorstring.h"
#include "content/displaynamecatalog.h"
#include "moodset/tones.h"
#include "tonetable.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace {

QString text(const QJsonObject& object, const char* key)
{
    return object.value(QLatin1String(key)).toString();
}

QColor color(const QJsonObject& object, const char* key)
{
    return colorFromString(text(object, key));
}

/// The root of a JSON file; an empty object if there is none.
QJsonObject readObject(const QString& filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly)) {
        return QJsonObject();
    }
    return QJsonDocument::fromJson(file.readAll()).object();
}

QString translatedName(const QJsonObject& object)
{
    QString name = text(object, "displayName");
    // A catalogue can have a translation of the empty text.
    if (name.isEmpty()) {
        return name;
    }
    DisplayNameCatalog catalog;
    catalog.load(text(object, "translationCatalog"));
    return catalog.translated(name);
}

/// Fills in a tone's file and clears its bit if it is disabled.
void readTone(const QJsonObject& object, int index, MoodsetData* moodset)
{
    const QLatin1String key(toneTable.at(static_cast<size_t>(index)).key);
    const QJsonObject tone = object.value(key).toObject();
    const QString fileName = text(tone, "file");
    if (!fileName.isEmpty() && !fileName.contains(QLatin1Char('/'))) {
        moodset->resources.insert(
            key,
            QVariantMap{
                {QStringLiteral("fileName"), fileName},
                {QStringLiteral("url"),
                 moodset->url.resolved(QUrl(QStringLiteral("sounds/") + fileName))}});
    }
    if (tone.value(QLatin1String("enabled")).toInt(1) == 0) {
        moodset->enabledSounds = Tones::withTone(moodset->enabledSounds, index, false);
    }
}

} // namespace

bool readMoodsetFile(Moodset& moodset, const QString& filePath)
{
    const QJsonObject object = readObject(filePath);
    const QString wallpaper = text(object, "wallpaper");
    if (wallpaper.isEmpty() || wallpaper.contains(QLatin1Char('/'))) {
        return false;
    }
    MoodsetData* const record = moodset.data();
    record->displayName = translatedName(object);
    record->favorite = object.value(QLatin1String("favorite")).toBool(true);
    record->homeWallpaper =
        record->url.resolved(QUrl(QStringLiteral("images/") + wallpaper)).toLocalFile();
    record->highlightColor = color(object, "highlightColor");
    record->secondaryHighlightColor = color(object, "secondaryHighlightColor");
    record->primaryColor = color(object, "primaryColor");
    record->secondaryColor = color(object, "secondaryColor");
    record->ringerVolume = object.value(QLatin1String("ringerVolume")).toInt(-1);
    const QLatin1String version("version");
    record->version = object.contains(version) ? object.value(version).toInt(0) : 1;
    for (int i = 0; i < Tones::Count; ++i) {
        readTone(object, i, record);
    }
    return true;
}
