// SPDX-License-Identifier: BSD-3-Clause
#include "librarydatabase.h"

#include <QProcess>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

/// A database with one table of two rows; its writer keeps it open.
class Writer
{
public:
    explicit Writer(const QString& path)
    {
        m_database.setDatabaseName(path);
        m_database.open();
        QSqlQuery query(m_database);
        query.exec(QStringLiteral("PRAGMA journal_mode = WAL"));
        query.exec(QStringLiteral("CREATE TABLE file (id INTEGER, fileName TEXT)"));
        query.exec(QStringLiteral("INSERT INTO file VALUES (1, 'a'), (2, 'b')"));
    }
    ~Writer()
    {
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("writer"));
    }
    Q_DISABLE_COPY_MOVE(Writer)

private:
    QSqlDatabase m_database =
        QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("writer"));
};

class LibraryDatabaseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lookedForInThePrivilegedDataFolder()
    {
        QCOMPARE(
            LibraryDatabase::standardPath(),
            QString::fromLocal8Bit(qgetenv("XDG_DATA_HOME"))
                + QStringLiteral("/system/privileged/Moodsetd/moodsetd.sqlite"));
    }

    void givesRowsWhileTheWriterIsThere()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("test.sqlite"));
        const Writer writer(path);

        const LibraryDatabase database(path);

        const LibraryDatabase::Rows expected{
            {QVariant(2), QVariant(QStringLiteral("b"))},
            {QVariant(1), QVariant(QStringLiteral("a"))}};
        QVERIFY(database.isOpen());
        QCOMPARE(
            database.rows(QStringLiteral("SELECT id, fileName FROM file ORDER BY id DESC")),
            expected);
        QCOMPARE(
            database.value(QStringLiteral("SELECT fileName FROM file WHERE id = ?"), {QVariant(2)}),
            QVariant(QStringLiteral("b")));
    }

    void failureFailsItsTest_data()
    {
        QTest::addColumn<QString>("function");
        QTest::addColumn<QByteArray>("report");
        QTest::newRow("missing file")
            << QStringLiteral("opensMissingDatabase") << QByteArray("unable to open database file");
        QTest::newRow("wrong statement")
            << QStringLiteral("selectsUnknownColumn") << QByteArray("no such column: colour");
        QTest::newRow("two rows for a value")
            << QStringLiteral("takesValueOfTwoRows") << QByteArray("VALUES (1), (2): 2 rows");
    }

    void failureFailsItsTest()
    {
        QFETCH(QString, function);
        QFETCH(QByteArray, report);

        QProcess process;
        process.start(QStringLiteral(FAILING_TESTS), {function});
        QVERIFY(process.waitForFinished());
        const QByteArray output = process.readAll();

        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QVERIFY2(process.exitCode() == 1, output.constData());
        QVERIFY2(output.contains(report), output.constData());
    }
};

QTEST_GUILESS_MAIN(LibraryDatabaseTest)

#include "tst_librarydatabase.moc"
