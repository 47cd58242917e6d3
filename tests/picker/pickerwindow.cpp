// SPDX-License-Identifier: BSD-3-Clause
#include "pickerwindow.h"

#include "daemonprocess.h"

#include <QAccessible>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <functional>
#include <utility>

namespace {

using Visit = std::function<bool(QQuickItem*)>;

/// Visits what is shown until `visit` returns true, which is then the result: each item before its
/// children, and of these the last first if `topmostFirst`, since it lies on the others.
bool visitShown(QQuickItem* item, bool topmostFirst, const Visit& visit)
{
    if (!item->isVisible()) {
        return false;
    }
    if (visit(item)) {
        return true;
    }
    QList<QQuickItem*> children = item->childItems();
    if (topmostFirst) {
        std::reverse(children.begin(), children.end());
    }
    return std::any_of(children.cbegin(), children.cend(), [&](QQuickItem* child) {
        return visitShown(child, topmostFirst, visit);
    });
}

bool waitUntil(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, DaemonProcess::deadlineMs);
}

QTouchDevice* finger()
{
    static QTouchDevice* const device = QTest::createTouchDevice();
    return device;
}

} // namespace

PickerWindow::PickerWindow(QQuickWindow* window)
    : m_window(window)
{
}

QQuickItem* PickerWindow::find(const QString& name) const
{
    QQuickItem* found = nullptr;
    visitShown(m_window->contentItem(), true, [&](QQuickItem* item) {
        if (item->objectName() == name || nameOf(item) == name) {
            found = item;
        }
        return found != nullptr;
    });
    return found;
}

QStringList PickerWindow::names() const
{
    QVector<QQuickItem*> items;
    visitShown(m_window->contentItem(), false, [&items](QQuickItem* item) {
        if (!nameOf(item).isEmpty()) {
            items.append(item);
        }
        return false;
    });
    std::stable_sort(items.begin(), items.end(), [](QQuickItem* a, QQuickItem* b) {
        const QPointF first = placeOf(a).topLeft();
        const QPointF second = placeOf(b).topLeft();
        return std::make_pair(first.y(), first.x()) < std::make_pair(second.y(), second.x());
    });
    QStringList names;
    for (QQuickItem* const item : qAsConst(items)) {
        names.append(nameOf(item));
    }
    return names;
}

QString PickerWindow::nameOf(QQuickItem* item)
{
    const QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(item);
    return interface != nullptr ? interface->text(QAccessible::Name) : QString();
}

QRectF PickerWindow::placeOf(const QQuickItem* item)
{
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

bool PickerWindow::waitFor(const QString& name) const
{
    const bool isShown = waitUntil([&] { return shows(name); });
    if (!isShown) {
        printNames(name + QStringLiteral(" is not shown"));
    }
    return isShown;
}

bool PickerWindow::waitUntilGone(const QString& name) const
{
    const bool isGone = waitUntil([&] { return !shows(name); });
    if (!isGone) {
        printNames(name + QStringLiteral(" is still shown"));
    }
    return isGone;
}

QString PickerWindow::waitForStart(const QString& start) const
{
    QString found;
    const bool isShown = waitUntil([&] {
        const QStringList shown = names();
        const auto name = std::find_if(shown.begin(), shown.end(), [&](const QString& other) {
            return other.startsWith(start);
        });
        found = name != shown.end() ? *name : QString();
        return name != shown.end();
    });
    if (!isShown) {
        printNames(QStringLiteral("nothing is shown that begins with ") + start);
    }
    return found;
}

bool PickerWindow::waitForPage(const QString& name) const
{
    const bool isThere = waitUntil([&] {
        const auto* const page = pages()->property("currentItem").value<QQuickItem*>();
        return page != nullptr && page->objectName() == name && !pages()->property("busy").toBool();
    });
    if (!isThere) {
        printNames(name + QStringLiteral(" is not the page on top"));
    }
    return isThere;
}

bool PickerWindow::waitForRest(QQuickItem* item) const
{
    const QPointer<QQuickItem> watched(item);
    QSignalSpy frames(m_window, &QQuickWindow::frameSwapped);
    QRectF last;
    const bool isOver = waitUntil([&] {
        if (watched.isNull()) {
            return true;
        }
        if (frames.isEmpty() || pages()->property("busy").toBool()) {
            m_window->update();
            return false;
        }
        frames.clear();
        return placeOf(watched) == std::exchange(last, placeOf(watched));
    });
    return isOver && !watched.isNull();
}

bool PickerWindow::tap(const QString& name)
{
    QQuickItem* const item = usable(name);
    if (item == nullptr) {
        return false;
    }
    const QPoint point = placeOf(item).center().toPoint();
    QTest::touchEvent(m_window, finger()).press(0, point);
    QTest::touchEvent(m_window, finger()).release(0, point);
    return true;
}

bool PickerWindow::slide(const QString& name, qreal value)
{
    QQuickItem* const slider = usable(name);
    if (slider == nullptr) {
        return false;
    }
    const auto* const handle = slider->property("handle").value<QQuickItem*>();
    const qreal from = slider->property("from").toReal();
    const qreal to = slider->property("to").toReal();
    const qreal share = (value - from) / (to - from);
    const bool isMirrored = slider->property("mirrored").toBool();
    const qreal way = slider->property("availableWidth").toReal() - handle->width();
    const qreal start = slider->property("leftPadding").toReal() + handle->width() / 2;
    const qreal target = start + way * (isMirrored ? 1 - share : share);
    drag(placeOf(handle).center(), slider->mapToScene(QPointF(target, slider->height() / 2)));
    return true;
}

void PickerWindow::drag(const QPointF& from, const QPointF& to)
{
    constexpr int steps = 10;
    QTest::touchEvent(m_window, finger()).press(0, from.toPoint());
    for (int step = 1; step <= steps; ++step) {
        const QPointF point = from + (to - from) * step / steps;
        QTest::touchEvent(m_window, finger()).move(0, point.toPoint());
    }
    QTest::touchEvent(m_window, finger()).release(0, to.toPoint());
}

void PickerWindow::type(const QString& text)
{
    for (const QChar character : text) {
        QTest::keyClick(m_window, character.toLatin1());
    }
}

void PickerWindow::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_window, key, modifiers);
}

