// SPDX-License-Identifier: BSD-3-Clause
#include "dconfstore.h"
#include "gvariantconversion.h"

#include "profiledefaults.h"
#include "profilevalues.h"

namespace ProfileValues {

const QByteArray Directory = QByteArrayLiteral("/com/zavro/profile/");
const QByteArray FallbackProfile = QByteArrayLiteral("fallback");
const QByteArray DefaultProfile = QByteArrayLiteral("general");

namespace {

QByteArray activeKey()
{
    return Directory + "active";
}

bool isName(const QByteArray& name)
{
    const bool isUtf8 = QString::fromUtf8(name).toUtf8() == name;
    return isUtf8 && !name.isEmpty() && !name.contains('/');
}

// This code writes texts only. Another process may have set a number or a boolean, which is
// converted to text.
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
    return isName(profile) && isName(key) ? Directory + profile + '/' + key : QByteArray();
}

QByteArray value(const QByteArray& profile, const QByteArray& key)
{
    const QByteArray ownKey = storeKey(profile, key);
    if (ownKey.isEmpty()) {
        return {};
    }
    for (const QByteArray& storedKey : {ownKey, storeKey(FallbackProfile, key)}) {
        QByteArray stored = readText(storedKey);
        if (!stored.isEmpty()) {
            return stored;
        }
    }
    return ProfileDefaults::value(key);
}

bool setValue(const QByteArray& profile, const QByteArray& key, const QByteArray& value)
{
    const QByteArray ownKey = storeKey(profile, key);
    return !ownKey.isEmpty() && writeText(ownKey, value);
}

QByteArray activeProfile()
{
    const QByteArray name = readText(activeKey());
    return name.isEmpty() ? DefaultProfile : name;
}

bool setActiveProfile(const QByteArray& profile)
{
    return isName(profile) && writeText(activeKey(), profile);
}

} // namespace ProfileValues
