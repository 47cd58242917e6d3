// SPDX-License-Identifier: BSD-3-Clause
#include "swayconnection.h"

#include <QFile>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// The head of a message: a magic text, and two numbers in the byte order of the machine.
struct Header
{
    std::array<char, 6> magic;
    quint32 length;
    quint32 type;
} __attribute__((packed));

constexpr std::array<char, 6> HeaderMagic{'i', '3', '-', 'i', 'p', 'c'};
constexpr int HeaderSize = sizeof(Header);

/// This is far more than the replies to the messages of the bridge need.
constexpr quint32 LargestMessage = 16 * 1024 * 1024;

} // namespace

SwayConnection::~SwayConnection()
{
    close();
}

bool SwayConnection::open(const QString& path)
{
    close();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    if (name.isEmpty() || name.size() >= int(sizeof(address.sun_path))) {
        return false;
    }
    std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
    m_descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (m_descriptor < 0) {
        return false;
    }
    // The functions for sockets need this cast.
    const auto* const general = reinterpret_cast<const sockaddr*>(&address);
    if (::connect(m_descriptor, general, sizeof(address)) != 0) {
        close();
        return false;
    }
    m_notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    QObject::connect(m_notifier, &QSocketNotifier::activated, this, &SwayConnection::handleInput);
    return true;
}

void SwayConnection::close()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier->deleteLater(); // this may be its own call
        m_notifier = nullptr;
    }
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
    m_input.clear();
}

bool SwayConnection::send(Message type, const QByteArray& payload)
{
    const Header header{HeaderMagic, quint32(payload.size()), quint32(type)};
    QByteArray bytes(HeaderSize, Qt::Uninitialized);
    std::memcpy(bytes.data(), &header, HeaderSize);
    bytes += payload;
    // If the buffer has no space for so little, sway no longer reads.
    const ssize_t sent = m_descriptor < 0
        ? -1
        : ::send(m_descriptor, bytes.constData(), size_t(bytes.size()), MSG_NOSIGNAL);
    if (sent == bytes.size()) {
        return true;
    }
    lose();
    return false;
}

void SwayConnection::handleInput()
{
    std::array<char, 4096> buffer{};
    const ssize_t length = recv(m_descriptor, buffer.data(), buffer.size(), 0);
    if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if (length <= 0) {
        lose();
        return;
    }
    m_input.append(buffer.data(), int(length));
    takeMessages();
}

void SwayConnection::takeMessages()
{
    while (m_input.size() >= HeaderSize) {
        Header header{};
        std::memcpy(&header, m_input.constData(), HeaderSize);
        if (header.magic != HeaderMagic || header.length > LargestMessage) {
            lose();
            return;
        }
        const int size = HeaderSize + int(header.length);
        if (m_input.size() < size) {
            return;
        }
        const QByteArray payload = m_input.mid(HeaderSize, size - HeaderSize);
        m_input.remove(0, size);
        Q_EMIT received(static_cast<Message>(header.type), payload);
    }
}

void SwayConnection::lose()
{
    if (isOpen()) {
        close();
        Q_EMIT lost();
    }
}
