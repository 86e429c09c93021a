// SPDX-License-Identifier: Apache-2.0
// Compiles the documentation's code blocks that are not whole files.
#include <Hovlets/HVContext.h>
#include <Hovlets/HVIndex.h>
#include <Hovlets/HVInterface.h>
#include <Hovlets/HVManager.h>

#include <QtGui/QtGui>
#include <QtWidgets/QtWidgets>

namespace {
#include "parts"
} // namespace
