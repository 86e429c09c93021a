// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Hovlets {

/*!
 * Registers the types of the module "com.zandor.hovlets.qml" 1.0 that are not registered yet.
 *
 * They stay registered for the process, unless the host calls qmlClearTypeRegistrations(). The
 * module keeps its name, which the import of every QML file contains.
 */
void registerQmlTypes();

} // namespace Hovlets
