// SPDX-License-Identifier: BSD-3-Clause
#include "pickersession.h"

#include <QFile>
#include <QProcess>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QVector>

/// What the app does from its start until its content is there. There is no daemon.
class PickerStartTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void windowIsDrawnBeforeItsContentIsRead()
    {
        PickerEngine picker;
        QVERIFY(picker.show());
        QVector<bool> hadContent;
        QObject::connect(picker.window(), &QQuickWindow::frameSwapped, &picker.engine(), [&] {
            hadContent.append(picker.content() != nullptr);
        });
        picker.open(QStringLiteral("/nothing/here"));
        QVERIFY(QTest::qWaitFor(
            [&hadContent] { return hadContent.contains(true); }, DaemonProcess::deadlineMs));
        QVERIFY(!hadContent.first());
        QCOMPARE(picker.notices().text(), QStringLiteral("There is no such file or folder."));
    }

    void programEndsIfThereIsNoContentToRead()
    {
        // A copy of the program does not find the module, which is in a folder beside the original.
        const QTemporaryDir folder;
        const QString program = folder.filePath(QStringLiteral("moodset-picker"));
        QVERIFY(QFile::copy(QStringLiteral(PICKER), program));
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, QStringList());
        QVERIFY(process.waitForFinished(DaemonProcess::deadlineMs));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), EXIT_FAILURE);
        const QString output = QString::fromUtf8(process.readAll());
        QVERIFY2(
            output.contains(QLatin1String("module \"Moodset\" is not installed")),
            qPrintable(output));
    }
};

int main(int argc, char** argv)
{
    return runPickerTest<PickerStartTest>(argc, argv);
}

#include "tst_pickerstart.moc"
