// SPDX-License-Identifier: BSD-3-Clause
#include "filecheck.h"

#include "lookhelper.h"
#include "suggestion.h"
#include "text.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QRegularExpression>

#include <cmath>
#include <colorstring.h>
#include <moodsetnames.h>

namespace {

using Severity = Finding::Severity;

constexpr int Loudest = 100;
constexpr int CurrentVersion = 2;
/// The daemon reads no larger file of a bundle.
constexpr qint64 LargestFile = 16LL * 1024 * 1024;

QStringList moodsetKeys()
{
    QStringList keys{
        QStringLiteral("wallpaper"),
        QStringLiteral("displayName"),
        QStringLiteral("translationCatalog"),
        QStringLiteral("favorite"),
        QStringLiteral("highlightColor"),
        QStringLiteral("secondaryHighlightColor"),
        QStringLiteral("primaryColor"),
        QStringLiteral("secondaryColor"),
        QStringLiteral("secondaryColors"),
        QStringLiteral("ringerVolume"),
        QStringLiteral("version"),
        QStringLiteral("timestamp"),
        QStringLiteral("partnerSpace")};
    for (const MoodsetNames::Tone& tone : MoodsetNames::Tones) {
        keys.append(tone.file);
    }
    return keys;
}

bool isWhole(const QJsonValue& value)
{
    return value.isDouble() && value.toDouble() == std::floor(value.toDouble());
}

QString at(const char* key)
{
    return QLatin1Char('/') + QLatin1String(key);
}

QString jsonFault(QJsonParseError::ParseError error)
{
    QJsonParseError parse;
    parse.error = error;
    return parse.errorString();
}

} // namespace

FileCheck::FileCheck(const QString& path)
    : m_path(path)
    , m_folder(QFileInfo(path).absoluteDir())
{
}

void FileCheck::add(Severity severity, const QString& place, const QString& text)
{
    m_findings.append(
        {severity, m_path, m_places ? m_places->value(place) : JsonPlaces::Place(), text});
}

void FileCheck::warn(const QString& place, const QString& text)
{
    add(Severity::Warning, place, text);
}

/// Reads the file. False if it contains no JSON object.
bool FileCheck::read()
{
    const QFileInfo info(m_path);
    QFile file(m_path);
    if (!info.isFile()) {
        const bool isThere = info.exists() || info.isSymLink();
        add(Severity::Error, {}, isThere ? Text::tr("not a file") : Text::tr("no such file"));
        return false;
    }
    if (info.size() > LargestFile) {
        add(Severity::Error, {},
            Text::tr("the file is larger than %1, and the daemon does not read it")
                .arg(QLocale().formattedDataSize(LargestFile, 0)));
        return false;
    }
    if (info.fileName().startsWith(QLatin1Char('.'))) {
        add(Severity::Error, {},
            Text::tr("the daemon overlooks files whose name begins with a dot"));
    }
    if (!file.open(QIODevice::ReadOnly)) {
        add(Severity::Error, {}, Text::tr("the file cannot be opened: %1").arg(file.errorString()));
        return false;
    }
    m_text = file.readAll();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(m_text, &error);
    if (error.error != QJsonParseError::NoError) {
        m_findings.append(
            {Severity::Error, m_path, JsonPlaces::of(m_text, error.offset),
             Text::tr("no JSON: %1").arg(jsonFault(error.error))});
        return false;
    }
    m_places = std::make_unique<JsonPlaces>(m_text);
    if (!document.isObject()) {
        add(Severity::Error, {}, Text::tr("the root has to be an object, in braces"));
        return false;
    }
    m_object = document.object();
    return true;
}

/// Checks for names of files that the daemon would shorten or change.
void FileCheck::checkName(const QString& place, const QString& name)
{
    static const QRegularExpression risky(QStringLiteral("[#?]|%[0-9A-Fa-f]{2}"));
    if (name.contains(risky)) {
        warn(place, Text::tr("a name with #, ? or %20 is cut or changed in places: %1").arg(name));
    }
}

