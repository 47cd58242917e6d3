// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetmanager.h"

#include "content/colorstring.h"
#include "content/errorwarning.h"
#include "content/moodsetrow.h"
#include "content/sqlbatch.h"
#include "indexing/filemanager.h"
#include "moodsetlog.h"
#include "tones.h"

#include <QDateTime>
#include <QSqlError>
#include <QUrl>

#include <cstdlib>
#include <memory>
#include <profile.h>

namespace {

const char* const Constructor = "MoodsetManager::MoodsetManager(QueryAgentDatabase&, QObject*)";
const char* const SaveFunction = "virtual bool MoodsetManager::save(qint64, const QVariantMap&)";
const char* const CreateFunction = "bool MoodsetManager::create(const Moodset&)";

/// The columns of m_queryMoodset.
enum StoredColumn : int {
    DisplayName,
    Favorite,
    Timestamp,
    HomeWallpaper,
    ApplicationWallpaper,
    HighlightColor,
    SecondaryHighlightColor,
    PrimaryColor,
    SecondaryColor,
    RingerVolume,
    EnabledSounds,
    PartnerSpace,
    Version
};

/// The files of the system's default tones.
QStringList fallbackTones()
{
    QStringList files;
    for (const QString& key : Tones::profileKeys()) {
        const std::unique_ptr<char, decltype(&std::free)> file(
            profile_get_value("fallback", key.toUtf8().constData()), &std::free);
        files.append(QString::fromUtf8(file.get()));
    }
    return files;
}

/// The value of an edit if it has a valid one, otherwise the stored value.
QVariant edited(const QVariantMap& values, const char* key, const QVariant& stored)
{
    const QVariant value = values.value(QLatin1String(key));
    return value.isValid() ? value : stored;
}

/// The time at which a moodset became a favourite. Null if it is not a favourite.
QVariant editedTimestamp(const QVariantMap& values, const QSqlQuery& stored)
{
    const QVariant favorite = values.value(QStringLiteral("favorite"));
    if (!favorite.isValid() || favorite.toBool() == stored.value(Favorite).toBool()) {
        return stored.value(Timestamp);
    }
    return favorite.toBool() ? QDateTime::currentDateTimeUtc().toString(Qt::ISODate) : QVariant();
}

} // namespace

/// The changes that an edit makes to the files of tones.
struct MoodsetManager::ResourceEdits
{
    SqlBatch deletes;
    SqlBatch inserts;
};

MoodsetManager::MoodsetManager(QueryAgentDatabase& database, QObject* parent)
    : QObject(parent)
    , ContentManager(database)
    , m_queryAgent(database)
    , m_toneNames(Tones::names())
    , m_fallbackTones(fallbackTones())
{
    // A statement that could not be prepared fails when it is used.
    prepareStatements();
    connect(
        &m_settings, &MoodsetSettings::sourceChanged, this, &MoodsetManager::updateActiveMoodset);
    updateActiveMoodset();
}

MoodsetManager* MoodsetManager::fromRegistry()
{
    return static_cast<MoodsetManager*>(managerFromType(MoodsetContent::Moodset));
}

