// SPDX-License-Identifier: BSD-3-Clause
#include "accessory/partnerspacemanager.h"

#include "dconfcommand.h"
#include "messagelog.h"
#include "storetrace.h"

#include <QDir>
#include <QTest>

namespace {

QString entryFolder()
{
    return QStringLiteral("/usr/share/applications/");
}

void addEntry(const QString& fileName)
{
    QFile file(entryFolder() + fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        QTest::qFail("Cannot write the desktop entry", __FILE__, __LINE__);
    }
}

/// The value that the home screen, which is another process, reads.
QString storedPath()
{
    return QString::fromUtf8(runDconf(
        {QStringLiteral("read"),
         QStringLiteral("/desktop/vantile-zavro-home/partnerspace/moodset")}));
}

QString missingEntryWarning(const QString& path)
{
    return QStringLiteral("void PartnerSpaceManager::setPartnerSpace(const QString&) "
                          "Failed to find .desktop file for partner space! \"%1\"")
        .arg(path);
}

} // namespace

class PartnerSpaceManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QDir folder(entryFolder());
        const QStringList entries =
            folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        for (const QString& entry : entries) {
            QVERIFY(folder.remove(entry));
        }
        runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/desktop/")});
    }

    void thereIsOneManager()
    {
        QVERIFY(PartnerSpaceManager::instance() != nullptr);
        QCOMPARE(PartnerSpaceManager::instance(), PartnerSpaceManager::instance());
    }

    void nameWithAnEntryStoresItsFullPath()
    {
        const MessageLog log;
        addEntry(QStringLiteral("music.desktop"));

        PartnerSpaceManager::instance()->setPartnerSpace(QStringLiteral("music"));

        QCOMPARE(storedPath(), QStringLiteral("'/usr/share/applications/music.desktop'"));
    }

    void pathIsOnTheDiskAtOnce()
    {
        const MessageLog log;
        addEntry(QStringLiteral("music.desktop"));
        StoreTrace::take();

        PartnerSpaceManager::instance()->setPartnerSpace(QStringLiteral("music"));

        QCOMPARE(
            StoreTrace::take(),
            QStringList(
                {QStringLiteral("/desktop/vantile-zavro-home/partnerspace/moodset="
                                "'/usr/share/applications/music.desktop'"),
                 QStringLiteral("sync")}));
    }

    void nameOfOtherScriptStoresItsFullPath()
    {
        const MessageLog log;
        addEntry(QStringLiteral("tänze der ü.desktop"));

        PartnerSpaceManager::instance()->setPartnerSpace(QStringLiteral("tänze der ü"));

        QCOMPARE(storedPath(), QStringLiteral("'/usr/share/applications/tänze der ü.desktop'"));
    }

    void nameWithoutAnEntryIsWarnedOfAndStoresAnEmptyText()
    {
        MessageLog log;

        PartnerSpaceManager::instance()->setPartnerSpace(QStringLiteral("gone"));

        QCOMPARE(storedPath(), QStringLiteral("''"));
        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {missingEntryWarning(QStringLiteral("/usr/share/applications/gone.desktop"))}));
    }

    void nameThatHasItsEndingIsNotFound()
    {
        MessageLog log;
        addEntry(QStringLiteral("music.desktop"));

        PartnerSpaceManager::instance()->setPartnerSpace(QStringLiteral("music.desktop"));

        QCOMPARE(storedPath(), QStringLiteral("''"));
        QCOMPARE(
            log.takeMessages(),
            QStringList({missingEntryWarning(
                QStringLiteral("/usr/share/applications/music.desktop.desktop"))}));
    }

    void emptyNameStoresAnEmptyTextAndLooksAtNoFile_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("empty") << QStringLiteral("");
        QTest::newRow("null") << QString();
    }

    void emptyNameStoresAnEmptyTextAndLooksAtNoFile()
    {
        QFETCH(QString, name);
        const MessageLog log;
        addEntry(QStringLiteral(".desktop"));

        PartnerSpaceManager::instance()->setPartnerSpace(name);

        QCOMPARE(storedPath(), QStringLiteral("''"));
    }

    void partnerSpaceOfAnEarlierMoodsetIsCleared_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("by an empty name") << QString();
        QTest::newRow("by an unknown name") << QStringLiteral("gone");
    }

    void partnerSpaceOfAnEarlierMoodsetIsCleared()
    {
        QFETCH(QString, name);
        MessageLog log;
        addEntry(QStringLiteral("music.desktop"));
        PartnerSpaceManager::instance()->setPartnerSpace(QStringLiteral("music"));

        PartnerSpaceManager::instance()->setPartnerSpace(name);

        QCOMPARE(storedPath(), QStringLiteral("''"));
        QCOMPARE(log.takeWarnings().size(), name.isEmpty() ? 0 : 1);
    }
};

QTEST_GUILESS_MAIN(PartnerSpaceManagerTest)

#include "tst_partnerspacemanager.moc"
