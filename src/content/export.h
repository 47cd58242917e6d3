// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

/// Exports a class or function of the content library.
#ifdef MOODSET_CONTENT_LIBRARY
#define MOODSET_CONTENT_EXPORT Q_DECL_EXPORT
#else
#define MOODSET_CONTENT_EXPORT Q_DECL_IMPORT
#endif
