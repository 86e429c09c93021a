// SPDX-License-Identifier: Apache-2.0
#pragma once

/*!
 * Measures the first popup of a process, and prints the processor time of the process in seconds:
 * until the host's window is painted, for the first popup, and for a later one.
 *
 * The process does nothing else: libraries, shaders and fonts are loaded only once. With
 * \a warmsUp, the library prepares the first popup before. Both popups show entries that were not
 * shown before. Returns the exit code.
 */
int measureFirstShow(bool warmsUp);
