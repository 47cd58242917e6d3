// SPDX-License-Identifier: BSD-3-Clause
#include "bundles.h"

#include "measuredprocess.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString Sample = QStringLiteral(SAMPLE_BUNDLE);

QString fileName()
{
    return QDir(Sample).entryList({QStringLiteral("*.moodset")}).constFirst();
}

void copyFolder(const QString& from, const QString& to)
{
    bool copied = QDir().mkpath(to);
    for (const QString& name : QDir(from).entryList(QDir::Files)) {
        copied =
            copied && QFile::copy(from + QLatin1Char('/') + name, to + QLatin1Char('/') + name);
    }
    if (!copied) {
        giveUp("cannot copy to " + QFile::encodeName(to));
    }
}

QJsonObject sampleMoodset()
{
    QFile sample(Sample + QLatin1Char('/') + fileName());
    if (!sample.open(QIODevice::ReadOnly)) {
        giveUp("cannot read " + QFile::encodeName(sample.fileName()));
    }
    return QJsonDocument::fromJson(sample.readAll()).object();
}

/// Writes the sample's file with a name, and a catalogue with this name.
QJsonObject namedMoodset(const QString& name)
{
    QJsonObject object = sampleMoodset();
    object.insert(QStringLiteral("displayName"), name);
    object.insert(QStringLiteral("translationCatalog"), name);
    return object;
}

void writeMoodsetFile(int number, const QJsonObject& object)
{
    QFile file(bundleFile(number));
    const QByteArray content = QJsonDocument(object).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        giveUp("cannot write " + QFile::encodeName(file.fileName()));
    }
}

} // namespace

QString installPath()
{
    return QStringLiteral("/usr/share/moodset");
}

QString bundlePath(int number)
{
    return QStringLiteral("%1/bundle-%2").arg(installPath()).arg(number, 5, 10, QLatin1Char('0'));
}

QString bundleFile(int number)
{
    return bundlePath(number) + QLatin1Char('/') + fileName();
}

QString wallpaperPath(int number)
{
    return bundlePath(number) + QStringLiteral("/images/")
        + sampleMoodset().value(QLatin1String("wallpaper")).toString();
}

void installBundles(int count)
{
    for (int i = 0; i < count; ++i) {
        for (const auto& folder : {QStringLiteral("/images"), QStringLiteral("/sounds")}) {
            copyFolder(Sample + folder, bundlePath(i) + folder);
        }
        writeMoodsetFile(i, namedMoodset(QStringLiteral("bundle-%1").arg(i)));
    }
}

void changeBundle(int number)
{
    static int changes = 0;
    writeMoodsetFile(number, namedMoodset(QStringLiteral("changed-%1").arg(++changes)));
}

void changeWallpaper(int number, const QString& picture, int version)
{
    QFile::remove(wallpaperPath(number));
    if (!QFile::copy(picture, wallpaperPath(number))) {
        giveUp("cannot write " + QFile::encodeName(wallpaperPath(number)));
    }
    QJsonObject object = namedMoodset(QStringLiteral("version-%1").arg(version));
    object.insert(QStringLiteral("version"), version);
    writeMoodsetFile(number, object);
}
