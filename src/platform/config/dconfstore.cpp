// SPDX-License-Identifier: BSD-3-Clause
#include "dconfstore.h"

#include "dconfwatch.h"
#include "platformlog.h"

#include <freedescriptors.h>

#include <QCoreApplication>
#include <QSocketNotifier>

namespace {

/// The number of descriptors that the library's connection to the bus needs, and some more for
/// those that this process opens before the connection exists.
constexpr int ConnectionDescriptors = 8;

struct ErrorFree
{
    void operator()(GError* error) const { g_error_free(error); }
};

struct ChangesetUnref
{
    void operator()(DConfChangeset* changes) const { dconf_changeset_unref(changes); }
};

struct NamesFree
{
    void operator()(char** names) const { g_strfreev(names); }
};

// The descriptor that other threads use to wake up a context. A context has only this one.
int wakeUpDescriptor(GMainContext* context)
{
    int priority = 0;
    g_main_context_prepare(context, &priority);
    int timeout = 0;
    GPollFD descriptor{};
    const int count = g_main_context_query(context, G_MAXINT, &timeout, &descriptor, 1);
    Q_ASSERT(count == 1);
    Q_UNUSED(count)
    return int(descriptor.fd);
}

void warnOfWrite(const QByteArray& key, const QString& reason)
{
    qCWarning(platformLog) << "Failed to write to the key/value store:" << QString::fromUtf8(key)
                           << reason;
}

} // namespace

DconfStore& DconfStore::instance()
{
    // The store is never deleted: static objects with items may be destroyed after all other static
    // objects.
    static auto* const store = new DconfStore;
    return *store;
}

// The library reports changes in the context that is the thread's default when its client is made.
// This is a private context that this thread owns until the process ends. A notifier on the
// context's wake-up descriptor runs it, so it works with all of Qt's event dispatchers. The default
// context would work only with the dispatcher that uses GLib.
DconfStore::DconfStore()
    : m_context(g_main_context_new())
{
    g_main_context_acquire(m_context.get());
    makeClient();
    runContext();
    qAddPostRoutine([] { instance().endWithApplication(); });
}

void DconfStore::makeClient()
{
    g_main_context_push_thread_default(m_context.get());
    m_client.reset(dconf_client_new());
    g_main_context_pop_thread_default(m_context.get());
    g_signal_connect(m_client.get(), "changed", G_CALLBACK(&DconfStore::handleChanged), this);
}

void DconfStore::runContext()
{
    auto* const notifier =
        new QSocketNotifier(wakeUpDescriptor(m_context.get()), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &DconfStore::dispatchNext);
}

bool DconfStore::isKey(const QString& key)
{
    return !key.contains(QChar::Null) && dconf_is_key(key.toUtf8().constData(), nullptr);
}

GVariantPointer DconfStore::read(const QByteArray& key) const
{
    return takeGVariant(dconf_client_read(m_client.get(), key.constData()));
}

GVariantPointer DconfStore::readUserValue(const QByteArray& key) const
{
    return takeGVariant(
        dconf_client_read_full(m_client.get(), key.constData(), DCONF_READ_USER_VALUE, nullptr));
}

bool DconfStore::write(const QByteArray& key, GVariant* value)
{
    if (!canWrite(key)) {
        return false;
    }
    GError* error = nullptr;
    const gboolean isWritten =
        dconf_client_write_fast(m_client.get(), key.constData(), value, &error);
    return handleWritten(key, isWritten, error);
}

bool DconfStore::write(const std::map<QByteArray, GVariantPointer>& values)
{
    if (values.empty()) {
        return true;
    }
    const QByteArray& firstKey = values.begin()->first;
    if (!canWrite(firstKey)) {
        return false;
    }
    const std::unique_ptr<DConfChangeset, ChangesetUnref> changes(dconf_changeset_new());
    for (const auto& [key, value] : values) {
        dconf_changeset_set(changes.get(), key.constData(), value.get());
    }
    GError* error = nullptr;
    const gboolean isWritten = dconf_client_change_fast(m_client.get(), changes.get(), &error);
    return handleWritten(firstKey, isWritten, error);
}

// The library connects to the bus at the first write. The threads for this end the process if there
// is no descriptor for one of their event loops.
bool DconfStore::canWrite(const QByteArray& key) const
{
    if (!m_hasWritten && !areDescriptorsFree(ConnectionDescriptors)) {
        warnOfWrite(key, QStringLiteral("Too few file descriptors are left"));
        return false;
    }
    return true;
}

bool DconfStore::handleWritten(const QByteArray& key, gboolean isWritten, GError* error)
{
    if (isWritten != FALSE) {
        m_hasWritten = true;
        return true;
    }
    const std::unique_ptr<GError, ErrorFree> owner(error);
    warnOfWrite(key, QString::fromUtf8(error->message));
    return false;
}

QList<QByteArray> DconfStore::list(const QByteArray& directory) const
{
    int count = 0;
    const std::unique_ptr<char*, NamesFree> names(
        dconf_client_list(m_client.get(), directory.constData(), &count));
    QList<QByteArray> list;
    for (int i = 0; i < count; ++i) {
        list.append(names.get()[i]);
    }
    return list;
}

// Programs that only read have no watch, because it runs a thread for the bus.
void DconfStore::watch(const QByteArray& path)
{
    if (m_hasEnded) {
        return;
    }
    if (!m_watch) {
        m_watch = new DconfWatch(this);
        connect(m_watch, &DconfWatch::changed, this, &DconfStore::changed);
    }
    m_watch->add(path);
}

void DconfStore::unwatch(const QByteArray& path)
{
    if (m_watch) {
        m_watch->remove(path);
    }
}

void DconfStore::sync()
{
    dconf_client_sync(m_client.get());
}

// There is one step per turn of the event loop, so many changes do not block all other events.
void DconfStore::dispatchNext()
{
    if (g_main_context_iteration(m_context.get(), FALSE)) {
        QMetaObject::invokeMethod(this, &DconfStore::dispatchNext, Qt::QueuedConnection);
    }
}

// The writer thread ends with the process. Changes that it has not sent by then are lost.
void DconfStore::endWithApplication()
{
    qDeleteAll(findChildren<QSocketNotifier*>());
    // The bus library ends the connection, because its thread may still be using it.
    if (m_watch) {
        m_watch->disconnect(this);
        m_watch = nullptr;
    }
    m_hasEnded = true;
    sync();
}

void DconfStore::handleChanged(
    DConfClient* client, const char* prefix, const char* const* changes, const char* tag,
    void* self)
{
    Q_UNUSED(client)
    Q_UNUSED(tag)
    // An empty change means the prefix itself.
    for (; *changes != nullptr; ++changes) {
        Q_EMIT static_cast<DconfStore*>(self)->changed(QByteArray(prefix) + *changes);
    }
}

bool touchesKey(const QByteArray& path, const QByteArray& key)
{
    return path.endsWith('/') ? key.startsWith(path) : key == path;
}
