// SPDX-License-Identifier: BSD-3-Clause
#include "content/dbmanager.h"
#include "content/moodsetcontent.h"
#include "messagelog.h"
#include "moodset/moodsetmanager.h"
#include "service/albumgallery.h"
#include "testfolder.h"

#include <QSignalSpy>
#include <QSqlQuery>
#include <QtTest>

#include <algorithm>

namespace {

int count(const QSignalSpy& spy, int type)
{
    return static_cast<int>(
        std::count(spy.constBegin(), spy.constEnd(), QVariantList{QVariant(type)}));
}

} // namespace

/// What the registry's own moodset manager has the service object announce.
class MoodsetAnnouncementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_gallery.reset(new AlbumGallery);
        m_manager =
            dynamic_cast<MoodsetManager*>(ContentManager::managerFromType(MoodsetContent::Moodset));
        QVERIFY(m_manager);
    }

    void parsedMoodsetsAreAnnouncedOnce()
    {
        MessageLog log;
        const QSignalSpy spy(m_gallery.data(), &AlbumGallery::contentChanged);
        QVERIFY(addMoodsetFile(R"({"wallpaper": "w.jpg"})"));

        QVERIFY(!m_manager->updateMetaData());

        QTRY_COMPARE(count(spy, MoodsetContent::Moodset), 1);
    }

    void rejectedMoodsetsAreAnnounced()
    {
        MessageLog log;
        const QSignalSpy spy(m_gallery.data(), &AlbumGallery::contentChanged);
        QVERIFY(addMoodsetFile("{}"));

        QVERIFY(!m_manager->updateMetaData());

        QTRY_COMPARE(count(spy, MoodsetContent::Moodset), 1);
    }

    void nothingParsedIsNotAnnounced()
    {
        MessageLog log;
        const QSignalSpy spy(m_gallery.data(), &AlbumGallery::contentChanged);

        QVERIFY(!m_manager->updateMetaData());

        // What is announced at once goes out in ascending order.
        AlbumGallery::notifyContentChanged(MoodsetContent::Download);
        QTRY_COMPARE(count(spy, MoodsetContent::Download), 1);
        QCOMPARE(count(spy, MoodsetContent::Moodset), 0);
    }

private:
    /// Has the next update parse a moodset file of a bundle with the wallpaper "w.jpg".
    bool addMoodsetFile(const QByteArray& content)
    {
        m_folder.makeDirectory(QStringLiteral("images"));
        m_folder.write(QStringLiteral("images/w.jpg"));
        m_folder.write(QStringLiteral("a.moodset"), content);
        QSqlQuery query(*DbManager::instance());
        query.prepare(
            QStringLiteral("INSERT OR IGNORE INTO directory (id, path, scope) VALUES (99, ?, 2);"));
        query.bindValue(0, m_folder.path());
        return query.exec()
            && query.exec(QStringLiteral("DELETE FROM file WHERE directoryId = 99;"))
            && query.exec(
                QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, permissions, "
                               "metadataCurrent) VALUES (99, 'application/x-zavro-moodset', "
                               "'a.moodset', 1, 0);"));
    }

    TestFolder m_folder;
    QScopedPointer<AlbumGallery> m_gallery;
    MoodsetManager* m_manager = nullptr;
};

QTEST_GUILESS_MAIN(MoodsetAnnouncementTest)
#include "tst_moodsetannouncement.moc"