void FileCheck::checkKeys(const QString& place, const QJsonObject& object, const QStringList& known)
{
    for (const QString& key : object.keys()) {
        if (!known.contains(key)) {
            warn(
                place + QLatin1Char('/') + key,
                Text::tr("unknown key %1, which is ignored").arg(key) + didYouMean(key, known));
        }
    }
}

void FileCheck::checkMoodset()
{
    if (!read()) {
        return;
    }
    checkKeys(QString(), m_object, moodsetKeys());
    checkWallpaper();
    checkTexts();
    checkNumbers();
    checkColors();
    for (const MoodsetNames::Tone& tone : MoodsetNames::Tones) {
        if (m_object.contains(tone.file)) {
            checkTone(tone.file);
        }
    }
}

void FileCheck::checkWallpaper()
{
    const QString place = at("wallpaper");
    const QString name = m_object.value(QLatin1String("wallpaper")).toString();
    if (name.isEmpty()) {
        add(Severity::Error, place, Text::tr("\"wallpaper\" has to name a file in images/"));
        return;
    }
    if (name.contains(QLatin1Char('/'))) {
        add(Severity::Error, place,
            Text::tr("the wallpaper's name must have no \"/\": %1").arg(name));
        return;
    }
    const QString path = m_folder.filePath(QStringLiteral("images/") + name);
    if (!QFileInfo::exists(path)) {
        add(Severity::Error, place, Text::tr("there is no images/%1").arg(name));
        return;
    }
    checkName(place, name);
    const QString fault = pictureFault(path);
    if (!fault.isEmpty()) {
        warn(place, Text::tr("images/%1 cannot become the wallpaper: %2").arg(name, fault));
    }
}

void FileCheck::checkTexts()
{
    for (const char* const key : {"displayName", "translationCatalog", "partnerSpace"}) {
        const QJsonValue value = m_object.value(QLatin1String(key));
        if (!value.isUndefined() && !value.isString()) {
            warn(
                at(key),
                Text::tr("\"%1\" has to be a text, and counts as empty").arg(QLatin1String(key)));
        }
    }
    if (m_object.value(QLatin1String("displayName")).toString().isEmpty()) {
        warn(at("displayName"), Text::tr("the moodset will have no name"));
    }
    const QJsonValue favorite = m_object.value(QLatin1String("favorite"));
    if (!favorite.isUndefined() && !favorite.isBool()) {
        warn(at("favorite"), Text::tr("\"favorite\" has to be true or false, and counts as true"));
    }
    const QJsonValue timestamp = m_object.value(QLatin1String("timestamp"));
    if (!timestamp.isUndefined()
        && !QDateTime::fromString(timestamp.toString(), Qt::ISODate).isValid()) {
        warn(at("timestamp"), Text::tr("\"timestamp\" is no time in the form of ISO 8601"));
    }
}

void FileCheck::checkNumbers()
{
    const QJsonValue volume = m_object.value(QLatin1String("ringerVolume"));
    if (!volume.isUndefined() && !isWhole(volume)) {
        warn(
            at("ringerVolume"),
            Text::tr("\"ringerVolume\" has to be a whole number, and counts as 80"));
    } else if (!volume.isUndefined() && (volume.toInt() < 0 || volume.toInt() > Loudest)) {
        warn(
            at("ringerVolume"),
            Text::tr("\"ringerVolume\" is not from 0 to 100, so the volume stays as it is"));
    }
    const QJsonValue version = m_object.value(QLatin1String("version"));
    if (!isWhole(version) || version.toInt() < CurrentVersion) {
        warn(
            at("version"),
            Text::tr("without \"version\": 2 the wallpaper is cut as that of an older bundle"));
    }
}

