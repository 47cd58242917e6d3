// SPDX-License-Identifier: BSD-3-Clause
#include "filereplacement.h"
#include "testfolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <cerrno>

namespace {

/// A device that takes a few bytes at a time, and no more than `space` in all.
class SmallDevice : public QIODevice
{
public:
    explicit SmallDevice(int space)
        : m_space(space)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

    QByteArray content() const { return m_content; }

protected:
    qint64 readData(char* /*data*/, qint64 /*length*/) override { return -1; }
    qint64 writeData(const char* data, qint64 length) override
    {
        constexpr qint64 atOnce = 3;
        const qint64 taken = qMin(length, qMin(atOnce, qint64(m_space - m_content.size())));
        if (taken == 0) {
            errno = ENOSPC;
            return -1;
        }
        m_content.append(data, int(taken));
        return taken;
    }

private:
    const int m_space;
    QByteArray m_content;
};

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class FileReplacementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesAllBytesInSeveralParts()
    {
        SmallDevice device(100);

        QCOMPARE(writeAll(&device, "12345678", 8), QString());

        QCOMPARE(device.content(), QByteArray("12345678"));
    }

    void tellsThatTheSpaceEnds()
    {
        SmallDevice device(7);
        QCOMPARE(writeAll(&device, "12345678", 8), qt_error_string(ENOSPC));
    }

    void aNewFileTakesThePlaceOfTheOldOne()
    {
        TestFolder folder;
        folder.write(QStringLiteral("a"), "a longer text");
        folder.setMode(QStringLiteral("a"), 0640);

        QCOMPARE(replaceFile(folder.path(QStringLiteral("a")), "new"), QString());

        QCOMPARE(contentOf(folder.path(QStringLiteral("a"))), QByteArray("new"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList({QStringLiteral("a")}));
        QCOMPARE(int(QFileInfo(folder.path(QStringLiteral("a"))).permissions() & 0x777), 0x640);
    }

    void aLinkStays()
    {
        TestFolder folder;
        folder.write(QStringLiteral("file"), "old");
        folder.makeLink(QStringLiteral("link"), QStringLiteral("file"));

        QCOMPARE(replaceFile(folder.path(QStringLiteral("link")), "new"), QString());

        QVERIFY(QFileInfo(folder.path(QStringLiteral("link"))).isSymLink());
        QCOMPARE(contentOf(folder.path(QStringLiteral("file"))), QByteArray("new"));
    }

    void theOldFileStaysOnAFullDisk()
    {
        const QDir disk(qEnvironmentVariable("PRIVATE_MACHINE_SMALL_DISK"));
        const QString path = disk.filePath(QStringLiteral("a"));
        QCOMPARE(replaceFile(path, "old"), QString());
        QFile rest(disk.filePath(QStringLiteral("rest")));
        QVERIFY(rest.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (rest.write(QByteArray(4096, 'x')) > 0) { }

        QCOMPARE(replaceFile(path, "new"), qt_error_string(ENOSPC));

        QCOMPARE(contentOf(path), QByteArray("old"));
        QVERIFY(rest.remove());
    }
};

QTEST_GUILESS_MAIN(FileReplacementTest)

#include "tst_filereplacement.moc"
