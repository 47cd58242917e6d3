// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"
#include "swayconnection.h"

#include <QFileSystemWatcher>
#include <QTimer>

/// The adapter for sway. It sets the background of all outputs over the control socket.
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
    /// Looks for the process with which sway shows the picture.
    void verify(const QJsonObject& plan, const Done& done) override;
    /// Makes sway read its configuration again, which sets the background that the user had.
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
    QTimer m_painterTimer;
    QByteArray m_painted; ///< the path of the picture that the painter should show
    int m_looksLeft = 0;
    Done m_verifyDone;
};

/// Whether a path can be used in commands of sway, although sway cannot quote some characters.
bool canSayToSway(const QString& path);
