// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetedit.h"

#include "moodsetlibrary.h"
#include "moodsetservice.h"
#include "subject.h"
#include "suggestion.h"
#include "text.h"
#include "valuecheck.h"

#include <QMimeDatabase>
#include <QUrl>

#include <colorstring.h>
#include <moodsetattributes.h>
#include <moodsetnames.h>

namespace {

namespace Attribute = MoodsetNames::Attribute;

constexpr int Loudest = 100;

QString colorAttribute(const QString& key)
{
    for (const QLatin1String& name :
         {Attribute::HighlightColor, Attribute::SecondaryHighlightColor, Attribute::PrimaryColor,
          Attribute::SecondaryColor}) {
        if (key == name || key + QStringLiteral("Color") == name) {
            return name;
        }
    }
    return {};
}

const MoodsetNames::Tone* toneOf(const QString& key)
{
    for (const MoodsetNames::Tone& tone : MoodsetNames::Tones) {
        if (key == tone.name) {
            return &tone;
        }
    }
    return nullptr;
}

void setTone(QVariantMap* attributes, const MoodsetNames::Tone& tone, const QString& url)
{
    QVariantMap resources = attributes->value(Attribute::Resources).toMap();
    resources.insert(tone.file, QVariantMap{{Attribute::Url, url}});
    attributes->insert(Attribute::Resources, resources);
}

QString addColor(QVariantMap* attributes, const QString& name, const QString& value)
{
    QString fault = valueFault(ValueKind::Color, value);
    if (fault.isEmpty()) {
        attributes->insert(name, colorToString(colorFromString(value)));
    }
    return fault;
}

QString addSwitch(QVariantMap* attributes, const QString& name, const QString& value)
{
    QString fault = valueFault(ValueKind::Switch, value);
    if (fault.isEmpty()) {
        attributes->insert(name, value == QLatin1String("on"));
    }
    return fault;
}

QString addVolume(QVariantMap* attributes, const QString& value)
{
    bool isNumber = false;
    const int volume = value.toInt(&isNumber);
    if (!isNumber || volume < 0 || volume > Loudest) {
        return Text::tr("%1 is no volume from 0 to 100").arg(value);
    }
    attributes->insert(Attribute::RingerVolume, volume);
    return {};
}

/// A tone: "on" and "off" switch it, "none" takes its file away, and all else is a file.
QString addTone(QVariantMap* attributes, const MoodsetNames::Tone& tone, const QString& value)
{
    if (value == QLatin1String("on") || value == QLatin1String("off")) {
        attributes->insert(tone.enabled, value == QLatin1String("on"));
        return {};
    }
    if (value == QLatin1String("none")) {
        setTone(attributes, tone, QString());
        return {};
    }
    const Found<QUrl> file = namedPicture(value);
    if (!file.fault.isEmpty()) {
        return Text::tr("%1: %2; write on, off, none or a file").arg(value, file.fault);
    }
    if (!file.value.isLocalFile()) {
        return Text::tr("%1 is not on this machine").arg(value);
    }
    const QString type = QMimeDatabase().mimeTypeForFile(file.value.toLocalFile()).name();
    if (!type.startsWith(QLatin1String("audio/")) && type != QLatin1String("video/ogg")
        && type != QLatin1String("application/ogg")) {
        return Text::tr("%1 is no sound, but %2").arg(value, type);
    }
    setTone(attributes, tone, QString::fromLatin1(file.value.toEncoded()));
    return {};
}

} // namespace

QStringList MoodsetEdit::keys()
{
    QStringList keys{QStringLiteral("name"),
                     QStringLiteral("favorite"),
                     QStringLiteral("volume"),
                     QStringLiteral("highlight"),
                     QStringLiteral("secondaryHighlight"),
                     QStringLiteral("primary"),
                     QStringLiteral("secondary")};
    for (const MoodsetNames::Tone& tone : MoodsetNames::Tones) {
        keys.append(tone.name);
    }
    return keys;
}

QString MoodsetEdit::add(QVariantMap* attributes, const QString& edit)
{
    const QString key = edit.section(QLatin1Char('='), 0, 0);
    const QString value = edit.section(QLatin1Char('='), 1);
    QString fault;
    const QString color = colorAttribute(key);
    if (!color.isEmpty()) {
        fault = addColor(attributes, color, value);
    } else if (key == QLatin1String("name") || key == Attribute::DisplayName) {
        if (value.trimmed().isEmpty()) {
            fault = Text::tr("a name cannot be empty");
        }
        attributes->insert(Attribute::DisplayName, value);
    } else if (key == Attribute::Favorite) {
        fault = addSwitch(attributes, Attribute::Favorite, value);
    } else if (key == QLatin1String("volume") || key == Attribute::RingerVolume) {
        fault = addVolume(attributes, value);
    } else if (const MoodsetNames::Tone* const tone = toneOf(key)) {
        fault = addTone(attributes, *tone, value);
    } else {
        return Text::tr("a moodset has no %1").arg(key)
            + didYouMean(key, keys(), QStringLiteral("moodsetctl help edit"));
    }
    return about(key, fault);
}

QString MoodsetEdit::save(const MoodsetService& service, qint64 id, const QVariantMap& attributes)
{
    QString fault = service.saveMoodset(id, attributes);
    if (!fault.isEmpty()) {
        return fault;
    }
    MoodsetLibrary library;
    const Moodset moodset = library.moodset(id);
    if (!library.error().isEmpty()) {
        return library.error();
    }
    if (!moodset) {
        return Text::tr("the moodset has gone");
    }
    const QStringList unchanged = MoodsetAttributes::differing(*moodset, attributes);
    return unchanged.isEmpty()
        ? QString()
        : Text::tr("the daemon has not changed %1").arg(unchanged.join(QStringLiteral(", ")));
}