bool MoodsetManager::prepareStatements()
{
    const bool prepared = prepare(
        {{m_queryMoodset,
          QStringLiteral(
              "SELECT file.displayName, moodset.favorite, moodset.timestamp, "
              "moodset.homeWallpaper, moodset.applicationWallpaper, moodset.highlightColor, "
              "moodset.secondaryHighlightColor, moodset.primaryColor, moodset.secondaryColor, "
              "moodset.ringerVolume, moodset.enabledSounds, moodset.partnerSpace, "
              "moodset.version FROM file INNER JOIN moodset ON file.id = moodset.fileId "
              "WHERE file.id = ?;"),
          "Failed to prepare m_queryMoodset."},
         {m_queryMoodsetByDorselId,
          QStringLiteral(
              "SELECT file.id, directory.path || '/' || file.fileName, file.fileName, "
              "file.mimeType, file.displayName, file.permissions, moodset.favorite, "
              "moodset.homeWallpaper, moodset.applicationWallpaper, moodset.highlightColor, "
              "moodset.secondaryHighlightColor, moodset.primaryColor, "
              "moodset.secondaryColor, moodset.ringerVolume, moodset.enabledSounds, "
              "moodset.partnerSpace, moodset.version "
              "FROM file INNER JOIN directory on file.directoryId = directory.id "
              "INNER JOIN moodset ON file.id = moodset.fileId AND moodset.fileId = "
              "(SELECT fileId FROM dorselid WHERE dorselId = ?);"),
          "Failed to prepare m_queryMoodsetByDorselId."},
         {m_insertMoodset,
          QStringLiteral("INSERT INTO moodset ( fileId, homeWallpaper, applicationWallpaper, "
                         "highlightColor, secondaryHighlightColor, primaryColor, secondaryColor, "
                         "ringerVolume, enabledSounds, favorite, partnerSpace, version) "
                         "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?);"),
          "Failed to prepare m_insertMoodset."},
         {m_updateFile, QStringLiteral("UPDATE file SET displayName = ? WHERE id = ?;"),
          "Failed to prepare m_updateFile."},
         {m_updateMoodset,
          QStringLiteral(
              "UPDATE moodset SET favorite = ?, timestamp = ?, homeWallpaper = ?, "
              "applicationWallpaper = ?, highlightColor = ?, secondaryHighlightColor = ?, "
              "primaryColor = ?, secondaryColor = ?, ringerVolume = ?, enabledSounds = ?, "
              "partnerSpace = ?, version = ? WHERE fileId = ?;"),
          "Failed to prepare m_updateMoodset."},
         {m_deleteMoodset, QStringLiteral("DELETE FROM moodset WHERE fileId = ?;"),
          "Failed to prepare m_deleteMoodset."},
         {m_queryResource,
          QStringLiteral("SELECT resource.resourceType, directory.path || '/' || file.fileName, "
                         "file.fileName, file.displayName "
                         "FROM resource INNER JOIN file on resource.resourceId = file.id "
                         "INNER JOIN directory on file.directoryId = directory.id "
                         "WHERE resource.fileId = ?;"),
          "Failed to prepare m_queryResource."},
         {m_insertResource,
          QStringLiteral("INSERT OR REPLACE INTO resource ( fileId, resourceType, "
                         "resourceId) VALUES (?, ?, ?);"),
          "Failed to prepare m_insertResource."},
         {m_deleteResource,
          QStringLiteral("DELETE FROM resource WHERE fileId = ? and resourceType = ?;"),
          "Failed to prepare m_deleteResource."},
         {m_clearResources, QStringLiteral("DELETE FROM resource WHERE fileId = ?;"),
          "Failed to prepare m_clearResources."}},
        Constructor);
    return prepared && prepareMetadataStatements();
}

QString MoodsetManager::mimeType() const
{
    return QStringLiteral("application/x-zavro-moodset");
}

bool MoodsetManager::remove(qint64 id)
{
    bind(m_deleteMoodset, {id});
    return run(
        m_deleteMoodset, "virtual bool MoodsetManager::remove(qint64)",
        "Failed to execute m_deleteMoodset.");
}

Moodset MoodsetManager::moodsetFromUrl(const QUrl& url)
{
    return Moodset(m_queryAgent.queryByUrl(url));
}

void MoodsetManager::updateActiveMoodset()
{
    // This also replaces a record with the same id, because its fields may have changed.
    m_activeMoodset = moodsetFromUrl(m_settings.source());
}

/// Announces the active moodset if its row was among those that have just been written.
void MoodsetManager::announceActiveMoodset(const QSet<qint64>& writtenIds)
{
    // The signal of the store arrives later than the new value can be read. So the source may
    // already be another file, or a file that is not a moodset of ours.
    updateActiveMoodset();
    if (m_activeMoodset && writtenIds.contains(m_activeMoodset.constData()->id)) {
        Q_EMIT activeMoodsetUpdated(m_activeMoodset);
    }
}

QString MoodsetManager::moodsetInstallDirName(const QString& path)
{
    const QString root = QStringLiteral("/usr/share/moodset");
    const int start = root.size() + 1;
    const int slash = path.indexOf(QLatin1Char('/'), start);
    return path.startsWith(root) && slash >= 0 ? path.mid(start, slash - start) : QString();
}

