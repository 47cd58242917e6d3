// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"
#include "content/moodsetdata.h"
#include "content/moodsetqueryagent.h"
#include "moodsetsettings.h"

#include <QObject>
#include <QSet>
#include <QSqlQuery>
#include <QStringList>

class MoodsetDocument;

/// Writes moodsets: the edits of users, whole records, and the content of moodset files.
///
/// A new row gets all its values from the moodset file. When the file changes later, the wallpaper,
/// the name, the version and the tone files change with it, and everything that a user can edit
/// stays.
///
/// The active moodset is the one whose file is the wallpaper's source in the key/value store. The
/// manager keeps a copy of its record up to date.
class MoodsetManager : public QObject, public ContentManager
{
    Q_OBJECT

public:
    explicit MoodsetManager(QueryAgentDatabase& database, QObject* parent);

    /// The registry's moodset manager.
    static MoodsetManager* fromRegistry();

    /// "application/x-zavro-moodset"
    QString mimeType() const override;
    /// Reads up to 100 moodset files that are not up to date. True if there were that many, because
    /// there may be more. The moodset of a bad file is removed, and the file is not read again
    /// until it changes.
    bool updateMetaData() override;
    /// Changes the given attributes: "displayName", "favorite", the four colours as text,
    /// "ringerVolume", the flags of the tones ("ringerToneEnabled") as booleans, and under
    /// "resources" the files of the tones ("ringerToneFile"), each as a map with a "url", which is
    /// empty to remove the tone. Other attributes are ignored. False if there is no such moodset or
    /// the database failed.
    bool save(qint64 id, const QVariantMap& values) override;
    /// Deletes the moodset, but not its file.
    bool remove(qint64 id) override;

    /// Stores a whole record except its resources. A moodset that exists keeps its favourite flag,
    /// its time stamp and its display name.
    bool create(const Moodset& moodset);
    /// The moodset of a local file or, for another URL, of the file that was downloaded from it. A
    /// null handle if there is none.
    Moodset moodsetFromUrl(const QUrl& url);
    /// The moodset that belongs to a back cover, or a null handle.
    Moodset moodsetFromDorselId(const QString& dorselId);
    /// The name of the bundle's directory that contains `path`, or a null text if `path` is in
    /// none.
    static QString moodsetInstallDirName(const QString& path);

Q_SIGNALS:
    /// The row of the active moodset has changed. The record is never null.
    void activeMoodsetUpdated(const Moodset& moodset);

public Q_SLOTS:
    /// Reads the active moodset again.
    void updateActiveMoodset();

private:
    struct ResourceEdits;
    struct MetadataBatch;

    bool prepareStatements();
    Moodset parseMoodset(QSqlQuery* query);
    void bindEdit(qint64 id, const QVariantMap& values);
    int editedSounds(const QVariantMap& values) const;
    static ResourceEdits resourceEdits(qint64 id, const QVariantMap& resources);
    bool applyEdit(const ResourceEdits& edits);
    bool updateExisting(const Moodset& moodset);
    bool insertNew(const Moodset& moodset);
    void announceActiveMoodset(const QSet<qint64>& writtenIds);

    // moodsetmetadata.cpp
    bool prepareMetadataStatements();
    void readFile(
        qint64 id, const QString& directory, const QString& fileName, MetadataBatch* batch);
    int readTones(
        qint64 id, const QString& directory, const MoodsetDocument& moodset,
        SqlBatch* resources) const;
    bool mergeStored(MetadataBatch* batch);
    bool applyMetadata(const MetadataBatch& batch);

    MoodsetQueryAgent m_queryAgent;
    QSqlQuery m_queryMoodset{m_database};
    QSqlQuery m_queryMoodsetByDorselId{m_database};
    QSqlQuery m_insertMoodset{m_database};
    QSqlQuery m_updateFile{m_database};
    QSqlQuery m_updateMoodset{m_database};
    QSqlQuery m_deleteMoodset{m_database};
    QSqlQuery m_queryResource{m_database};
    QSqlQuery m_insertResource{m_database};
    QSqlQuery m_deleteResource{m_database};
    QSqlQuery m_clearResources{m_database};
    QSqlQuery m_modifiedQuery{m_database};
    QSqlQuery m_modifiedMoodsetQuery{m_database};
    QSqlQuery m_modifiedResourceQuery{m_database};
    QSqlQuery m_modifiedReset{m_database};
    QStringList m_toneNames;
    /// The path of the system's default tone for each of m_toneNames, or an empty text.
    QStringList m_fallbackTones;
    MoodsetSettings m_settings{nullptr};
    Moodset m_activeMoodset;
};
