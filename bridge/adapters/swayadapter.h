// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "swayconnection.h"

#include <QFileSystemWatcher>
#include <QTimer>

/// sway: the background of all outputs, over the control socket.
class SwayAdapter : public Adapter
{
    Q_OBJECT
public:
    explicit SwayAdapter(QObject* parent = nullptr);

    QString name() const override;
    bool isKept() const override { return false; }
    void detect() override;
    QJsonObject plan(const Appearance& appearance) const override;
    QString shortfall(const Appearance& appearance) const override;
    void apply(const Appearance& appearance, const QJsonObject& plan, const Done& done) override;
    /// Looks for the program that sway shows pictures with.
    void verify(const QJsonObject& plan, const Done& done) override;
    /// Has sway read its configuration again, which says what the background was.
    void restore(const AdapterRecord& record, const Done& done) override;
    void abandon() override;

private:
    void lookForSocket();
    void tryToConnect();
    void handleMessage(SwayConnection::Message type, const QByteArray& payload);
    void command(const QByteArray& text, const Done& done);
    void lookForPainter();

    SwayConnection m_connection;
    QFileSystemWatcher m_runtimeFolder;
    QTimer m_retry;
    int m_triesLeft = 0;
    Done m_commandDone; ///< empty if no command waits for its reply
    int m_lateReplies = 0; ///< to commands that nobody waits for any more
    QTimer m_painterTimer;
    QByteArray m_painted; ///< the path of the picture that the painter is to have
    int m_looksLeft = 0;
    Done m_verifyDone;
};

/// Whether sway understands a path in its commands, whatever it does with quotes.
bool canSayToSway(const QString& path);