Moodset MoodsetManager::moodsetFromDorselId(const QString& dorselId)
{
    const char* const function = "Moodset MoodsetManager::moodsetFromDorselId(const QString&)";
    if (dorselId.isEmpty()) {
        qCWarning(moodsetLog) << function;
        qCWarning(moodsetLog) << "Empty DORSEL ID!";
        return Moodset();
    }
    m_queryMoodsetByDorselId.bindValue(0, dorselId);
    if (!m_queryMoodsetByDorselId.exec()) {
        warnOfError(
            m_queryMoodsetByDorselId.lastError(), function,
            "Failed to execute m_queryMoodsetByDorselId");
        return Moodset();
    }
    if (!m_queryMoodsetByDorselId.next()) {
        m_queryMoodsetByDorselId.finish();
        return Moodset();
    }
    return parseMoodset(&m_queryMoodsetByDorselId);
}

/// A record for the current row of m_queryMoodsetByDorselId, with its resources.
Moodset MoodsetManager::parseMoodset(QSqlQuery* query)
{
    // The columns of m_queryMoodsetByDorselId.
    enum Column : int { Id, Path, FileName, MimeType, Name, Permissions, FirstOfLook };
    const qint64 id = query->value(Id).toLongLong();
    Moodset moodset(new MoodsetData(id, QUrl::fromLocalFile(query->value(Path).toString())));
    moodset->fileName = query->value(FileName).toString();
    moodset->mimeType = query->value(MimeType).toString();
    moodset->displayName = query->value(Name).toString();
    moodset->permissions = query->value(Permissions).toInt();
    MoodsetRow::fillLook(moodset.data(), *query, FirstOfLook);
    query->finish();

    m_queryResource.bindValue(0, id);
    if (!m_queryResource.exec()) {
        warn(
            m_queryResource, "Moodset MoodsetManager::parseMoodset(QSqlQuery*)",
            "Failed to execute m_queryResource");
        return moodset;
    }
    enum ResourceColumn : int { Type, FirstOfFile };
    while (m_queryResource.next()) {
        moodset->resources.insert(
            m_queryResource.value(Type).toString(),
            MoodsetRow::resource(m_queryResource, FirstOfFile));
    }
    m_queryResource.finish();
    return moodset;
}

bool MoodsetManager::save(qint64 id, const QVariantMap& values)
{
    m_queryMoodset.bindValue(0, id);
    if (!m_queryMoodset.exec()) {
        warnOfError(m_queryMoodset.lastError(), SaveFunction, "Failed to execute m_queryMoodset");
        return false;
    }
    if (!m_queryMoodset.next()) {
        m_queryMoodset.finish();
        qCWarning(moodsetLog) << id << "is not an existing moodset";
        return false;
    }
    bindEdit(id, values);
    m_queryMoodset.finish();
    if (!applyEdit(resourceEdits(id, values.value(QStringLiteral("resources")).toMap()))) {
        return false;
    }
    announceActiveMoodset({id});
    return true;
}

/// Binds the current row of m_queryMoodset, with the values of an edit in place of the stored ones.
void MoodsetManager::bindEdit(qint64 id, const QVariantMap& values)
{
    const auto stored = [this](StoredColumn column) { return m_queryMoodset.value(column); };
    bind(m_updateFile, {edited(values, "displayName", stored(DisplayName)), id});
    bind(
        m_updateMoodset,
        {edited(values, "favorite", stored(Favorite)), editedTimestamp(values, m_queryMoodset),
         stored(HomeWallpaper), stored(ApplicationWallpaper),
         edited(values, "highlightColor", stored(HighlightColor)),
         edited(values, "secondaryHighlightColor", stored(SecondaryHighlightColor)),
         edited(values, "primaryColor", stored(PrimaryColor)),
         edited(values, "secondaryColor", stored(SecondaryColor)),
         edited(values, "ringerVolume", stored(RingerVolume)), editedSounds(values),
         stored(PartnerSpace), stored(Version), id});
}

