// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

/// Marks what the shared library shows to its callers; all else stays hidden.
#ifdef LORIX_BUILDING
#define LORIX_EXPORT Q_DECL_EXPORT
#else
#define LORIX_EXPORT Q_DECL_IMPORT
#endif