void FileCheck::checkColors()
{
    for (const char* const key :
         {"highlightColor", "secondaryHighlightColor", "primaryColor", "secondaryColor",
          "secondaryColors"}) {
        const QJsonValue value = m_object.value(QLatin1String(key));
        if (!value.isUndefined() && !colorFromString(value.toString()).isValid()) {
            warn(
                at(key),
                Text::tr("\"%1\" is no colour, and is made from the wallpaper instead")
                    .arg(QLatin1String(key)));
        }
    }
    const QJsonValue one = m_object.value(QLatin1String("secondaryColor"));
    const QJsonValue other = m_object.value(QLatin1String("secondaryColors"));
    if (one.toString() != other.toString()) {
        warn(
            at(other.isUndefined() ? "secondaryColor" : "secondaryColors"),
            Text::tr("\"secondaryColor\" and \"secondaryColors\" have to be the same: each is read "
                     "in one place only"));
    }
}

void FileCheck::checkTone(const QString& key)
{
    const QString place = QLatin1Char('/') + key;
    const QJsonValue value = m_object.value(key);
    if (!value.isObject()) {
        warn(place, Text::tr("\"%1\" has to be an object, and is left out").arg(key));
        return;
    }
    const QJsonObject tone = value.toObject();
    checkKeys(place, tone, {QStringLiteral("file"), QStringLiteral("enabled")});
    const QJsonValue enabled = tone.value(QLatin1String("enabled"));
    if (!enabled.isUndefined() && !isWhole(enabled)) {
        warn(
            place + at("enabled"),
            Text::tr("\"enabled\" has to be a number, and counts as 1: write 0 to switch the tone "
                     "off"));
    }
    const QString file = tone.value(QLatin1String("file")).toString();
    if (file.isEmpty()) {
        return;
    }
    if (file.contains(QLatin1Char('/'))) {
        warn(
            place + at("file"), Text::tr("the tone's name must have no \"/\": it has no file now"));
        return;
    }
    checkName(place + at("file"), file);
    if (!QFileInfo(m_folder.filePath(QStringLiteral("sounds/") + file)).isFile()) {
        warn(place + at("file"), Text::tr("there is no sounds/%1").arg(file));
    }
}

void FileCheck::checkIndex()
{
    if (!read()) {
        return;
    }
    checkKeys(QString(), m_object, {QStringLiteral("translationCatalog"), QStringLiteral("files")});
    const QString name = QFileInfo(m_path).completeBaseName();
    const QDir folder(m_folder.filePath(name));
    if (!folder.exists()) {
        add(Severity::Error, {}, Text::tr("the folder %1 beside the index is missing").arg(name));
    }
    const QJsonValue files = m_object.value(QLatin1String("files"));
    if (!files.isArray()) {
        add(Severity::Error, at("files"), Text::tr("\"files\" has to be a list, in brackets"));
        return;
    }
    QStringList seen;
    for (int i = 0; i < files.toArray().size(); ++i) {
        checkIndexEntry(i, folder, &seen);
    }
}

void FileCheck::checkIndexEntry(int index, const QDir& folder, QStringList* seen)
{
    const QString place = at("files") + QLatin1Char('/') + QString::number(index);
    const QJsonObject entry = m_object.value(QLatin1String("files")).toArray().at(index).toObject();
    checkKeys(place, entry, {QStringLiteral("fileName"), QStringLiteral("displayName")});
    const QString name = entry.value(QLatin1String("fileName")).toString();
    const QString namePlace = place + at("fileName");
    if (name.isEmpty()) {
        warn(place, Text::tr("the entry names no file"));
        return;
    }
    if (seen->contains(name)) {
        warn(namePlace, Text::tr("%1 is listed twice").arg(name));
    }
    seen->append(name);
    checkName(namePlace, name);
    if (folder.exists() && !QFileInfo(folder.filePath(name)).isFile()) {
        warn(namePlace, Text::tr("there is no %1/%2").arg(folder.dirName(), name));
    }
}
