// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetdocument.h"

#include "content/barename.h"
#include "tones.h"

MoodsetDocument::MoodsetDocument(const QJsonObject& object, const Differences& differences)
    : m_object(object)
    , m_differences(differences)
{
}

QString MoodsetDocument::wallpaper() const
{
    const QString name = text("wallpaper");
    return isBareName(name) ? name : QString();
}

QString MoodsetDocument::displayName() const
{
    return text("displayName");
}

QString MoodsetDocument::translationCatalog() const
{
    return text("translationCatalog");
}

QString MoodsetDocument::partnerSpace() const
{
    return text("partnerSpace");
}

QString MoodsetDocument::timestamp() const
{
    return text("timestamp");
}

bool MoodsetDocument::isFavorite() const
{
    return value("favorite").toBool(true);
}

int MoodsetDocument::ringerVolume() const
{
    return value("ringerVolume").toInt(m_differences.missingVolume);
}

int MoodsetDocument::version() const
{
    const QJsonValue version = value("version");
    return version.isUndefined() ? 1 : version.toInt(0);
}

QJsonValue MoodsetDocument::highlightColor() const
{
    return value("highlightColor");
}

QJsonValue MoodsetDocument::secondaryHighlightColor() const
{
    return value("secondaryHighlightColor");
}

QJsonValue MoodsetDocument::primaryColor() const
{
    return value("primaryColor");
}

QJsonValue MoodsetDocument::secondaryColor() const
{
    return value(m_differences.secondaryColorKey);
}

MoodsetDocument::Tone MoodsetDocument::tone(int index) const
{
    const QJsonObject tone = m_object.value(Tones::fileKey(Tones::names().at(index))).toObject();
    // Only the number 0 disables a tone.
    return {
        !tone.isEmpty(), tone.value(QLatin1String("file")).toString(),
        tone.value(QLatin1String("enabled")).toInt(1) != 0};
}

QJsonValue MoodsetDocument::value(const char* key) const
{
    return m_object.value(QLatin1String(key));
}

QString MoodsetDocument::text(const char* key) const
{
    return value(key).toString();
}
