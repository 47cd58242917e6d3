// SPDX-License-Identifier: BSD-3-Clause
#include "dconfstore.h"
#include "gvariantconversion.h"

#include "profilevalues.h"

namespace ProfileValues {

const QByteArray directory = QByteArrayLiteral("/com/zavro/profile/");
const QByteArray fallbackProfile = QByteArrayLiteral("fallback");
const QByteArray defaultProfile = QByteArrayLiteral("general");

namespace {

QByteArray activeKey()
{
    return directory + "active";
}

bool isName(const QByteArray& name)
{
    const bool isUtf8 = QString::fromUtf8(name).toUtf8() == name;
    return isUtf8 && !name.isEmpty() && !name.contains('/');
}

// Texts are what is written here; another process may have set a plain number or boolean, which
// reads as its text.
QByteArray readText(const QByteArray& storeKey)
{
    const GVariantPointer stored = DconfStore::instance().read(storeKey);
    return stored ? fromGVariant(stored.get()).toString().toUtf8() : QByteArray();
}

bool writeText(const QByteArray& storeKey, const QByteArray& text)
{
    const GVariantPointer value =
        text.isEmpty() ? nullptr : toGVariant(QVariant(QString::fromUtf8(text)));
    return DconfStore::instance().write(storeKey, value.get());
}

} // namespace

QByteArray storeKey(const QByteArray& profile, const QByteArray& key)
{
    return isName(profile) && isName(key) ? directory + profile + '/' + key : QByteArray();
}

QByteArray value(const QByteArray& profile, const QByteArray& key)
{
    const QByteArray ownKey = storeKey(profile, key);
    if (ownKey.isEmpty()) {
        return {};
    }
    const QByteArray own = readText(ownKey);
    return own.isEmpty() ? readText(storeKey(fallbackProfile, key)) : own;
}

bool setValue(const QByteArray& profile, const QByteArray& key, const QByteArray& value)
{
    const QByteArray ownKey = storeKey(profile, key);
    return !ownKey.isEmpty() && writeText(ownKey, value);
}

QByteArray activeProfile()
{
    const QByteArray name = readText(activeKey());
    return name.isEmpty() ? defaultProfile : name;
}

bool setActiveProfile(const QByteArray& profile)
{
    return isName(profile) && writeText(activeKey(), profile);
}

} // namespace ProfileValues
