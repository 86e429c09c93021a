// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Hovlets {

/*!
 * Registers the types of the module "com.zandor.hovlets.qml" 1.0 that are not registered yet.
 *
 * They stay registered for the process, unless the host calls qmlClearTypeRegistrations().
 */
void registerQmlTypes();

} // namespace Hovlets