int MoodsetManager::editedSounds(const QVariantMap& values) const
{
    int mask = m_queryMoodset.value(EnabledSounds).toInt();
    for (int i = 0; i < m_toneNames.size(); ++i) {
        const auto flag = values.constFind(Tones::enabledKey(m_toneNames.at(i)));
        if (flag != values.constEnd()) {
            mask = Tones::withTone(mask, i, flag->toBool());
        }
    }
    return mask;
}

MoodsetManager::ResourceEdits MoodsetManager::resourceEdits(qint64 id, const QVariantMap& resources)
{
    const QString urlKey = QStringLiteral("url");
    ResourceEdits edits;
    for (const QString& name : Tones::names()) {
        const QString key = Tones::fileKey(name);
        const QVariantMap resource = resources.value(key).toMap();
        if (!resource.contains(urlKey)) {
            continue;
        }
        QUrl url = resource.value(urlKey).toUrl();
        if (url.isEmpty()) {
            edits.deletes.append({id, key});
            continue;
        }
        if (url.toString().startsWith(QLatin1Char('/'))) {
            url.setScheme(QStringLiteral("file"));
        }
        const qint64 fileId =
            url.isLocalFile() ? FileManager::fromRegistry()->insertFile(url.toLocalFile()) : 0;
        if (fileId != 0) {
            edits.inserts.append({id, key, fileId});
        }
    }
    return edits;
}

/// Writes an edit, whose rows are bound, in one transaction.
bool MoodsetManager::applyEdit(const ResourceEdits& edits)
{
    beginTransaction();
    if (!runInTransaction(m_updateFile, SaveFunction, "Failed to execute m_updateFile.")
        || !runInTransaction(m_updateMoodset, SaveFunction, "Failed to execute m_updateMoodset.")
        || !runBatch(
            edits.deletes, m_deleteResource, SaveFunction, "Failed to execute m_deleteResource.")
        || !runBatch(
            edits.inserts, m_insertResource, SaveFunction, "Failed to execute m_insertResource.")) {
        return false;
    }
    return commit(SaveFunction);
}

bool MoodsetManager::create(const Moodset& moodset)
{
    if (!moodset) {
        return false;
    }
    m_queryMoodset.bindValue(0, moodset->id);
    if (!m_queryMoodset.exec()) {
        warnOfError(m_queryMoodset.lastError(), CreateFunction, "Failed to execute m_queryMoodset");
        return false;
    }
    if (m_queryMoodset.next()) {
        return updateExisting(moodset);
    }
    m_queryMoodset.finish();
    return insertNew(moodset);
}

/// Replaces the current row of m_queryMoodset by a record.
bool MoodsetManager::updateExisting(const Moodset& moodset)
{
    bind(
        m_updateMoodset,
        {m_queryMoodset.value(Favorite), m_queryMoodset.value(Timestamp), moodset->homeWallpaper,
         moodset->applicationWallpaper, colorToString(moodset->highlightColor),
         colorToString(moodset->secondaryHighlightColor), colorToString(moodset->primaryColor),
         colorToString(moodset->secondaryColor), moodset->ringerVolume, moodset->enabledSounds,
         moodset->partnerSpace, moodset->version, moodset->id});
    m_queryMoodset.finish();
    return run(m_updateMoodset, CreateFunction, "Failed to execute m_updateMoodset.");
}

/// If the moodset's own row cannot be inserted, the new display name stays.
bool MoodsetManager::insertNew(const Moodset& moodset)
{
    bind(m_updateFile, {moodset->displayName, moodset->id});
    bind(
        m_insertMoodset,
        {moodset->id, moodset->homeWallpaper, moodset->applicationWallpaper,
         colorToString(moodset->highlightColor), colorToString(moodset->secondaryHighlightColor),
         colorToString(moodset->primaryColor), colorToString(moodset->secondaryColor),
         moodset->ringerVolume, moodset->enabledSounds, moodset->favorite, moodset->partnerSpace,
         moodset->version});
    return run(m_updateFile, CreateFunction, "Failed to execute m_updateFile.")
        && run(m_insertMoodset, CreateFunction, "Failed to execute m_insertMoodset.");
}
