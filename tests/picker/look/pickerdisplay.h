// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "httpserver.h"
#include "playedservice.h"
#include "themesession.h"

#include <QImage>
#include <QProcess>
#include <QSize>
#include <QString>
#include <QVariant>

#include <atomic>
#include <memory>

class PickerEngine;
class QQuickItem;
class QQuickWindow;

/// A user of the app: the desktop, the real daemon, and the app in a window.
///
/// The desktop wants no motion. The daemon does not run at first, and there is no library. Dates
/// and paths that can be seen are always the same, and so are thumbnails, which are never taken
/// from the user's cache.
class PickerDisplay
{
public:
    PickerDisplay();
    ~PickerDisplay();
    Q_DISABLE_COPY_MOVE(PickerDisplay)

    /// Shows the window.
    Q_REQUIRED_RESULT bool open();

    /// Puts something in the place of the library that is no database.
    Q_REQUIRED_RESULT bool damageLibrary();
    /// Starts the daemon, whose library is empty.
    Q_REQUIRED_RESULT bool startDaemon();
    /// Installs the sample bundles, copies the sample pictures, makes a moodset of one of them, and
    /// applies that of a bundle.
    Q_REQUIRED_RESULT bool addSamples();

    /// Has the desktop want dark or light programs, and waits until the app is so.
    Q_REQUIRED_RESULT bool setDark(bool isDark);
    /// Has the desktop want motion or not, and waits until the app knows.
    Q_REQUIRED_RESULT bool setMotion(bool isWanted);
    Q_REQUIRED_RESULT bool resize(QSize size);
    /// Sets the size of the desktop's text, in pixels, and the direction of the language.
    void setText(int size, Qt::LayoutDirection direction);

    /// Calls a function of the window.
    void call(const char* function, const QVariant& argument);
    /// Opens the page of the moodset with a file or picture.
    Q_REQUIRED_RESULT bool openMoodset(const QString& path);
    /// Waits for a button, and presses it.
    Q_REQUIRED_RESULT bool press(const QString& name) const;
    /// Moves a page, so that its item of that name is at the top, as far as the page goes. False if
    /// there is no such item yet. What lies above may still grow then.
    Q_REQUIRED_RESULT bool scrollTo(const QString& name) const;

    /// The visible item of that object name; null if there is none.
    QQuickItem* find(const QString& name) const;
    /// Waits until it is there.
    Q_REQUIRED_RESULT bool waitFor(const QString& name) const;
    /// A folder whose place is always the same, with the sample pictures.
    static QString picturesFolder();

    /// Whether nothing moves, and all images have been loaded.
    bool isSettled() const;
    /// What the window shows.
    QImage shown() const;

    QQuickWindow* window() const;
    PickerEngine& engine() { return *m_engine; }
    ThemeSession user;
    HttpServer server;

private:
    bool copyPictures() const;
    bool removeFences();
    bool startBridge();
    bool bridgeIsDone() const;

    void sendSetting(const QString& nameSpace, const QString& key, const QVariant& value);

    std::atomic<bool> m_isDark{false};
    PlayedService m_desktop;
    PlayedService m_shell;
    QProcess m_bridge;
    std::unique_ptr<PickerEngine> m_engine;
};