void PickerWindow::hold(Qt::Key key, int repeats)
{
    const auto send = [this, key](QEvent::Type type, bool isRepeat) {
        QKeyEvent event(type, key, Qt::NoModifier, {}, isRepeat);
        QCoreApplication::sendEvent(m_window, &event);
    };
    send(QEvent::KeyPress, false);
    for (int i = 0; i < repeats; ++i) {
        send(QEvent::KeyRelease, true);
        send(QEvent::KeyPress, true);
    }
    send(QEvent::KeyRelease, false);
}

bool PickerWindow::drop(const QMimeData& data)
{
    const QPoint middle(m_window->width() / 2, m_window->height() / 2);
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window, &enter);
    QDragMoveEvent move(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window, &move);
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window, &drop);
    return enter.isAccepted() && move.isAccepted() && drop.isAccepted();
}

QQuickItem* PickerWindow::pages() const
{
    return m_window->findChild<QQuickItem*>(QStringLiteral("pages"));
}

/// The control of a name when it is shown, enabled, in view and at rest; null at the deadline.
QQuickItem* PickerWindow::usable(const QString& name)
{
    // While it comes to rest, a view may give the place of its item to another one.
    QPointer<QQuickItem> item;
    const bool isUsable = waitUntil([&] {
        item = find(name);
        return !item.isNull() && item->isEnabled() && waitForRest(item) && find(name) == item
            && bringIntoView(item);
    });
    if (!isUsable) {
        printNames(name + QStringLiteral(" cannot be used"));
        return nullptr;
    }
    return item;
}

/// Moves the views that the item is in, so that its middle can be touched.
bool PickerWindow::bringIntoView(QQuickItem* item)
{
    for (QQuickItem* view = item->parentItem(); view != nullptr; view = view->parentItem()) {
        if (!view->inherits("QQuickFlickable")) {
            continue;
        }
        const qreal middle = item->mapToItem(view, QPointF(0, item->height() / 2)).y();
        if (middle < 0 || middle > view->height()) {
            const qreal lowest = view->property("originY").toReal();
            const qreal highest =
                lowest + view->property("contentHeight").toReal() - view->height();
            const qreal wanted = view->property("contentY").toReal() + middle - view->height() / 2;
            view->setProperty("contentY", std::max(lowest, std::min(highest, wanted)));
            if (!waitForRest(item)) {
                return false;
            }
        }
    }
    return QRectF(0, 0, m_window->width(), m_window->height()).contains(placeOf(item).center());
}

void PickerWindow::printNames(const QString& what) const
{
    qWarning().noquote() << what + QStringLiteral("; the window shows:\n   ")
                         << names().join(QStringLiteral("\n    "));
}
