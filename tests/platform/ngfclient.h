// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QString>

namespace Ngf {

/// A client whose events all fail.
class Client : public QObject
{
    Q_OBJECT

public:
    explicit Client(QObject* parent = nullptr);

    using QObject::connect;
    void connect();
    bool isConnected() const;
    quint32 play(const QString& event);

Q_SIGNALS:
    void eventFailed(const quint32& id);
};

} // namespace Ngf
