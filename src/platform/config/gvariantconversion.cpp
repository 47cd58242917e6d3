// SPDX-License-Identifier: BSD-3-Clause
#include "gvariantconversion.h"

#include <vector>

namespace {

using Elements = std::vector<GVariantPointer>;

GVariantPointer textToGVariant(const QString& text)
{
    if (text.contains(QChar::Null)) {
        return nullptr;
    }
    return takeGVariant(g_variant_new_string(text.toUtf8().constData()));
}

GVariantPointer bytesToGVariant(const QByteArray& bytes)
{
    return takeGVariant(g_variant_new_fixed_array(
        G_VARIANT_TYPE_BYTE, bytes.constData(), static_cast<gsize>(bytes.size()), 1));
}

GVariantPointer boxed(const QVariant& value)
{
    const GVariantPointer content = toGVariant(value);
    return content ? takeGVariant(g_variant_new_variant(content.get())) : nullptr;
}

GVariantPointer arrayOf(const GVariantType* elementType, const Elements& elements)
{
    std::vector<GVariant*> children;
    for (const GVariantPointer& element : elements) {
        if (!element) {
            return nullptr;
        }
        children.push_back(element.get());
    }
    return takeGVariant(g_variant_new_array(elementType, children.data(), children.size()));
}

GVariantPointer textsToGVariant(const QStringList& texts)
{
    Elements elements;
    for (const QString& text : texts) {
        elements.push_back(textToGVariant(text));
    }
    return arrayOf(G_VARIANT_TYPE_STRING, elements);
}

GVariantPointer listToGVariant(const QVariantList& list)
{
    Elements elements;
    for (const QVariant& value : list) {
        elements.push_back(boxed(value));
    }
    return arrayOf(G_VARIANT_TYPE_VARIANT, elements);
}

GVariantPointer entryToGVariant(const QString& key, const QVariant& value)
{
    const GVariantPointer text = textToGVariant(key);
    const GVariantPointer content = boxed(value);
    if (!text || !content) {
        return nullptr;
    }
    return takeGVariant(g_variant_new_dict_entry(text.get(), content.get()));
}

GVariantPointer mapToGVariant(const QVariantMap& map)
{
    Elements elements;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        elements.push_back(entryToGVariant(entry.key(), entry.value()));
    }
    return arrayOf(G_VARIANT_TYPE("{sv}"), elements);
}

QString textFromGVariant(GVariant* value)
{
    return QString::fromUtf8(g_variant_get_string(value, nullptr));
}

GVariantPointer child(GVariant* value, gsize index)
{
    return takeGVariant(g_variant_get_child_value(value, index));
}

QVariant bytesFromGVariant(GVariant* value)
{
    gsize size = 0;
    const void* const data = g_variant_get_fixed_array(value, &size, 1);
    return QByteArray(static_cast<const char*>(data), int(size));
}

QVariant textsFromGVariant(GVariant* value)
{
    QStringList texts;
    for (gsize i = 0; i < g_variant_n_children(value); ++i) {
        texts.append(textFromGVariant(child(value, i).get()));
    }
    return texts;
}

QVariant listFromGVariant(GVariant* value)
{
    QVariantList list;
    for (gsize i = 0; i < g_variant_n_children(value); ++i) {
        const QVariant element = fromGVariant(child(value, i).get());
        if (!element.isValid()) {
            return {};
        }
        list.append(element);
    }
    return list;
}

QVariant mapFromGVariant(GVariant* value)
{
    QVariantMap map;
    for (gsize i = 0; i < g_variant_n_children(value); ++i) {
        const GVariantPointer entry = child(value, i);
        const QVariant content = fromGVariant(child(entry.get(), 1).get());
        if (!content.isValid()) {
            return {};
        }
        map.insert(textFromGVariant(child(entry.get(), 0).get()), content);
    }
    return map;
}

QVariant arrayFromGVariant(GVariant* value)
{
    const GVariantType* const element = g_variant_type_element(g_variant_get_type(value));
    if (g_variant_type_equal(element, G_VARIANT_TYPE_BYTE)) {
        return bytesFromGVariant(value);
    }
    if (g_variant_type_equal(element, G_VARIANT_TYPE_STRING)) {
        return textsFromGVariant(value);
    }
    if (!g_variant_type_is_dict_entry(element)) {
        return listFromGVariant(value);
    }
    if (g_variant_type_equal(g_variant_type_key(element), G_VARIANT_TYPE_STRING)) {
        return mapFromGVariant(value);
    }
    return {};
}

} // namespace

GVariantPointer toGVariant(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        return takeGVariant(g_variant_new_boolean(value.toBool()));
    case QMetaType::SChar:
    case QMetaType::Short:
    case QMetaType::Int:
        return takeGVariant(g_variant_new_int32(value.toInt()));
    case QMetaType::UChar:
    case QMetaType::UShort:
    case QMetaType::UInt:
        return takeGVariant(g_variant_new_uint32(value.toUInt()));
    case QMetaType::Long:
    case QMetaType::LongLong:
        return takeGVariant(g_variant_new_int64(value.toLongLong()));
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return takeGVariant(g_variant_new_uint64(value.toULongLong()));
    case QMetaType::Float:
    case QMetaType::Double:
        return takeGVariant(g_variant_new_double(value.toDouble()));
    case QMetaType::QString:
        return textToGVariant(value.toString());
    case QMetaType::QStringList:
        return textsToGVariant(value.toStringList());
    case QMetaType::QByteArray:
        return bytesToGVariant(value.toByteArray());
    case QMetaType::QVariantMap:
        return mapToGVariant(value.toMap());
    case QMetaType::QVariantList:
        return listToGVariant(value.toList());
    default:
        return nullptr;
    }
}

QVariant fromGVariant(GVariant* value)
{
    switch (g_variant_classify(value)) {
    case G_VARIANT_CLASS_BOOLEAN:
        return g_variant_get_boolean(value) != FALSE;
    case G_VARIANT_CLASS_BYTE:
        return uint(g_variant_get_byte(value));
    case G_VARIANT_CLASS_INT16:
        return int(g_variant_get_int16(value));
    case G_VARIANT_CLASS_UINT16:
        return uint(g_variant_get_uint16(value));
    case G_VARIANT_CLASS_INT32:
        return int(g_variant_get_int32(value));
    case G_VARIANT_CLASS_UINT32:
        return uint(g_variant_get_uint32(value));
    case G_VARIANT_CLASS_INT64:
        return static_cast<qlonglong>(g_variant_get_int64(value));
    case G_VARIANT_CLASS_UINT64:
        return static_cast<qulonglong>(g_variant_get_uint64(value));
    case G_VARIANT_CLASS_DOUBLE:
        return g_variant_get_double(value);
    case G_VARIANT_CLASS_STRING:
        return textFromGVariant(value);
    case G_VARIANT_CLASS_VARIANT:
        return fromGVariant(takeGVariant(g_variant_get_variant(value)).get());
    case G_VARIANT_CLASS_ARRAY:
        return arrayFromGVariant(value);
    case G_VARIANT_CLASS_HANDLE:
    case G_VARIANT_CLASS_OBJECT_PATH:
    case G_VARIANT_CLASS_SIGNATURE:
    case G_VARIANT_CLASS_MAYBE:
    case G_VARIANT_CLASS_TUPLE:
    case G_VARIANT_CLASS_DICT_ENTRY:
        break;
    }
    return {};
}
