// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QPointF>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>

class QMimeData;

/// The app's window as its user has it: what it shows, a finger on it, and a keyboard.
///
/// A name of a control is its objectName, or what a screen reader says of it. The functions that
/// wait return false at the deadline, and print what the window shows then.
class PickerWindow
{
public:
    explicit PickerWindow(QQuickWindow* window);

    QQuickWindow* window() const { return m_window; }
    void resize(const QSize& size) { m_window->resize(size); }

    /// What is shown under a name, the topmost first; null if nothing is.
    QQuickItem* find(const QString& name) const;
    bool shows(const QString& name) const { return find(name) != nullptr; }
    /// All that a screen reader would say, from the top, and in a line from the left.
    QStringList names() const;
    /// What a screen reader says of an item. Null if it says nothing.
    static QString nameOf(QQuickItem* item);
    /// The place of an item in the window.
    static QRectF placeOf(const QQuickItem* item);

    Q_REQUIRED_RESULT bool waitFor(const QString& name) const;
    Q_REQUIRED_RESULT bool waitUntilGone(const QString& name) const;
    /// Waits for a name that begins like this, and gives it; empty at the deadline.
    QString waitForStart(const QString& start) const;
    /// Waits until the page of that name is on top and at rest.
    Q_REQUIRED_RESULT bool waitForPage(const QString& name) const;
    /// Waits until no page moves, and until nothing changes the place of an item from one frame to
    /// the next. False also if the item goes away meanwhile.
    Q_REQUIRED_RESULT bool waitForRest(QQuickItem* item) const;

    /// Waits for a control that can be used, brings it into view, and taps it.
    Q_REQUIRED_RESULT bool tap(const QString& name);
    /// Drags the handle of a slider until it stands at a value.
    Q_REQUIRED_RESULT bool slide(const QString& name, qreal value);
    /// Moves a finger over the window.
    void drag(const QPointF& from, const QPointF& to);

    void type(const QString& text);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Presses a key, keeps it until it has repeated itself `repeats` times, and releases it.
    void hold(Qt::Key key, int repeats);
    /// The item that has the keyboard; null if none has.
    QQuickItem* focused() const { return m_window->activeFocusItem(); }

    /// Drops something in the middle of the window. False if the window does not take it.
    Q_REQUIRED_RESULT bool drop(const QMimeData& data);

private:
    QQuickItem* pages() const;
    QQuickItem* usable(const QString& name);
    bool bringIntoView(QQuickItem* item);
    void printNames(const QString& what) const;

    QQuickWindow* m_window;
};
