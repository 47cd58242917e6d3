// SPDX-License-Identifier: BSD-3-Clause
#include "messagelog.h"
#include "moodsetlibrary.h"

#include <QTest>

#include <sys/resource.h>

namespace {

constexpr qint64 MiB = qint64(1024) * 1024;

/// The largest memory that this process has had so far, in bytes.
qint64 peakSize()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return qint64(usage.ru_maxrss) * 1024;
}

/// A moodset file that is nearly as large as one may be, with millions of values under `key`.
QByteArray largeMoodset(const QByteArray& key)
{
    const QByteArray part("1,");
    return R"({"wallpaper": "w.jpg", ")" + key + "\": ["
        + part.repeated(int(15 * MiB) / part.size()) + "1]}";
}

} // namespace

/// Tests how much memory is needed to read moodset files.
class MoodsetMemoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aColourOfManyPartsTakesNoMoreThanItsText()
    {
        MessageLog log;
        MoodsetLibrary library;
        library.addMoodsetFile(largeMoodset("unknown"), QStringLiteral("1.moodset"));
        QVERIFY(!library.manager().updateMetaData());
        const qint64 peak = peakSize();
        const qint64 id =
            library.addMoodsetFile(largeMoodset("primaryColor"), QStringLiteral("2.moodset"));

        QVERIFY(!library.manager().updateMetaData());

        // As variants, the values would take more than 200 MiB.
        const qint64 more = (peakSize() - peak) / MiB;
        QVERIFY2(more < 100, qPrintable(QString::number(more)));
        QCOMPARE(library.column(id, QStringLiteral("primaryColor")).toString(), QString());
        QCOMPARE(library.pendingFiles(), 0);
    }
};

QTEST_GUILESS_MAIN(MoodsetMemoryTest)
#include "tst_moodsetmemory.moc"
