// SPDX-License-Identifier: Apache-2.0
// The code blocks of the documentation that are no files of their own.
#include <Hovlets/HVContext.h>
#include <Hovlets/HVIndex.h>
#include <Hovlets/HVInterface.h>
#include <Hovlets/HVManager.h>

#include <QtGui/QtGui>
#include <QtWidgets/QtWidgets>

namespace {
#include "parts"
} // namespace
