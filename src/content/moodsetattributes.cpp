// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetattributes.h"

#include "colorstring.h"
#include "moodsetnames.h"

#include <QUrl>

#include <cstddef>

namespace {

namespace Attribute = MoodsetNames::Attribute;

QString textOfUrl(const QVariant& value)
{
    return value.userType() == QMetaType::QUrl ? QString::fromLatin1(value.toUrl().toEncoded())
                                               : value.toString();
}

/// The local file of each tone, in the form in which they can be compared.
QVariantMap toneFiles(const QVariantMap& resources)
{
    QVariantMap files;
    for (auto tone = resources.cbegin(); tone != resources.cend(); ++tone) {
        files.insert(
            tone.key(), QUrl(textOfUrl(tone.value().toMap().value(Attribute::Url))).toLocalFile());
    }
    return files;
}

} // namespace

QVariantMap MoodsetAttributes::whole(const MoodsetData& moodset)
{
    QVariantMap values{
        {Attribute::DisplayName, moodset.displayName},
        {Attribute::Favorite, moodset.favorite},
        {Attribute::RingerVolume, moodset.ringerVolume}};
    const auto addIfValid = [&values](const QLatin1String& name, const QColor& color) {
        if (color.isValid()) {
            values.insert(name, colorToString(color));
        }
    };
    addIfValid(Attribute::HighlightColor, moodset.highlightColor);
    addIfValid(Attribute::SecondaryHighlightColor, moodset.secondaryHighlightColor);
    addIfValid(Attribute::PrimaryColor, moodset.primaryColor);
    addIfValid(Attribute::SecondaryColor, moodset.secondaryColor);
    QVariantMap tones;
    for (std::size_t bit = 0; bit < MoodsetNames::Tones.size(); ++bit) {
        const MoodsetNames::Tone& tone = MoodsetNames::Tones.at(bit);
        values.insert(tone.enabled, (moodset.enabledSounds & (1 << bit)) != 0);
        tones.insert(
            tone.file,
            QVariantMap{
                {Attribute::Url,
                 textOfUrl(moodset.resources.value(tone.file).toMap().value(Attribute::Url))}});
    }
    values.insert(Attribute::Resources, tones);
    return values;
}

QVariantMap MoodsetAttributes::current(const MoodsetData& moodset, const QVariantMap& attributes)
{
    const QVariantMap all = whole(moodset);
    QVariantMap values;
    for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute) {
        if (attribute.key() != Attribute::Resources) {
            // A colour that is not known is stored as an empty text.
            values.insert(attribute.key(), all.value(attribute.key(), QString()));
            continue;
        }
        QVariantMap tones;
        const QVariantMap have = all.value(Attribute::Resources).toMap();
        const QVariantMap wanted = attribute.value().toMap();
        for (auto tone = wanted.cbegin(); tone != wanted.cend(); ++tone) {
            tones.insert(tone.key(), have.value(tone.key()));
        }
        values.insert(Attribute::Resources, tones);
    }
    return values;
}

QStringList MoodsetAttributes::differing(const MoodsetData& moodset, const QVariantMap& attributes)
{
    const QVariantMap have = current(moodset, attributes);
    QStringList names;
    for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute) {
        const QVariant value = have.value(attribute.key());
        const bool isSame = attribute.key() == Attribute::Resources
            ? toneFiles(attribute.value().toMap()) == toneFiles(value.toMap())
            // A volume that came from a file is a number of another type.
            : attribute.value() == value
                || (attribute.key() == Attribute::RingerVolume
                    && attribute.value().toInt() == value.toInt());
        if (!isSame) {
            names.append(attribute.key());
        }
    }
    return names;
}
