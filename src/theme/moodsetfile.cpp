// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetfile.h"

#include "content/barename.h"
#include "content/colorstring.h"
#include "content/displaynamecatalog.h"
#include "content/packagedfile.h"
#include "moodset/moodsetdocument.h"
#include "tonetable.h"

#include <QUrl>

namespace {

QColor color(const QJsonValue& value)
{
    return colorFromString(value.toString());
}

/// The root of a JSON file, or an empty object if there is none.
QJsonObject readObject(const QString& filePath)
{
    return PackagedFile::read(filePath).json().object();
}

QString translatedName(const MoodsetDocument& document)
{
    QString name = document.displayName();
    // The text is not looked up, because a catalogue can have a translation of the empty text.
    if (name.isEmpty()) {
        return name;
    }
    DisplayNameCatalog catalog;
    catalog.load(document.translationCatalog());
    return catalog.translated(name);
}

/// Sets the file of a tone, and clears its bit if it is disabled.
void readTone(const MoodsetDocument::Tone& tone, int index, MoodsetData* moodset)
{
    if (isBareName(tone.fileName)) {
        moodset->resources.insert(
            QLatin1String(ToneTable.at(size_t(index)).key),
            QVariantMap{
                {QStringLiteral("fileName"), tone.fileName},
                {QStringLiteral("url"),
                 moodset->url.resolved(QUrl(QStringLiteral("sounds/") + tone.fileName))}});
    }
    if (!tone.isEnabled) {
        moodset->enabledSounds = Tones::withTone(moodset->enabledSounds, index, false);
    }
}

} // namespace

bool readMoodsetFile(Moodset& moodset, const QString& filePath)
{
    const MoodsetDocument document(readObject(filePath), MoodsetDocument::ForRecord);
    const QString wallpaper = document.wallpaper();
    if (wallpaper.isEmpty()) {
        return false;
    }
    MoodsetData* const record = moodset.data();
    record->displayName = translatedName(document);
    record->favorite = document.isFavorite();
    record->homeWallpaper =
        record->url.resolved(QUrl(QStringLiteral("images/") + wallpaper)).toLocalFile();
    record->highlightColor = color(document.highlightColor());
    record->secondaryHighlightColor = color(document.secondaryHighlightColor());
    record->primaryColor = color(document.primaryColor());
    record->secondaryColor = color(document.secondaryColor());
    record->ringerVolume = document.ringerVolume();
    record->version = document.version();
    for (int i = 0; i < Tones::Count; ++i) {
        readTone(document.tone(i), i, record);
    }
    return true;
}
