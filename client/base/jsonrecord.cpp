// SPDX-License-Identifier: BSD-3-Clause
#include "jsonrecord.h"

#include <QUrl>

#include <colorstring.h>
#include <moodsetnames.h>

namespace {

using Object = QJsonObject;

QJsonValue time(const QDateTime& time)
{
    return time.isValid() ? QJsonValue(time.toString(Qt::ISODate)) : QJsonValue();
}

QJsonValue numberIf(bool isKnown, int number)
{
    return isKnown ? QJsonValue(number) : QJsonValue();
}

} // namespace

QString JsonRecord::colorText(const QColor& color)
{
    return color.isValid() ? colorToString(color) : QString();
}

QJsonValue JsonRecord::color(const QColor& color)
{
    return text(colorText(color));
}

QJsonValue JsonRecord::text(const QString& text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonObject JsonRecord::colors(
    const QColor& primary, const QColor& secondary, const QColor& highlight,
    const QColor& secondaryHighlight)
{
    return {
        {QStringLiteral("primary"), color(primary)},
        {QStringLiteral("secondary"), color(secondary)},
        {QStringLiteral("highlight"), color(highlight)},
        {QStringLiteral("secondaryHighlight"), color(secondaryHighlight)}};
}

QJsonObject JsonRecord::colors(const MoodsetData& moodset)
{
    return colors(
        moodset.primaryColor, moodset.secondaryColor, moodset.highlightColor,
        moodset.secondaryHighlightColor);
}

QJsonObject JsonRecord::picture(const LibraryFile& file)
{
    const QString state = !file.current ? QStringLiteral("waiting")
        : file.isReadable()             ? QStringLiteral("read")
                                        : QStringLiteral("unreadable");
    const bool hasSize = file.current && file.size.isValid();
    return {
        {QStringLiteral("file"), file.path},
        {QStringLiteral("state"), state},
        {QStringLiteral("width"), numberIf(hasSize, file.size.width())},
        {QStringLiteral("height"), numberIf(hasSize, file.size.height())},
        {QStringLiteral("taken"), time(file.taken)},
        {QStringLiteral("orientation"), numberIf(file.orientation != 0, file.orientation)},
        {QStringLiteral("modified"), time(file.modified)},
        {QStringLiteral("type"), text(file.mimeType)}};
}

QJsonObject JsonRecord::moodset(const MoodsetData& moodset, const QString& activeFile)
{
    const QString file = moodset.url.toLocalFile();
    return {
        {QStringLiteral("id"), moodset.id},
        {QStringLiteral("name"), text(moodset.displayName)},
        {QStringLiteral("file"), file},
        {QStringLiteral("favorite"), moodset.favorite},
        {QStringLiteral("active"), file == activeFile},
        {QStringLiteral("colors"), colors(moodset)},
        {QStringLiteral("ringerVolume"), moodset.ringerVolume},
        {QStringLiteral("homeWallpaper"), text(moodset.homeWallpaper)},
        {QStringLiteral("applicationWallpaper"), text(moodset.applicationWallpaper)},
        {QStringLiteral("partnerSpace"), text(moodset.partnerSpace)},
        {QStringLiteral("backCover"), text(moodset.dorselId)},
        {QStringLiteral("version"), moodset.version}};
}

QJsonObject JsonRecord::wholeMoodset(const MoodsetData& moodset, const QString& activeFile)
{
    Object tones;
    for (std::size_t bit = 0; bit < MoodsetNames::Tones.size(); ++bit) {
        const MoodsetNames::Tone& tone = MoodsetNames::Tones.at(bit);
        const QVariantMap resource = moodset.resources.value(tone.file).toMap();
        tones.insert(
            tone.name,
            Object{
                {QStringLiteral("enabled"), (moodset.enabledSounds & (1 << bit)) != 0},
                {QStringLiteral("file"),
                 text(resource.value(QStringLiteral("url")).toUrl().toLocalFile())}});
    }
    Object whole = JsonRecord::moodset(moodset, activeFile);
    whole.insert(QStringLiteral("tones"), tones);
    return whole;
}

QJsonObject JsonRecord::theme(const Theme& theme)
{
    return {
        {QStringLiteral("request"), text(theme.request)},
        {QStringLiteral("homeWallpaper"), text(theme.homeWallpaper)},
        {QStringLiteral("applicationWallpaper"), text(theme.applicationWallpaper)},
        {QStringLiteral("colors"),
         colors(theme.primary, theme.secondary, theme.highlight, theme.secondaryHighlight)},
        {QStringLiteral("activeMoodset"), text(theme.activeMoodset)}};
}

QJsonObject JsonRecord::counts(const LibraryReader::Counts& counts)
{
    return {
        {QStringLiteral("files"), counts.files},
        {QStringLiteral("folders"), counts.folders},
        {QStringLiteral("pictures"), counts.photos},
        {QStringLiteral("waitingPictures"), counts.waitingPhotos},
        {QStringLiteral("moodsets"), counts.moodsets},
        {QStringLiteral("favorites"), counts.favorites},
        {QStringLiteral("waitingMoodsets"), counts.waitingMoodsets}};
}
