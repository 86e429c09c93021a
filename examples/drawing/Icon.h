// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColor>
#include <QtGui/QIcon>

/// The icon of the action \a name, drawn in \a color to suit light and dark palettes.
QIcon drawIcon(const QString &name, const QColor &color);
