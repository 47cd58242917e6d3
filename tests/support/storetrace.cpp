// SPDX-License-Identifier: BSD-3-Clause
#include "storetrace.h"

#include <utility>

// GLib's headers know nothing of Qt's, but must not come after a macro named "signals".
#include <dconf.h>

namespace {

QStringList& calls()
{
    static QStringList calls;
    return calls;
}

QString printed(GVariant* value)
{
    if (value == nullptr) {
        return QString();
    }
    char* const text = g_variant_print(value, FALSE);
    const QString printed = QString::fromUtf8(text);
    g_free(text);
    return printed;
}

} // namespace

// The linker replaces the functions by these.
extern "C" {
gboolean __real_dconf_client_write_fast(
    DConfClient* client, const gchar* key, GVariant* value, GError** error);
void __real_dconf_client_sync(DConfClient* client);

gboolean __wrap_dconf_client_write_fast(
    DConfClient* client, const gchar* key, GVariant* value, GError** error)
{
    calls().append(QString::fromUtf8(key) + QLatin1Char('=') + printed(value));
    return __real_dconf_client_write_fast(client, key, value, error);
}

void __wrap_dconf_client_sync(DConfClient* client)
{
    calls().append(QStringLiteral("sync"));
    __real_dconf_client_sync(client);
}
}
// NOLINTEND(bugprone-reserved-identifier)

QStringList StoreTrace::take()
{
    return std::exchange(calls(), {});
}
