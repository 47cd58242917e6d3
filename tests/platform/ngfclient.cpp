// SPDX-License-Identifier: BSD-3-Clause
#include "ngfclient.h"

namespace Ngf {

Client::Client(QObject* parent)
    : QObject(parent)
{
}

void Client::connect()
{
}

bool Client::isConnected() const
{
    return false;
}

quint32 Client::play(const QString& event)
{
    Q_UNUSED(event)
    Q_EMIT eventFailed(1);
    return 1;
}

} // namespace Ngf
