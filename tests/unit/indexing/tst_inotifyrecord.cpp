// SPDX-License-Identifier: BSD-3-Clause
#include "indexing/inotifyrecord.h"

#include "testfolder.h"

#include <QTest>

#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <unistd.h>

class InotifyRecordTest : public QObject
{
    Q_OBJECT

    QScopedPointer<TestFolder> m_folder;
    int m_descriptor = -1;
    int m_watch = -1;

private Q_SLOTS:
    void init();
    void cleanup();
    void emptyQueueIsNotWaitedFor();
    void invalidDescriptorGivesNothing();
    void tellsTheWatchTheMaskAndTheName();
    void recordOfTheDirectoryItselfHasANullName();
    void keepsTheKernelsOrder();
    void keepsOddNames_data();
    void keepsOddNames();
    void nameThatIsNotUtf8KeepsItsBytes();
    void readsAllThatWaitsHoweverMuch();
    void droppedEventsHaveNoWatch();
};

void InotifyRecordTest::init()
{
    m_folder.reset(new TestFolder);
    m_descriptor = inotify_init();
    QVERIFY(m_descriptor >= 0);
    m_watch = inotify_add_watch(
        m_descriptor, m_folder->path().toUtf8().constData(),
        IN_CREATE | IN_DELETE | IN_DELETE_SELF | IN_MODIFY);
    QVERIFY(m_watch >= 0);
}

void InotifyRecordTest::cleanup()
{
    close(m_descriptor);
}

void InotifyRecordTest::emptyQueueIsNotWaitedFor()
{
    QCOMPARE(readInotifyRecords(m_descriptor).size(), 0);
}

void InotifyRecordTest::invalidDescriptorGivesNothing()
{
    QCOMPARE(readInotifyRecords(-1).size(), 0);
}

void InotifyRecordTest::tellsTheWatchTheMaskAndTheName()
{
    m_folder->makeDirectory(QStringLiteral("sub"));

    const QVector<InotifyRecord> records = readInotifyRecords(m_descriptor);

    QCOMPARE(records.size(), 1);
    QCOMPARE(records.constFirst().watch, m_watch);
    QCOMPARE(records.constFirst().mask, uint32_t(IN_CREATE | IN_ISDIR));
    QCOMPARE(records.constFirst().name, QByteArray("sub"));
}

void InotifyRecordTest::recordOfTheDirectoryItselfHasANullName()
{
    QVERIFY(QDir().rmdir(m_folder->path()));

    const QVector<InotifyRecord> records = readInotifyRecords(m_descriptor);

    QCOMPARE(records.size(), 2);
    QCOMPARE(records.at(0).mask, uint32_t(IN_DELETE_SELF));
    QVERIFY(records.at(0).name.isNull());
    QCOMPARE(records.at(1).mask, uint32_t(IN_IGNORED));
    QVERIFY(records.at(1).name.isNull());
}

void InotifyRecordTest::keepsTheKernelsOrder()
{
    m_folder->write(QStringLiteral("a"));
    m_folder->remove(QStringLiteral("a"));
    m_folder->write(QStringLiteral("b"));

    QStringList told;
    const QVector<InotifyRecord> records = readInotifyRecords(m_descriptor);
    for (const InotifyRecord& record : records) {
        told.append(QStringLiteral("%1 %2").arg(record.mask).arg(QString::fromUtf8(record.name)));
    }

    const QStringList expected{
        QStringLiteral("%1 a").arg(IN_CREATE), QStringLiteral("%1 a").arg(IN_MODIFY),
        QStringLiteral("%1 a").arg(IN_DELETE), QStringLiteral("%1 b").arg(IN_CREATE),
        QStringLiteral("%1 b").arg(IN_MODIFY)};
    QCOMPARE(told, expected);
}

void InotifyRecordTest::keepsOddNames_data()
{
    QTest::addColumn<QString>("name");
    // The kernel fills names up to a multiple of its record's size with NUL bytes.
    for (int length = 1; length <= 255; length += length < 34 ? 1 : 17) {
        QTest::addRow("%d bytes", length) << QString(length, QLatin1Char('n'));
    }
    QTest::newRow("line break") << QStringLiteral("two\nlines");
    QTest::newRow("quotes") << QStringLiteral("'\"");
    QTest::newRow("beyond ASCII") << QStringLiteral("\u00e4\U0001f4f7");
    QTest::newRow("byte order mark at the start") << QStringLiteral("\ufeffa");
}

void InotifyRecordTest::keepsOddNames()
{
    QFETCH(QString, name);
    m_folder->write(name, QByteArray());

    const QVector<InotifyRecord> records = readInotifyRecords(m_descriptor);

    QCOMPARE(records.size(), 1);
    QCOMPARE(records.constFirst().name, name.toUtf8());
}

void InotifyRecordTest::nameThatIsNotUtf8KeepsItsBytes()
{
    m_folder->writeRawName("latin\xe4.jpg", QByteArray());

    const QVector<InotifyRecord> records = readInotifyRecords(m_descriptor);

    QCOMPARE(records.size(), 1);
    QCOMPARE(records.constFirst().name, QByteArray("latin\xe4.jpg"));
}

void InotifyRecordTest::readsAllThatWaitsHoweverMuch()
{
    // This is far more than the buffer on the stack can hold.
    constexpr int count = 500;
    for (int i = 0; i < count; ++i) {
        m_folder->write(QStringLiteral("file%1").arg(i), QByteArray());
    }

    const QVector<InotifyRecord> records = readInotifyRecords(m_descriptor);

    QCOMPARE(records.size(), count);
    QCOMPARE(records.constFirst().name, QByteArray("file0"));
    QCOMPARE(records.constLast().name, "file" + QByteArray::number(count - 1));
    int waiting = -1;
    QCOMPARE(ioctl(m_descriptor, FIONREAD, &waiting), 0);
    QCOMPARE(waiting, 0);
}

void InotifyRecordTest::droppedEventsHaveNoWatch()
{
    QFile limit(QStringLiteral("/proc/sys/fs/inotify/max_queued_events"));
    QVERIFY(limit.open(QIODevice::ReadOnly));
    const int queueLength = limit.readAll().trimmed().toInt();
    QVERIFY(queueLength > 0);
    // Events of two names alternate, because the kernel joins equal events in a row.
    for (int i = 0; i <= queueLength / 2; ++i) {
        m_folder->write(QStringLiteral("a"), QByteArray());
        m_folder->remove(QStringLiteral("a"));
    }

    const QVector<InotifyRecord> records = readInotifyRecords(m_descriptor);

    QCOMPARE(records.size(), queueLength + 1);
    QCOMPARE(records.constLast().watch, -1);
    QCOMPARE(records.constLast().mask, uint32_t(IN_Q_OVERFLOW));
    QVERIFY(records.constLast().name.isNull());
}

QTEST_GUILESS_MAIN(InotifyRecordTest)

#include "tst_inotifyrecord.moc"
