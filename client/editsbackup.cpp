// SPDX-License-Identifier: BSD-3-Clause
#include "editsbackup.h"

#include "favoriteorder.h"
#include "filewait.h"
#include "libraryfault.h"
#include "moodsetedit.h"
#include "moodsetlibrary.h"
#include "moodsetservice.h"
#include "subject.h"
#include "text.h"
#include "wholefile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <moodsetattributes.h>
#include <moodsetnames.h>

namespace {

constexpr int FormatVersion = 1;
constexpr int WaitMs = 60000;
/// Enough for hundreds of thousands of moodsets.
constexpr qint64 LargestBackup = 512LL * 1024 * 1024;

const auto BackupKind = QStringLiteral("moodsetctl-backup");
const auto MoodsetsKey = QStringLiteral("moodsets");
const auto DownloadsKey = QStringLiteral("downloads");

QJsonObject moodsetEntry(const MoodsetData& moodset)
{
    return {
        {QStringLiteral("file"), moodset.url.toLocalFile()},
        {QStringLiteral("attributes"),
         QJsonObject::fromVariantMap(MoodsetAttributes::whole(moodset))}};
}

QJsonArray moodsetEntries(QString* fault)
{
    MoodsetLibrary library;
    QJsonArray entries;
    for (const Moodset& moodset : library.moodsets()) {
        const Moodset whole = library.moodset(moodset->id);
        if (whole) {
            entries.append(moodsetEntry(*whole));
        }
    }
    *fault = library.error();
    return entries;
}

bool isFavorite(const QJsonObject& entry)
{
    return entry.value(QLatin1String("attributes"))
        .toObject()
        .value(MoodsetNames::Attribute::Favorite)
        .toBool();
}

/// Makes the daemon add the missing moodset of a file.
QString make(const MoodsetService& service, const LibraryReader& files, const QString& path)
{
    if (!QFileInfo::exists(path)) {
        return Text::tr("no such file");
    }
    if (!path.endsWith(QLatin1String(".moodset"))) {
        return service.createMoodset(QUrl::fromLocalFile(path));
    }
    const QString fault = service.installPackage(QFileInfo(path).path());
    return fault.isEmpty() ? waitForFile(service, files, path, WaitMs).error : fault;
}

/// Restores one moodset. Returns the reason of a failure, or an empty text.
QString restoreMoodset(
    const MoodsetService& service, const LibraryReader& files, const QJsonObject& entry)
{
    const QString path = entry.value(QLatin1String("file")).toString();
    const QUrl url = QUrl::fromLocalFile(path);
    MoodsetLibrary library;
    Moodset moodset = library.moodset(url);
    if (!moodset) {
        QString fault = make(service, files, path);
        if (!fault.isEmpty()) {
            return fault;
        }
        moodset = library.moodset(url);
    }
    if (!moodset) {
        return Text::tr("the daemon has not made a moodset of it");
    }
    const QVariantMap attributes =
        entry.value(QLatin1String("attributes")).toObject().toVariantMap();
    // Attributes that have not changed are not saved, because each save makes all shells read the
    // moodset again.
    return MoodsetAttributes::current(*moodset, attributes) == attributes
        ? QString()
        : MoodsetEdit::save(service, moodset->id, attributes);
}

QString restoreDownload(
    const MoodsetService& service, const LibraryReader& files, const QString& path,
    const QString& source)
{
    if (files.downloads().value(path) == source) {
        return {};
    }
    const std::optional<LibraryFile> file = files.findFile(path);
    if (!file) {
        return Text::tr("the library does not hold it");
    }
    QString fault = service.saveSource(file->id, source);
    if (fault.isEmpty() && files.downloads().value(path) != source) {
        return Text::tr("the daemon has not recorded where it came from");
    }
    return fault;
}

QJsonObject counts(int moodsets, int downloads, const QStringList& faults)
{
    return {
        {MoodsetsKey, moodsets},
        {DownloadsKey, downloads},
        {QStringLiteral("faults"), QJsonArray::fromStringList(faults)}};
}

/// Restores the edits of a backup, one by one, and continues after those that cannot be restored.
class Restoration
{
public:
    Restoration(const MoodsetService& service, const LibraryReader& files)
        : m_service(service)
        , m_files(files)
    {
    }

    void restoreMoodsets(const QJsonArray& entries)
    {
        QStringList favorites;
        for (const QJsonValue& value : entries) {
            if (m_hasDaemonEnded) {
                return;
            }
            const QJsonObject entry = value.toObject();
            const QString file = entry.value(QLatin1String("file")).toString();
            if (isFavorite(entry)) {
                favorites.append(file);
            }
            m_moodsets += note(file, restoreMoodset(m_service, m_files, entry)) ? 1 : 0;
        }
        note(Text::tr("the order of the favourites"), orderFavorites(m_service, favorites));
    }

    void restoreDownloads(const QJsonObject& downloads)
    {
        for (const QString& file : downloads.keys()) {
            if (m_hasDaemonEnded) {
                return;
            }
            const QString source = downloads.value(file).toString();
            m_downloads += note(file, restoreDownload(m_service, m_files, file, source)) ? 1 : 0;
        }
    }

