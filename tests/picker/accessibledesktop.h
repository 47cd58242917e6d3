// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>

/// Something that an app tells screen readers of, as the interface org.a11y.atspi.Accessible
/// gives it.
struct AccessibleNode
{
    QString service;
    QDBusObjectPath path;
};
Q_DECLARE_METATYPE(AccessibleNode)
using AccessibleNodes = QList<AccessibleNode>;
Q_DECLARE_METATYPE(AccessibleNodes)
QDBusArgument& operator<<(QDBusArgument& argument, const AccessibleNode& node);
const QDBusArgument& operator>>(const QDBusArgument& argument, AccessibleNode& node);

/// The bus of screen readers, and the app on it. There must be an X server.
class AccessibleDesktop
{
public:
    struct Control
    {
        AccessibleNode node;
        QString role; ///< such as "push button"
        QString name;
        bool isShown;
    };

    AccessibleDesktop();
    ~AccessibleDesktop();
    Q_DISABLE_COPY_MOVE(AccessibleDesktop)

    /// Starts the bus. False, with a line that says why, if it cannot.
    Q_REQUIRED_RESULT bool start();
    /// Starts the app, and waits until screen readers know of it.
    Q_REQUIRED_RESULT bool startApp(const QString& path);

    /// What the window has that can be pressed, moved, written into or chosen, or that the keyboard
    /// comes to, also while it is hidden.
    QList<Control> controls() const;
    /// Waits until there is a control of that name that can be pressed, and presses it.
    Q_REQUIRED_RESULT bool press(const QString& name) const;
    /// Waits until there is a control of that name.
    Q_REQUIRED_RESULT bool waitFor(const QString& name) const;

private:
    bool waitFor(const QString& name, const std::function<bool(const Control&)>& use) const;
    QVariant property(const AccessibleNode& node, const QString& name) const;
    QVariant call(
        const AccessibleNode& node, const QString& interface, const QString& method,
        const QVariantList& arguments = {}) const;
    AccessibleNodes children(const AccessibleNode& node) const;
    void addControls(const AccessibleNode& node, QList<Control>* controls) const;

    QDBusConnection m_bus;
    QProcess m_launcher;
    QProcess m_registry;
    QProcess m_app;
    AccessibleNode m_root;
};
