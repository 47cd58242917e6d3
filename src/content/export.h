// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

/// Marks what the content library shows to those who link it.
#ifdef MOODSET_CONTENT_LIBRARY
#define MOODSET_CONTENT_EXPORT Q_DECL_EXPORT
#else
#define MOODSET_CONTENT_EXPORT Q_DECL_IMPORT
#endif
