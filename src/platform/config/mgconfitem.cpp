// SPDX-License-Identifier: BSD-3-Clause
#include "dconfstore.h"
#include "gvariantconversion.h"

#include "mgconfitem.h"
#include "platformlog.h"

#include <QMetaMethod>

struct MGConfItemPrivate
{
    QByteArray key; // empty if it is malformed
    GVariantPointer announced; // the value that listeners know, while the item is followed
    bool followed = false;
};

namespace {

bool isEqual(const GVariantPointer& left, const GVariantPointer& right)
{
    if (!left || !right) {
        return left == right;
    }
    return g_variant_equal(left.get(), right.get()) != FALSE;
}

} // namespace

MGConfItem::MGConfItem(const QString& key, QObject* parent)
    : QObject(parent)
    , m_d(new MGConfItemPrivate)
{
    if (DconfStore::isKey(key)) {
        m_d->key = key.toUtf8();
    } else {
        qCWarning(platformLog) << "Not a key of the key/value store:" << key;
    }
}

MGConfItem::~MGConfItem()
{
    if (m_d->followed) {
        DconfStore::instance().unwatch(m_d->key);
    }
}

QVariant MGConfItem::value() const
{
    if (m_d->key.isEmpty()) {
        return {};
    }
    const GVariantPointer stored = DconfStore::instance().read(m_d->key);
    if (!stored) {
        return {};
    }
    QVariant value = fromGVariant(stored.get());
    if (!value.isValid()) {
        qCWarning(platformLog) << "Cannot read the type of a stored value:"
                               << QString::fromUtf8(m_d->key)
                               << g_variant_get_type_string(stored.get());
    }
    return value;
}

QVariant MGConfItem::value(const QVariant& defaultValue) const
{
    QVariant stored = value();
    return stored.isValid() ? stored : defaultValue;
}

void MGConfItem::set(const QVariant& value)
{
    if (m_d->key.isEmpty()) {
        return;
    }
    const GVariantPointer stored = toGVariant(value);
    if (value.isValid() && !stored) {
        qCWarning(platformLog) << "Cannot store a value of this type:"
                               << QString::fromUtf8(m_d->key) << value;
        return;
    }
    // The failure has been logged, and nobody else needs to know.
    static_cast<void>(DconfStore::instance().write(m_d->key, stored.get()));
}

void MGConfItem::sync()
{
    DconfStore::instance().sync();
}

// Most items only set or read one value. They need no watch, which would cause bus traffic.
void MGConfItem::connectNotify(const QMetaMethod& signal)
{
    if (signal == QMetaMethod::fromSignal(&MGConfItem::valueChanged)) {
        follow();
    }
}

void MGConfItem::follow()
{
    if (m_d->followed || m_d->key.isEmpty()) {
        return;
    }
    m_d->followed = true;
    DconfStore& store = DconfStore::instance();
    store.watch(m_d->key);
    m_d->announced = store.read(m_d->key);
    connect(&store, &DconfStore::changed, this, &MGConfItem::announceChange);
}

// The store reports more than real changes: a whole directory, a value that equals the default, or
// anything that may have changed before the watch existed. So the values are compared.
void MGConfItem::announceChange(const QByteArray& path)
{
    if (!touchesKey(path, m_d->key)) {
        return;
    }
    GVariantPointer current = DconfStore::instance().read(m_d->key);
    if (isEqual(current, m_d->announced)) {
        return;
    }
    m_d->announced = std::move(current);
    // A change by this process is reported inside set(), where listeners must not run.
    QMetaObject::invokeMethod(this, &MGConfItem::valueChanged, Qt::QueuedConnection);
}
