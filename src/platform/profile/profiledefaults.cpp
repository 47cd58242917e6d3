// SPDX-License-Identifier: BSD-3-Clause
#include "gvariantpointer.h"

#include "platformlog.h"
#include "profiledefaults.h"

#include <QFile>
#include <QHash>
#include <QStandardPaths>

#include <memory>

namespace ProfileDefaults {

namespace {

struct GLibFree
{
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(char* text) const { g_free(text); }
    void operator()(char** texts) const { g_strfreev(texts); }
};

template <typename Type>
using Owned = std::unique_ptr<Type, GLibFree>;

// Files for the store's system databases have these values in the same group.
constexpr auto Group = "com/zavro/profile/fallback";

// The text of a value in the store's notation. Empty if the value is not a text.
QByteArray textOf(const char* notation)
{
    const GVariantPointer value =
        takeGVariant(g_variant_parse(G_VARIANT_TYPE_STRING, notation, nullptr, nullptr, nullptr));
    return value ? QByteArray(g_variant_get_string(value.get(), nullptr)) : QByteArray();
}

QHash<QByteArray, QByteArray> readFile(const QString& path)
{
    const Owned<GKeyFile> file(g_key_file_new());
    GError* failure = nullptr;
    if (!g_key_file_load_from_file(
            file.get(), QFile::encodeName(path).constData(), G_KEY_FILE_NONE, &failure)) {
        const Owned<GError> error(failure);
        qCWarning(platformLog) << "Failed to read the defaults of the profiles:" << path
                               << QString::fromUtf8(error->message);
        return {};
    }
    QHash<QByteArray, QByteArray> values;
    const Owned<char*> keys(g_key_file_get_keys(file.get(), Group, nullptr, nullptr));
    for (char** key = keys.get(); key != nullptr && *key != nullptr; ++key) {
        const Owned<char> notation(g_key_file_get_value(file.get(), Group, *key, nullptr));
        values.insert(*key, textOf(notation.get()));
    }
    return values;
}

QHash<QByteArray, QByteArray> installedValues()
{
    // This finds only regular files.
    const QString path = QStandardPaths::locate(
        QStandardPaths::GenericDataLocation, QStringLiteral("moodsetd/profile-defaults"));
    return path.isEmpty() ? QHash<QByteArray, QByteArray>() : readFile(path);
}

} // namespace

QByteArray value(const QByteArray& key)
{
    static const QHash<QByteArray, QByteArray> values = installedValues();
    return values.value(key);
}

} // namespace ProfileDefaults
