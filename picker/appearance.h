// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QVariant>

class QDBusVariant;

/// How programs should look: dark or light, animated or not, and how large their text is. It
/// follows the desktop's portal. Without a portal, it takes the colours of the platform.
class Appearance : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)
    Q_PROPERTY(bool reducedMotion READ hasReducedMotion NOTIFY changed)
    Q_PROPERTY(bool mirrored READ isMirrored NOTIFY changed)
    Q_PROPERTY(int textSize READ textSize NOTIFY changed)
    Q_PROPERTY(bool usesKeyboard READ usesKeyboard NOTIFY usesKeyboardChanged)

public:
    enum class Scheme { System, Dark, Light };

    explicit Appearance(QObject* parent = nullptr);

    /// The user's choice for this program, which overrides that of the desktop.
    void setScheme(Scheme scheme);

    bool isDark() const;
    bool hasReducedMotion() const { return m_reducedMotion; }

    /// Whether the language is written from right to left.
    static bool isMirrored();

    /// The height of body text, in pixels. It is the height of the application's font, but not
    /// smaller than a finger needs.
    int textSize() const;

    /// Whether the last thing that the user did was to press a key, so that it should be seen which
    /// control has the keyboard.
    bool usesKeyboard() const { return m_usesKeyboard; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void changed();
    void usesKeyboardChanged();

private Q_SLOTS:
    void settingChanged(const QString& nameSpace, const QString& key, const QDBusVariant& value);

private:
    void ask(const QString& nameSpace, const QString& key);
    void setUsesKeyboard(bool usesKeyboard);
    void take(const QString& nameSpace, const QString& key, const QVariant& value);

    Scheme m_scheme = Scheme::System;
    Scheme m_desktopScheme = Scheme::System;
    bool m_reducedMotion = false;
    bool m_usesKeyboard = false;
};
