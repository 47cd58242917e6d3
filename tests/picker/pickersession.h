// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "httpserver.h"
#include "pickerengine.h"
#include "pickerwindow.h"
#include "themesession.h"

#include <QGuiApplication>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QTest>

#include <memory>

/// A user with a daemon and the app. One for each test program, since the module's types serve one
/// engine of a process.
class PickerSession
{
public:
    /// The size of a phone's screen.
    static constexpr QSize Phone{360, 640};
    /// A size at which all moodsets of a test are shown at once. The app has it at first.
    static constexpr QSize Tablet{640, 1000};

    PickerSession();
    /// Warnings that verifyNoWarnings() has not taken fail the test.
    ~PickerSession();
    Q_DISABLE_COPY_MOVE(PickerSession)

    /// Shows the app's window, and waits until it has the keyboard.
    Q_REQUIRED_RESULT bool open();

    PickerWindow& window() { return *m_window; }

    /// Back to the list of the moodsets, with no message of the last call.
    Q_REQUIRED_RESULT bool goHome();
    /// From there to the page of a moodset.
    Q_REQUIRED_RESULT bool openMoodset(const QString& name);

    /// What the window says of the last call; empty if it says nothing.
    QString notice() const;
    /// Taps a control, and gives what the window says of what has come of it.
    QString noticeAfter(const QString& control);
    /// Waits for a message after forgetNotice().
    QString nextNotice() const;
    void forgetNotice() { m_engine.notices().clear(); }

    /// How long the app waits for a picture of the network, in milliseconds.
    void setNetworkTimeout(int timeout);

    /// The path of the file of the active moodset, as other processes read it.
    static QString activeMoodset();

    /// Returns false, and prints what QML and the daemon have warned of, if that is anything. It is
    /// taken.
    Q_REQUIRED_RESULT bool verifyNoWarnings();

    ThemeSession user;
    HttpServer server;

private:
    QStringList m_qmlWarnings;
    PickerEngine m_engine;
    std::unique_ptr<PickerWindow> m_window;
};

/// What the app's test programs have as their main function.
template <typename Test>
int runPickerTest(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}
