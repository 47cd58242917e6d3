// SPDX-License-Identifier: BSD-3-Clause
#include "daemonprocess.h"
#include "pickerengine.h"

#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// What a drop of the file of that name would be refused with, since there is none.
QString refusal()
{
    return QStringLiteral("There is no such file or folder.");
}

} // namespace

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
        QCOMPARE(picker.notices().text(), refusal());
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
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    PickerStartTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pickerstart.moc"
