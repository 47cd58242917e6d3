// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "gvariantpointer.h"

#include <dconf.h>

#include <QObject>
#include <QStringList>

#include <map>
#include <memory>

class DconfWatch;

/// The process's only connection to the key/value store, which all the platform's libraries share.
/// A second connection would not see this one's writes until they are stored.
///
/// The store is made at its first use, when the application object must exist, and lives until the
/// process ends. When the application ends, all writes are stored. Main thread only. From the first
/// write on, the library runs threads of its own for the bus; they emit no signals.
///
/// Paths are UTF-8 texts and begin with a "/". The path of a directory also ends with a "/", the
/// path of a key does not.
class DconfStore : public QObject
{
    Q_OBJECT
public:
    static DconfStore& instance();

    /// Whether `key` is well formed. All keys that the functions below take must be.
    static bool isKey(const QString& key);

    /// The user's value of a key, or the system's default if there is none. Own writes are visible
    /// at once. Null if there is no value.
    GVariantPointer read(const QByteArray& key) const;

    /// The user's own value of a key, own writes included; null if the user has none.
    GVariantPointer readUserValue(const QByteArray& key) const;

    /// Sets a key, or clears it if `value` is null. Returns at once: the value is stored soon
    /// after. If that fails, changed() is emitted again and the old value is back. Returns false
    /// and logs one warning if the system has locked the key, if there is no store to write to, or
    /// if this would be the first write and the process has too few file descriptors left for it.
    bool write(const QByteArray& key, GVariant* value);

    /// Sets several keys at once: other processes see all of them change together, or none.
    bool write(const std::map<QByteArray, GVariantPointer>& values);

    /// The names in a directory, in no order. The names of directories end with a "/". Names that
    /// this process has written may be missing until they are stored.
    QList<QByteArray> list(const QByteArray& directory) const;

    /// Reports changes by other processes at a key or below a directory, until unwatch() has been
    /// called as often.
    void watch(const QByteArray& path);
    void unwatch(const QByteArray& path);

    /// Returns when all writes are stored or have failed. If the store's service hangs, this takes
    /// 25 s for each waiting write.
    void sync();

Q_SIGNALS:
    /// The key `path`, or any key below the directory `path`, may have another value now. For a
    /// change by this process, this is emitted inside write(), and again from the event loop. For a
    /// change by another process, and after watch(), it is emitted from the event loop.
    void changed(const QByteArray& path);

private:
    struct Unref
    {
        void operator()(GMainContext* context) const { g_main_context_unref(context); }
        void operator()(DConfClient* client) const { g_object_unref(client); }
    };

    DconfStore();
    void makeClient();
    void runContext();
    bool canWrite(const QByteArray& key) const;
    bool handleWritten(const QByteArray& key, gboolean isWritten, GError* error);
    void dispatchNext();
    void endWithApplication();
    static void handleChanged(
        DConfClient* client, const char* prefix, const char* const* changes, const char* tag,
        void* self);

    std::unique_ptr<GMainContext, Unref> m_context;
    std::unique_ptr<DConfClient, Unref> m_client;
    bool m_hasWritten = false;
    DconfWatch* m_watch = nullptr; // null before the first watch and after the end
    bool m_hasEnded = false; // the application
};

/// Whether a change of `path`, as DconfStore::changed() gives it, touches the key `key`.
bool touchesKey(const QByteArray& path, const QByteArray& key);
