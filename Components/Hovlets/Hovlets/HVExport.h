// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/*!
 * \brief Marks the classes that hosts link against.
 *
 * The shared library hides everything else. Targets that link the static library, which makes every
 * class reachable for tests, get HOVLETS_STATIC defined with it.
 */
#if defined(HOVLETS_STATIC)
#    define HOVLETS_EXPORT
#elif defined(HOVLETS_BUILD)
#    define HOVLETS_EXPORT Q_DECL_EXPORT
#else
#    define HOVLETS_EXPORT Q_DECL_IMPORT
#endif
