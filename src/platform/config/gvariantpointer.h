// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <glib.h>

#include <memory>

struct GVariantUnref
{
    void operator()(GVariant* value) const { g_variant_unref(value); }
};

/// Owns one reference to a GVariant, or is null.
using GVariantPointer = std::unique_ptr<GVariant, GVariantUnref>;

/// Takes over `value`: a new one, which is "floating" in GLib's terms, or a reference that the
/// caller owns.
inline GVariantPointer takeGVariant(GVariant* value)
{
    return GVariantPointer(value != nullptr ? g_variant_take_ref(value) : nullptr);
}