    Outcome outcome() const
    {
        Outcome outcome = Outcome::done(
            numbered(
                m_moodsets, QT_TRANSLATE_NOOP("Text", "%1 moodset is as it was."),
                QT_TRANSLATE_NOOP("Text", "%1 moodsets are as they were."))
                + QLatin1Char('\n'),
            counts(m_moodsets, m_downloads, m_faults));
        if (m_hasDaemonEnded) {
            outcome.status = ExitStatus::Failed;
            outcome.error = Text::tr("the daemon has ended, and some edits are not restored");
        } else if (!m_faults.isEmpty()) {
            outcome.status = ExitStatus::Failed;
            outcome.error =
                Text::tr("not brought back: %1").arg(m_faults.join(QStringLiteral("; ")));
        }
        return outcome;
    }

    /// Whether everything was tried while the daemon ran, so that a second attempt would fail in
    /// the same way.
    bool isTried() const { return !m_hasDaemonEnded; }

private:
    /// Records the reason why `subject` could not be restored. Returns whether there is none.
    bool note(const QString& subject, const QString& fault)
    {
        if (fault.isEmpty()) {
            return true;
        }
        m_faults.append(about(subject, fault));
        m_hasDaemonEnded = m_hasDaemonEnded || !m_service.isRunning();
        return false;
    }

    const MoodsetService& m_service;
    const LibraryReader& m_files;
    QStringList m_faults;
    int m_moodsets = 0;
    int m_downloads = 0;
    bool m_hasDaemonEnded = false;
};

/// Reads the backup from a file. Sets `fault` to the reason of a failure.
QJsonObject readBackup(const QString& path, QString* fault)
{
    // Reading from a FIFO or a device could wait for ever, or never reach an end.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        *fault = about(path, Text::tr("not a file"));
        return {};
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *fault = about(path, file.errorString());
        return {};
    }
    const bool isSmall = file.size() <= LargestBackup;
    QJsonObject backup = isSmall ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
    if (backup.value(QLatin1String("kind")).toString() != BackupKind) {
        *fault = about(path, Text::tr("this is no backup by moodsetctl"));
    } else if (backup.value(QLatin1String("version")).toInt() != FormatVersion) {
        *fault = about(path, Text::tr("the backup is of a version that is not known"));
    }
    return backup;
}

} // namespace

QJsonObject EditsBackup::collect(QString* fault)
{
    const QJsonArray moodsets = moodsetEntries(fault);
    LibraryReader library;
    QJsonObject downloads;
    if (fault->isEmpty() && library.open()) {
        const QHash<QString, QString> sources = library.downloads();
        for (auto source = sources.cbegin(); source != sources.cend(); ++source) {
            downloads.insert(source.key(), source.value());
        }
        *fault = libraryFaultWithAdvice(library);
    }
    return {
        {QStringLiteral("kind"), BackupKind},
        {QStringLiteral("version"), FormatVersion},
        {QStringLiteral("made"), QDateTime::currentDateTimeUtc().toString(Qt::ISODate)},
        {MoodsetsKey, moodsets},
        {DownloadsKey, downloads}};
}

QString EditsBackup::save(const QJsonObject& edits, const QString& path)
{
    return about(path, writeWholeFile(path, QJsonDocument(edits).toJson()));
}

Outcome EditsBackup::write(const QString& path)
{
    QString fault;
    const QJsonObject edits = collect(&fault);
    if (fault.isEmpty()) {
        fault = save(edits, path);
    }
    if (!fault.isEmpty()) {
        return Outcome::failed(fault);
    }
    const int moodsets = edits.value(MoodsetsKey).toArray().size();
    return Outcome::done(
        Text::tr("%1 in %2.")
                .arg(
                    numbered(
                        moodsets, QT_TRANSLATE_NOOP("Text", "%1 moodset"),
                        QT_TRANSLATE_NOOP("Text", "%1 moodsets")),
                    path)
            + QLatin1Char('\n'),
        {{QStringLiteral("output"), path},
         {MoodsetsKey, moodsets},
         {DownloadsKey, edits.value(DownloadsKey).toObject().size()}});
}

QJsonObject EditsBackup::noneRestored()
{
    return counts(0, 0, {});
}

Outcome EditsBackup::restore(const MoodsetService& service, const QString& path, bool* isTried)
{
    *isTried = false;
    QString fault;
    const QJsonObject backup = readBackup(path, &fault);
    if (!fault.isEmpty()) {
        return Outcome::failed(fault);
    }
    LibraryReader files;
    if (!files.open()) {
        return Outcome::failed(libraryFaultWithAdvice(files));
    }
    Restoration restoration(service, files);
    restoration.restoreMoodsets(backup.value(MoodsetsKey).toArray());
    restoration.restoreDownloads(backup.value(DownloadsKey).toObject());
    *isTried = restoration.isTried();
    return restoration.outcome();
}
