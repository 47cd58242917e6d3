// SPDX-License-Identifier: BSD-3-Clause
#include "soundtheme.h"

#include "filecontent.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <array>
#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace {

struct SoundName
{
    ToneUse use;
    const char* name;
};

/// The sounds that the service plays for a tone. The sounds of messages and mails exist only in our
/// feedback theme, because the service's own theme plays the sound of chats for both. The service
/// has no sound for internet calls and for the calendar.
constexpr std::array<SoundName, 5> Sounds{{
    {ToneUse::Ringing, "phone-incoming-call"},
    {ToneUse::Message, "moodset-message"},
    {ToneUse::Chat, "message-new-instant"},
    {ToneUse::Mail, "moodset-mail"},
    {ToneUse::Alarm, "alarm-clock-elapsed"},
}};

constexpr const char* SoundIndex = "[Sound Theme]\n"
                                   "Name=Moodset\n"
                                   "Inherits=freedesktop\n"
                                   "Directories=stereo\n"
                                   "\n"
                                   "[stereo]\n"
                                   "OutputProfile=stereo\n";

constexpr const char* FeedbackTheme = R"({
  "name": "moodset",
  "parent-name": "default",
  "profiles": [
    {
      "name": "full",
      "feedbacks": [
        {
          "event-name": "message-new-sms",
          "type": "Sound",
          "effect": "moodset-message"
        },
        {
          "event-name": "message-new-email",
          "type": "Sound",
          "effect": "moodset-mail"
        }
      ]
    }
  ]
}
)";

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/sounds/moodset");
}

QString feedbackFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/feedbackd/themes/moodset.json");
}

/// A sound that is not enabled is a link to this file. Without a file, or with one that marks the
/// sound as disabled, the service would try again without a pause for as long as a call rings.
QString silenceFile()
{
    return dataFolder() + QStringLiteral("/silence.wav");
}

/// Two seconds of silence, with 8 bits for each sample at 8 kHz.
QByteArray silence()
{
    constexpr int sampleCount = 16000;
    constexpr char middle = '\x80';
    QByteArray wave = QByteArray::fromHex("52494646a43e0000" // RIFF, the size of what follows
                                          "57415645" // WAVE
                                          "666d742010000000" // fmt, its size
                                          "01000100401f0000" // PCM, one channel, 8000 a second
                                          "401f000001000800" // 8000 bytes a second, 1 each, 8 bits
                                          "64617461803e0000"); // data, its size
    wave += QByteArray(sampleCount, middle);
    return wave;
}

QString linkFile(const QString& name)
{
    return dataFolder() + QStringLiteral("/stereo/") + name + QStringLiteral(".oga");
}

bool isSound(const QString& name)
{
    return !name.startsWith(QLatin1Char('/'));
}

/// Makes a link, or replaces it: whoever opens it finds the old file or the new one. Returns what
/// went wrong, or an empty text.
QString replaceLink(const QString& link, const QString& target)
{
    if (QFile::symLinkTarget(link) == target) {
        return {};
    }
    const QString fresh = link + QStringLiteral(".new");
    static_cast<void>(QFile::remove(fresh)); // left by a process that was killed
    if (!QFile::link(target, fresh)
        || std::rename(QFile::encodeName(fresh).constData(), QFile::encodeName(link).constData())
            != 0) {
        return QStringLiteral("%1 cannot be made: %2").arg(link, qt_error_string(errno));
    }
    return {};
}

QString writeSound(const QString& name, const QJsonValue& planned)
{
    const QString link = linkFile(name);
    if (!planned.isNull()) {
        return replaceLink(link, planned.toString());
    }
    static_cast<void>(QFile::remove(link)); // there may be none
    return {};
}

QString writeIfOther(const QString& path, const QByteArray& content)
{
    return readWhole(path, qint64(2) * content.size()) == content ? QString()
                                                                  : writeWhole(path, content);
}

} // namespace

QJsonObject SoundTheme::plan(const Sound& sound)
{
    QJsonObject plan;
    for (const SoundName& entry : Sounds) {
        const Tone& tone = sound.tone(entry.use);
        const QLatin1String name(entry.name);
        // The theme that ours is based on has no sounds with our own names.
        const bool isOurs = name.startsWith(QLatin1String("moodset-"));
        if (tone.isEnabled && isPlayableTone(tone.file)) {
            plan.insert(name, tone.file);
        } else {
            plan.insert(name, tone.isEnabled && !isOurs ? QJsonValue() : QJsonValue(silenceFile()));
        }
    }
    return plan;
}

QString SoundTheme::shortfall(const Sound& sound)
{
    for (const SoundName& entry : Sounds) {
        const Tone& tone = sound.tone(entry.use);
        if (tone.isEnabled && !tone.file.isEmpty() && !isPlayableTone(tone.file)) {
            return QStringLiteral("The tone %1 is neither WAV nor Ogg Vorbis.").arg(tone.file);
        }
    }
    return {};
}

QString SoundTheme::write(const QJsonObject& plan)
{
    QString failure =
        writeIfOther(dataFolder() + QStringLiteral("/index.theme"), QByteArray(SoundIndex));
    if (failure.isEmpty()) {
        failure = writeIfOther(silenceFile(), silence());
    }
    if (!QDir().mkpath(dataFolder() + QStringLiteral("/stereo"))) {
        failure = QStringLiteral("The directory %1 cannot be made.").arg(dataFolder());
    }
    for (auto sound = plan.begin(); failure.isEmpty() && sound != plan.end(); ++sound) {
        if (isSound(sound.key())) {
            failure = writeSound(sound.key(), sound.value());
        }
    }
    return failure.isEmpty() ? writeIfOther(feedbackFile(), QByteArray(FeedbackTheme)) : failure;
}

QString SoundTheme::difference(const QJsonObject& plan)
{
    for (auto sound = plan.begin(); sound != plan.end(); ++sound) {
        const QString file = sound.value().toString();
        if (isSound(sound.key()) && QFile::symLinkTarget(linkFile(sound.key())) != file) {
            return QStringLiteral("The sound %1 is not the tone.").arg(sound.key());
        }
    }
    return {};
}

void SoundTheme::remove()
{
    // A remaining file does no harm when no key names it any more.
    static_cast<void>(QDir(dataFolder()).removeRecursively());
    static_cast<void>(QFile::remove(feedbackFile()));
}
