// SPDX-License-Identifier: BSD-3-Clause
#include "dconfstore.h"

#include "dconfwatch.h"

#include <QCoreApplication>
#include <QDebug>
#include <QSocketNotifier>

namespace {

struct ErrorFree
{
    void operator()(GError* error) const { g_error_free(error); }
};

struct NamesFree
{
    void operator()(char** names) const { g_strfreev(names); }
};

// The descriptor by which other threads wake up a context, the only one that it has.
int wakeUpDescriptor(GMainContext* context)
{
    int priority = 0;
    g_main_context_prepare(context, &priority);
    int timeout = 0;
    GPollFD descriptor{};
    const int count = g_main_context_query(context, G_MAXINT, &timeout, &descriptor, 1);
    Q_ASSERT(count == 1);
    Q_UNUSED(count)
    return static_cast<int>(descriptor.fd);
}

} // namespace

DconfStore& DconfStore::instance()
{
    // Never deleted: static objects that hold items may go after any other static object.
    static auto* const store = new DconfStore;
    return *store;
}

// The library tells of changes in the context that is the thread's default while its client is
// made. A private one, owned by this thread for good and driven by a notifier on its wake-up
// descriptor, works under all of Qt's event dispatchers; the common one would work under GLib's
// only.
DconfStore::DconfStore()
    : m_context(g_main_context_new())
    , m_watch(new DconfWatch(this))
{
    g_main_context_acquire(m_context.get());
    g_main_context_push_thread_default(m_context.get());
    m_client.reset(dconf_client_new());
    g_main_context_pop_thread_default(m_context.get());
    g_signal_connect(m_client.get(), "changed", G_CALLBACK(&DconfStore::handleChanged), this);

    auto* const notifier =
        new QSocketNotifier(wakeUpDescriptor(m_context.get()), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &DconfStore::dispatchNext);
    connect(m_watch, &DconfWatch::changed, this, &DconfStore::changed);
    qAddPostRoutine([] { instance().endWithApplication(); });
}

bool DconfStore::isKey(const QString& key)
{
    return !key.contains(QChar::Null) && dconf_is_key(key.toUtf8().constData(), nullptr);
}

GVariantPointer DconfStore::read(const QByteArray& key) const
{
    return takeGVariant(dconf_client_read(m_client.get(), key.constData()));
}

bool DconfStore::write(const QByteArray& key, GVariant* value)
{
    GError* error = nullptr;
    if (dconf_client_write_fast(m_client.get(), key.constData(), value, &error)) {
        return true;
    }
    const std::unique_ptr<GError, ErrorFree> owner(error);
    qWarning() << "Failed to write to the key/value store:" << QString::fromUtf8(key)
               << QString::fromUtf8(error->message);
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

void DconfStore::watch(const QByteArray& path)
{
    if (m_watch) {
        m_watch->add(path);
    }
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

// One step per turn of the event loop, so that a flood of changes leaves room for all else.
void DconfStore::dispatchNext()
{
    if (g_main_context_iteration(m_context.get(), FALSE)) {
        QMetaObject::invokeMethod(this, &DconfStore::dispatchNext, Qt::QueuedConnection);
    }
}

// The writer thread ends with the process, and what it has not sent by then is lost.
void DconfStore::endWithApplication()
{
    qDeleteAll(findChildren<QSocketNotifier*>());
    // Left to the bus library's own end: its thread may be busy with the connection still.
    m_watch->disconnect(this);
    m_watch = nullptr;
    sync();
}

void DconfStore::handleChanged(
    DConfClient* client, const char* prefix, const char* const* changes, const char* tag,
    void* self)
{
    Q_UNUSED(client)
    Q_UNUSED(tag)
    // The empty change stands for the prefix itself.
    for (; *changes != nullptr; ++changes) {
        Q_EMIT static_cast<DconfStore*>(self)->changed(QByteArray(prefix) + *changes);
    }
}

bool touchesKey(const QByteArray& path, const QByteArray& key)
{
    return path.endsWith('/') ? key.startsWith(path) : key == path;
}
