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

/// The sample's file with a name, and a catalogue of that name.
QByteArray moodsetFile(const QString& name)
{
    QFile sample(Sample + QLatin1Char('/') + fileName());
    if (!sample.open(QIODevice::ReadOnly)) {
        giveUp("cannot read " + QFile::encodeName(sample.fileName()));
    }
    QJsonObject object = QJsonDocument::fromJson(sample.readAll()).object();
    object.insert(QStringLiteral("displayName"), name);
    object.insert(QStringLiteral("translationCatalog"), name);
    return QJsonDocument(object).toJson();
}

void writeMoodsetFile(int number, const QString& name)
{
    QFile file(bundlePath(number) + QLatin1Char('/') + fileName());
    const QByteArray content = moodsetFile(name);
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

void installBundles(int count)
{
    for (int i = 0; i < count; ++i) {
        for (const auto& folder : {QStringLiteral("/images"), QStringLiteral("/sounds")}) {
            copyFolder(Sample + folder, bundlePath(i) + folder);
        }
        writeMoodsetFile(i, QStringLiteral("bundle-%1").arg(i));
    }
}

void changeBundle(int number)
{
    static int changes = 0;
    writeMoodsetFile(number, QStringLiteral("changed-%1").arg(++changes));
}
