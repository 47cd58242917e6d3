// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

/// The results of the calls to the daemon, for the user: the calls that have not finished, and one
/// line about the last one that has. The line disappears after a while.
class Notices : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(QString text READ text NOTIFY noticeChanged)
    Q_PROPERTY(bool isError READ isError NOTIFY noticeChanged)
    Q_PROPERTY(QVariant undo READ undo NOTIFY noticeChanged)

public:
    explicit Notices(QObject* parent = nullptr);

    /// The subjects of the calls that have not finished: URLs of moodsets and pictures.
    QStringList busy() const { return m_calls.values(); }

    QString text() const { return m_text; }
    bool isError() const { return m_isError; }
    /// The argument of Actions.undo(); null if there is nothing to undo.
    QVariant undo() const { return m_undo; }

    /// Notes that a call has begun.
    Q_INVOKABLE void begin(int call, const QString& subject);
    /// Handles the outcome of a call.
    Q_INVOKABLE void finish(int call, const QVariantMap& outcome);
    /// Shows a line that is not about a call.
    Q_INVOKABLE void show(const QString& text, bool isError);
    Q_INVOKABLE void clear();

    /// How long a line is shown, in milliseconds.
    static constexpr int ShowTime = 10000;

Q_SIGNALS:
    void busyChanged();
    void noticeChanged();

private:
    void set(const QString& text, bool isError, const QVariant& undo);

    QHash<int, QString> m_calls;
    QString m_text;
    bool m_isError = false;
    QVariant m_undo;
    QTimer m_end;
};
