// SPDX-License-Identifier: BSD-3-Clause
#include "messagelog.h"
#include "themefixture.h"

#include <QFile>
#include <QTest>

#include <memory>
#include <unistd.h>
#include <vector>

namespace {

/// The memory that this process has from the system, in bytes.
qint64 residentSize()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        QTest::qFail("Cannot read the size of the process", __FILE__, __LINE__);
    }
    return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

} // namespace

/// Tests that the theme gives memory back to the system between two requests.
class MemoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void freeMemoryIsGivenBackAfterEachRequest()
    {
        constexpr size_t pieces = 512;
        constexpr size_t pieceSize = size_t(64) * 1024;
        MessageLog log;
        ThemeFixture fixture;
        const QString picture = fixture.addPicture();
        std::vector<QByteArray> memory;
        for (size_t i = 0; i < pieces; ++i) {
            memory.emplace_back(int(pieceSize), 'x');
        }
        // Memory above it is still used, so the C library does not give it back by itself.
        const QByteArray last(int(pieceSize), 'x');
        memory.clear();
        const qint64 before = residentSize();

        fixture.create(picture);

        QTRY_VERIFY(residentSize() < before - qint64(pieces * pieceSize / 2));
        QCOMPARE(fixture.takeCreated().size(), 1);
    }
};

QTEST_GUILESS_MAIN(MemoryTest)

#include "tst_memory.moc"
