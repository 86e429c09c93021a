// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/*!
 * \brief Marks the classes that a host links against.
 *
 * Everything else is hidden in the shared library. The static library defines HOVLETS_STATIC for
 * whoever links it and keeps every class reachable.
 */
#if defined(HOVLETS_STATIC)
#    define HOVLETS_EXPORT
#elif defined(HOVLETS_BUILD)
#    define HOVLETS_EXPORT Q_DECL_EXPORT
#else
#    define HOVLETS_EXPORT Q_DECL_IMPORT
#endif
