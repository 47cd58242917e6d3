// SPDX-License-Identifier: BSD-3-Clause
#include "contentwriter.h"
#include "moodsetservice.h"
#include "photowatch.h"

#include <QTemporaryDir>
#include <QTest>

#include <libraryreader.h>

#include <memory>

class PhotoWatchTest : public QObject
{
    Q_OBJECT

private:
    /// Takes the changes so far, as "added /a/1.jpg".
    QStringList takeChanges()
    {
        Q_EMIT m_service.contentChanged(0);
        QStringList taken;
        taken.swap(m_changes);
        return taken;
    }

    void addReadPhoto(const QString& path)
    {
        const qint64 id = m_writer->addPhoto(path);
        m_writer->exec(QStringLiteral("UPDATE file SET metadataCurrent = 1 WHERE id = ?"), {id});
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ContentWriter> m_writer;
    std::unique_ptr<LibraryReader> m_library;
    MoodsetService m_service;
    std::unique_ptr<PhotoWatch> m_watch;
    QStringList m_changes;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        const QString path = m_folder->filePath(QStringLiteral("moodsetd.sqlite"));
        m_writer = std::make_unique<ContentWriter>(path);
        addReadPhoto(QStringLiteral("/a/1.jpg"));
        m_library = std::make_unique<LibraryReader>(path);
        QVERIFY(m_library->open());
        m_watch = std::make_unique<PhotoWatch>(m_service, *m_library);
        connect(
            m_watch.get(), &PhotoWatch::changed, this, [this](const QVector<PhotoChange>& changes) {
                static const QStringList kinds{
                    QStringLiteral("added "), QStringLiteral("changed "),
                    QStringLiteral("removed ")};
                for (const PhotoChange& change : changes) {
                    m_changes.append(kinds.at(int(change.kind)) + change.photo.path);
                }
            });
    }

    void cleanup()
    {
        m_watch.reset();
        m_library.reset();
        m_writer.reset();
    }

    void tellsOfWhatCameAndWent()
    {
        addReadPhoto(QStringLiteral("/a/2.jpg"));
        QCOMPARE(takeChanges(), QStringList(QStringLiteral("added /a/2.jpg")));
        m_writer->exec(QStringLiteral("DELETE FROM file WHERE fileName = '1.jpg'"));
        QCOMPARE(takeChanges(), QStringList(QStringLiteral("removed /a/1.jpg")));
        QCOMPARE(takeChanges(), QStringList());
    }

    void aPictureThatIsReadAgainHasChanged()
    {
        m_writer->exec(QStringLiteral("UPDATE file SET metadataCurrent = 0"));
        QCOMPARE(takeChanges(), QStringList());
        m_writer->exec(QStringLiteral("UPDATE image SET width = 77"));
        QCOMPARE(takeChanges(), QStringList());
        m_writer->exec(QStringLiteral("UPDATE file SET metadataCurrent = 1"));
        QCOMPARE(takeChanges(), QStringList(QStringLiteral("changed /a/1.jpg")));
    }

    void aPictureThatWasReplacedBetweenTwoLooksHasChanged()
    {
        m_writer->exec(QStringLiteral("DELETE FROM file WHERE fileName = '1.jpg'"));
        addReadPhoto(QStringLiteral("/a/1.jpg"));
        m_writer->exec(QStringLiteral("UPDATE image SET width = 77"));

        QCOMPARE(takeChanges(), QStringList(QStringLiteral("changed /a/1.jpg")));
    }

    void aPictureThatWasReplacedAcrossALookIsRemovedAndAdded()
    {
        m_writer->exec(QStringLiteral("DELETE FROM file WHERE fileName = '1.jpg'"));
        QStringList changes = takeChanges();
        addReadPhoto(QStringLiteral("/a/1.jpg"));
        changes += takeChanges();

        QCOMPARE(
            changes,
            QStringList({QStringLiteral("removed /a/1.jpg"), QStringLiteral("added /a/1.jpg")}));
    }
};

QTEST_GUILESS_MAIN(PhotoWatchTest)

#include "tst_photowatch.moc"
