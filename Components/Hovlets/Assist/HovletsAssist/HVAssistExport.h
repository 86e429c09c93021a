// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// Marks the classes that hosts link against. Tests link statically.
#if defined(HOVLETS_STATIC)
#    define HOVLETS_ASSIST_EXPORT
#elif defined(HOVLETS_ASSIST_BUILD)
#    define HOVLETS_ASSIST_EXPORT Q_DECL_EXPORT
#else
#    define HOVLETS_ASSIST_EXPORT Q_DECL_IMPORT
#endif
