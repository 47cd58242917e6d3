// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "gvariantpointer.h"

#include <dconf.h>

#include <QObject>
#include <QStringList>

#include <memory>

class DconfWatch;

/// The process's one connection to the key/value store, for the platform's providers. A second one
/// would not see this one's writes before they are flushed.
///
/// Made at its first use, which must come after the application object is made, it stays to the end
/// of the process; at the end of the application what has been written is flushed. Main thread
/// only. The library runs threads of its own for the bus from the first write on; no signal comes
/// from there.
///
/// Paths are UTF-8 texts with a "/" in front: of a key without one at its end, of a directory with.
class DconfStore : public QObject
{
    Q_OBJECT
public:
    static DconfStore& instance();

    /// Whether `key` is well formed, as all that the functions below take must be.
    static bool isKey(const QString& key);

    /// The value of a key, by the user or else from the system's defaults, own writes included;
    /// null if there is none.
    GVariantPointer read(const QByteArray& key) const;

    /// Sets a key, or clears it if `value` is null. Returns at once: the value is stored soon
    /// after, and if that fails, changed() comes again and the old value is back. Returns false,
    /// and logs one warning, if the key is locked by the system or no store is there to be written.
    bool write(const QByteArray& key, GVariant* value);

    /// The names in a directory, those of directories with a "/" at the end, in no order. Names
    /// that this process has written may be missing until they are stored.
    QList<QByteArray> list(const QByteArray& directory) const;

    /// Asks to be told of the changes of other processes at a key or below a directory, until
    /// unwatch() has been called as often.
    void watch(const QByteArray& path);
    void unwatch(const QByteArray& path);

    /// Returns when all that has been written is stored, or has failed. If the store's service
    /// stands still, that takes 25 s for each write that waits.
    void sync();

Q_SIGNALS:
    /// The key `path`, or any key below the directory `path`, may have another value now. Comes
    /// from inside write() for an own change, and again, as for a foreign one and after watch(),
    /// from the event loop.
    void changed(const QByteArray& path);

private:
    struct Unref
    {
        void operator()(GMainContext* context) const { g_main_context_unref(context); }
        void operator()(DConfClient* client) const { g_object_unref(client); }
    };

    DconfStore();
    void dispatchNext();
    void endWithApplication();
    static void handleChanged(
        DConfClient* client, const char* prefix, const char* const* changes, const char* tag,
        void* self);

    std::unique_ptr<GMainContext, Unref> m_context;
    std::unique_ptr<DConfClient, Unref> m_client;
    DconfWatch* m_watch; // null behind the end of the application
};

/// Whether a change of `path`, as DconfStore::changed() gives it, touches the key `key`.
bool touchesKey(const QByteArray& path, const QByteArray& key);
