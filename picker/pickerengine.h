// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "appearance.h"
#include "incoming.h"
#include "notices.h"

#include <QQmlApplicationEngine>
#include <QStringList>

class QQuickWindow;

/// The interface of the program: its QML types, its window, and the C++ objects that the window
/// uses.
class PickerEngine
{
public:
    PickerEngine();
    Q_DISABLE_COPY_MOVE(PickerEngine)

    /// Shows the window. Its content is read as soon as its first frame has been drawn. False if
    /// the window cannot be made; Qt has then logged the reason. The program ends if there is no
    /// content.
    bool show();

    QQuickWindow* window() const;
    /// What the window shows, with the functions of Content.qml. Null until it has been read.
    QObject* content() const;
    QQmlEngine& engine() { return m_engine; }
    Appearance& appearance() { return m_appearance; }
    Notices& notices() { return m_notices; }

    /// Brings the window to the front.
    void raise();
    /// Opens a URL or a path, as if it had been dropped. Waits for the content.
    void open(const QString& text);

private:
    /// Makes the engine interpret its scripts. They are short, and most of them run a few times at
    /// the start, so that translating them for the processor takes longer than running them does.
    struct Interpretation
    {
        Interpretation();
    };

    void readContent();

    // The engine is destroyed first, because its objects use the others.
    Appearance m_appearance;
    Incoming m_incoming;
    Notices m_notices;
    Interpretation m_interpretation; ///< before the engine, which looks at it once
    QQmlApplicationEngine m_engine;
    QMetaObject::Connection m_firstFrame;
    QStringList m_toOpen; ///< until there is a content to open it
};
