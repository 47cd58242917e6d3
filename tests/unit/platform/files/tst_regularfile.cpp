// SPDX-License-Identifier: BSD-3-Clause
#include "regularfile.h"

#include "openedfiles.h"
#include "testfolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <unistd.h>

namespace {

const QString Name = QStringLiteral("a");

/// This runs between the check of a file and its opening.
std::function<void()>& beforeOpening()
{
    static std::function<void()> action;
    return action;
}

/// This replaces the read function of the system, if it is set.
std::function<ssize_t(int, char*, size_t, off_t)>& readInstead()
{
    static std::function<ssize_t(int, char*, size_t, off_t)> action;
    return action;
}

/// The descriptor under which this process has the file open; -1 if it has not.
int descriptorOf(const QString& path)
{
    const QString descriptors = QStringLiteral("/proc/self/fd/");
    const QStringList numbers = QDir(descriptors).entryList(QDir::Files | QDir::System);
    for (const QString& number : numbers) {
        if (QFile::symLinkTarget(descriptors + number) == path) {
            return number.toInt();
        }
    }
    return -1;
}

} // namespace

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier)
int __real_open(const char* path, int flags);

int __wrap_open(const char* path, int flags)
{
    if (beforeOpening()) {
        beforeOpening()();
    }
    return __real_open(path, flags);
}

ssize_t __real_pread(int descriptor, void* buffer, size_t length, off_t offset);

ssize_t __wrap_pread(int descriptor, void* buffer, size_t length, off_t offset)
{
    return readInstead() ? readInstead()(descriptor, static_cast<char*>(buffer), length, offset)
                         : __real_pread(descriptor, buffer, length, offset);
}

// NOLINTEND(bugprone-reserved-identifier)

} // extern "C"

class RegularFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        beforeOpening() = nullptr;
        readInstead() = nullptr;
    }

    void pieceIsRead_data()
    {
        QTest::addColumn<qint64>("offset");
        QTest::addColumn<int>("length");
        QTest::addColumn<QByteArray>("piece");
        QTest::newRow("all") << qint64(0) << 7 << QByteArray("content");
        QTest::newRow("from the middle") << qint64(3) << 2 << QByteArray("te");
        QTest::newRow("beyond the end") << qint64(3) << 100 << QByteArray("tent");
        QTest::newRow("at the end") << qint64(7) << 1 << QByteArray();
        QTest::newRow("after the end") << qint64(8) << 1 << QByteArray();
        QTest::newRow("nothing") << qint64(0) << 0 << QByteArray();
    }

    void pieceIsRead()
    {
        QFETCH(qint64, offset);
        QFETCH(int, length);
        QFETCH(QByteArray, piece);
        TestFolder folder;
        folder.write(Name, "content");

        const RegularFile file(folder.path(Name));

        QVERIFY(file.isOpen());
        QCOMPARE(file.size(), qint64(7));
        const std::optional<QByteArray> read = file.read(offset, length);
        QVERIFY(read.has_value());
        QCOMPARE(*read, piece);
    }

    void linkIsFollowed()
    {
        TestFolder folder;
        folder.write(Name, "content");
        folder.makeLink(QStringLiteral("link"), Name);

        const RegularFile file(folder.path(QStringLiteral("link")));

        QCOMPARE(file.read(0, 7).value_or(QByteArray()), QByteArray("content"));
    }

    void descriptorIsNotInheritedAndClosedAtTheEnd()
    {
        TestFolder folder;
        folder.write(Name, "content");
        {
            const RegularFile file(folder.path(Name));
            const int descriptor = descriptorOf(folder.path(Name));
            QVERIFY(descriptor >= 0);
            QCOMPARE(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
        }
        QCOMPARE(descriptorOf(folder.path(Name)), -1);
    }

    void otherKindsAreNotOpened_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("missing") << QStringLiteral("missing");
        QTest::newRow("directory") << QStringLiteral("directory");
        QTest::newRow("FIFO") << QStringLiteral("fifo");
        QTest::newRow("link to a FIFO") << QStringLiteral("link to fifo");
        QTest::newRow("link to a device") << QStringLiteral("link to device");
        QTest::newRow("link that leads nowhere") << QStringLiteral("link to nothing");
        QTest::newRow("link to itself") << QStringLiteral("link to itself");
        QTest::newRow("not permitted") << QStringLiteral("secret");
        QTest::newRow("NUL") << QString(Name + QChar(QChar::Null) + QLatin1Char('b'));
        for (const int half : {0xd800, 0xdc00}) {
            const QChar unit(half);
            QTest::addRow("%x at the end", half) << QString(Name + unit);
            QTest::addRow("%x before the end", half) << QString(unit + Name);
        }
    }

    void otherKindsAreNotOpened()
    {
        QFETCH(QString, name);
        TestFolder folder;
        folder.makeDirectory(QStringLiteral("directory"));
        folder.makeFifo(QStringLiteral("fifo"));
        folder.makeLink(QStringLiteral("link to fifo"), QStringLiteral("fifo"));
        folder.makeLink(QStringLiteral("link to device"), QStringLiteral("/dev/zero"));
        folder.makeLink(QStringLiteral("link to nothing"), QStringLiteral("missing"));
        folder.makeLink(QStringLiteral("link to itself"), QStringLiteral("link to itself"));
        folder.write(QStringLiteral("secret"));
        folder.setMode(QStringLiteral("secret"), 0);
        // This is what remains of the last names when they are encoded.
        folder.write(Name);
        folder.write(QLatin1Char('?') + Name);
        OpenedFiles opened(folder.path());

        const RegularFile file(folder.path(name));

        QVERIFY(!file.isOpen());
        QCOMPARE(file.size(), qint64(0));
        QVERIFY(opened.isValid());
        QCOMPARE(opened.paths(), QStringList());
    }

    void whatHasTakenTheNameIsNotWaitedForNorRead_data()
    {
        QTest::addColumn<QString>("other");
        QTest::newRow("FIFO") << QStringLiteral("fifo");
        QTest::newRow("link to a device") << QStringLiteral("device");
        QTest::newRow("directory") << QStringLiteral("directory");
    }

    void whatHasTakenTheNameIsNotWaitedForNorRead()
    {
        QFETCH(QString, other);
        TestFolder folder;
        folder.write(Name, "content");
        folder.makeFifo(QStringLiteral("fifo"));
        folder.makeLink(QStringLiteral("device"), QStringLiteral("/dev/zero"));
        folder.makeDirectory(QStringLiteral("directory"));
        beforeOpening() = [&] {
            folder.remove(Name);
            folder.rename(other, Name);
        };

        // Waiting for a FIFO's writer would last until the test's time limit.
        const RegularFile file(folder.path(Name));

        QVERIFY(!file.isOpen());
        QCOMPARE(file.size(), qint64(0));
    }

    void anotherFileThatHasTakenTheNameIsReadWhole()
    {
        TestFolder folder;
        folder.write(Name, "content");
        folder.write(QStringLiteral("b"), "more content");
        beforeOpening() = [&] { folder.rename(QStringLiteral("b"), Name); };

        const RegularFile file(folder.path(Name));

        QCOMPARE(file.size(), qint64(12));
        QCOMPARE(file.read(0, 100).value_or(QByteArray()), QByteArray("more content"));
    }

    void fileIsReadAsItWasOpened()
    {
        TestFolder folder;
        folder.write(Name, "content");
        const RegularFile file(folder.path(Name));

        folder.write(QStringLiteral("b"), "other");
        folder.rename(QStringLiteral("b"), Name);

        QCOMPARE(file.read(0, 7).value_or(QByteArray()), QByteArray("content"));
    }

    void fileThatChangesItsSizeIsNotReadBeyondEither()
    {
        TestFolder folder;
        folder.write(Name, "content");
        const RegularFile file(folder.path(Name));

        folder.write(Name, "content and more");
        QCOMPARE(file.read(0, 100).value_or(QByteArray()), QByteArray("content"));
        folder.write(Name, "con");
        QCOMPARE(file.read(0, 7).value_or(QByteArray()), QByteArray("con"));
    }

    void interruptedReadsGoOn()
    {
        TestFolder folder;
        folder.write(Name, "content");
        const RegularFile file(folder.path(Name));
        int calls = 0;
        readInstead() = [&](int descriptor, char* buffer, size_t length, off_t offset) -> ssize_t {
            if (++calls % 2 == 1) {
                errno = EINTR;
                return -1;
            }
            return __real_pread(descriptor, buffer, qMin<size_t>(length, 2), offset);
        };

        const std::optional<QByteArray> read = file.read(0, 7);

        QVERIFY(read.has_value());
        QCOMPARE(*read, QByteArray("content"));
        QCOMPARE(calls, 8);
    }

    void errorGivesNothing()
    {
        TestFolder folder;
        folder.write(Name, "content");
        const RegularFile file(folder.path(Name));
        readInstead() = [](int descriptor, char* buffer, size_t length, off_t offset) -> ssize_t {
            if (offset > 0) {
                errno = EIO;
                return -1;
            }
            return __real_pread(descriptor, buffer, qMin<size_t>(length, 2), offset);
        };

        QVERIFY(!file.read(0, 7).has_value());
    }
};

QTEST_GUILESS_MAIN(RegularFileTest)
#include "tst_regularfile.moc"
