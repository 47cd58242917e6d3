// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>
#include <QString>

/// The content of a moodset file. Both readers of moodset files use this class.
/// docs/bundle-format.md describes the format.
///
/// Existing bundles depend on the differences between the readers:
///
///                                 readMoodsetFile()       MoodsetManager::updateMetaData()
///     the last colour's key       "secondaryColor"        "secondaryColors"
///     a file without a volume     -1                      80
///     colours                     parsed                  stored as they stand
///     the files that it names     are not looked for      must exist
///     a tone without a file       stays as it is          is the system's own, if enabled
///     "partnerSpace" and          left out                stored
///     "timestamp"
///     an empty display name       stays empty             is looked up in the catalogue
class MoodsetDocument
{
public:
    struct Differences
    {
        const char* secondaryColorKey;
        int missingVolume;
    };
    /// For readMoodsetFile().
    static constexpr Differences ForRecord{"secondaryColor", -1};
    /// For MoodsetManager::updateMetaData().
    static constexpr Differences ForRow{"secondaryColors", 80};

    struct Tone
    {
        /// Whether the file has an entry for the tone.
        bool isGiven;
        /// The name as the file gives it, which may not be a bare name. Empty if there is none.
        QString fileName;
        bool isEnabled;
    };

    /// `object` is the root of the file. Use an empty one for a file that has none.
    MoodsetDocument(const QJsonObject& object, const Differences& differences);

    /// The name of a file in images/. Empty if the file gives no bare name; the moodset is unusable
    /// then.
    QString wallpaper() const;

    QString displayName() const;
    QString translationCatalog() const;
    QString partnerSpace() const;
    QString timestamp() const;
    bool isFavorite() const;
    int ringerVolume() const;
    /// 1 if the file gives no version, and 0 if its version is not an integer.
    int version() const;

    QJsonValue highlightColor() const;
    QJsonValue secondaryHighlightColor() const;
    QJsonValue primaryColor() const;
    QJsonValue secondaryColor() const;

    /// The tone with an index below Tones::Count.
    Tone tone(int index) const;

private:
    QJsonValue value(const char* key) const;
    QString text(const char* key) const;

    QJsonObject m_object;
    Differences m_differences;
};
