// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"
#include "content/moodsetdata.h"
#include "content/moodsetqueryagent.h"
#include "moodsetsettings.h"

#include <QObject>
#include <QSqlQuery>
#include <QStringList>

class QJsonObject;

/// Writes moodsets: the edits of users, whole records, and what moodset files say.
///
/// A moodset file gives the defaults of a new row; from then on the wallpaper, the name, the
/// version and the tone files follow the file, and all that a user can change stays as it is.
///
/// The active moodset is the one whose file the key/value store names as the source of the
/// wallpaper; a copy of it is kept up to date.
class MoodsetManager : public QObject, public ContentManager
{
    Q_OBJECT

public:
    explicit MoodsetManager(QueryAgentDatabase& database, QObject* parent);

    /// "application/x-zavro-moodset"
    QString mimeType() const override;
    /// Parses up to 100 moodset files that are not up to date; true if there were that many, so
    /// that more may follow. A bad file loses its moodset and counts as up to date until it
    /// changes.
    bool updateMetaData() override;
    /// Changes what `values` names: "displayName", "favorite", the four colours as text,
    /// "ringerVolume", the tones' flags ("ringerToneEnabled") as booleans, and under "resources"
    /// the tones' files ("ringerToneFile"), each a map with a "url" that is empty to remove the
    /// tone. Anything else is ignored. False if there is no such moodset or the database failed.
    bool save(qint64 id, const QVariantMap& values) override;
    /// Deletes the moodset, but not its file.
    bool remove(qint64 id) override;

    /// Stores a whole record but for its resources. A moodset that exists keeps its favourite flag,
    /// its time stamp and its display name.
    bool create(const Moodset& moodset);
    /// The moodset of a file, or of the file downloaded from any other URL, or a null handle.
    Moodset moodsetFromUrl(const QUrl& url);
    /// The moodset that belongs to a back cover, or a null handle.
    Moodset moodsetFromDorselId(const QString& dorselId);
    /// The name of the bundle's directory that holds `path`, or a null text if `path` is in none.
    static QString moodsetInstallDirName(const QString& path);

Q_SIGNALS:
    /// The row of the active moodset has changed.
    void activeMoodsetUpdated(const Moodset& moodset);

public Q_SLOTS:
    /// Reads the active moodset anew.
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
    void announceActiveMoodset();

    // moodsetmetadata.cpp
    bool prepareMetadataStatements();
    void readFile(
        qint64 id, const QString& directory, const QString& fileName, MetadataBatch* batch);
    int readTones(
        qint64 id, const QString& directory, const QJsonObject& moodset, SqlBatch* resources) const;
    bool mergeStored(MetadataBatch* batch);
    bool applyMetadata(const MetadataBatch& batch);

    MoodsetQueryAgent m_queryAgent;
    QSqlQuery m_queryMoodset;
    QSqlQuery m_queryMoodsetByDorselId;
    QSqlQuery m_insertMoodset;
    QSqlQuery m_updateFile;
    QSqlQuery m_updateMoodset;
    QSqlQuery m_deleteMoodset;
    QSqlQuery m_queryResource;
    QSqlQuery m_insertResource;
    QSqlQuery m_deleteResource;
    QSqlQuery m_clearResources;
    QSqlQuery m_modifiedQuery;
    QSqlQuery m_modifiedMoodsetQuery;
    QSqlQuery m_modifiedResourceQuery;
    QSqlQuery m_modifiedReset;
    QStringList m_toneNames;
    /// The path of the system's tone for each of m_toneNames; empty where it has none.
    QStringList m_fallbackTones;
    MoodsetSettings m_settings;
    Moodset m_activeMoodset;
};
