// SPDX-License-Identifier: BSD-3-Clause
#include "messagelog.h"

#include <QProcess>
#include <QTest>
#include <QThread>

class MessageLogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordsTextsInOrder()
    {
        MessageLog log;

        qDebug() << "number" << 1;
        qWarning() << QStringLiteral("line\nbreak");
        qCritical("grave");

        const QStringList expected{
            QStringLiteral("number 1"), QStringLiteral("\"line\\nbreak\""),
            QStringLiteral("grave")};
        QCOMPARE(log.takeMessages(), expected);
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void takingWarningsLeavesDebugMessages()
    {
        MessageLog log;

        qDebug("step");
        qWarning("trouble");
        qInfo("note");

        QCOMPARE(log.takeWarnings(), QStringList(QStringLiteral("trouble")));
        const QStringList others{QStringLiteral("step"), QStringLiteral("note")};
        QCOMPARE(log.takeMessages(), others);
    }

    void recordsMessagesOfOtherThreads()
    {
        MessageLog log;

        const QScopedPointer<QThread> thread(QThread::create([] { qWarning("from afar"); }));
        thread->start();
        QVERIFY(thread->wait());

        QCOMPARE(log.takeWarnings(), QStringList(QStringLiteral("from afar")));
    }

    void givesTheLogBack()
    {
        {
            const MessageLog log;
        }
        QTest::ignoreMessage(QtWarningMsg, "to Qt Test");
        qWarning("to Qt Test");
    }

    void strayFailsItsTest_data()
    {
        QTest::addColumn<QString>("function");
        QTest::addColumn<bool>("fails");
        QTest::newRow("warning") << QStringLiteral("leavesWarning") << true;
        QTest::newRow("critical") << QStringLiteral("leavesCritical") << true;
        QTest::newRow("after one taken") << QStringLiteral("leavesWarningAfterOneTaken") << true;
        QTest::newRow("debug") << QStringLiteral("passesWithDebugLeft") << false;
    }

    void strayFailsItsTest()
    {
        QFETCH(QString, function);
        QFETCH(bool, fails);

        QProcess process;
        process.start(QStringLiteral(FAILING_TESTS), {function});
        QVERIFY(process.waitForFinished());
        const QByteArray output = process.readAll();

        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QVERIFY2(process.exitCode() == (fails ? 1 : 0), output.constData());
        QVERIFY2(output.contains("Stray messages:\n    left over\n") == fails, output.constData());
    }
};

QTEST_GUILESS_MAIN(MessageLogTest)

#include "tst_messagelog.moc"
