// SPDX-License-Identifier: BSD-3-Clause
// A moodset file that the database does not know.
#include "theme/moodsetfile.h"

#include "fuzztarget.h"
#include "moodset/tones.h"

#include <QTemporaryDir>

namespace {

void requireUntouched(const MoodsetData& record)
{
    const MoodsetData empty(record.id, record.url);
    require(record.displayName == empty.displayName, "rejected: name untouched");
    require(record.homeWallpaper == empty.homeWallpaper, "rejected: wallpaper untouched");
    require(record.favorite == empty.favorite, "rejected: favourite untouched");
    require(record.ringerVolume == empty.ringerVolume, "rejected: volume untouched");
    require(record.enabledSounds == empty.enabledSounds, "rejected: sounds untouched");
    require(record.version == empty.version, "rejected: version untouched");
    require(record.resources == empty.resources, "rejected: resources untouched");
    require(!record.primaryColor.isValid(), "rejected: colour untouched");
}

void requireSane(const MoodsetData& record)
{
    const int toneBits = (1 << Tones::Count) - 1;
    require((record.enabledSounds | toneBits) == -1, "only the bits of tones are cleared");
    QStringList keys;
    for (const QString& name : Tones::names()) {
        keys.append(Tones::fileKey(name));
    }
    for (auto tone = record.resources.cbegin(); tone != record.resources.cend(); ++tone) {
        require(keys.contains(tone.key()), "resources are tones");
        const QString name = tone.value().toMap().value(QStringLiteral("fileName")).toString();
        require(!name.isEmpty() && !name.contains(QLatin1Char('/')), "tones have bare names");
    }
}

} // namespace

void runTarget(const QByteArray& input)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("a.moodset"));
    allowNoWarningsBut({});
    writeFile(path, input);

    Moodset moodset(new MoodsetData(1, QUrl::fromLocalFile(path)));
    if (readMoodsetFile(moodset, path)) {
        requireSane(*moodset.constData());
    } else {
        requireUntouched(*moodset.constData());
    }
}
