// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColor>
#include <QtGui/QIcon>

/// The picture for the action \a name, in \a color so that it suits light and dark palettes.
QIcon drawIcon(const QString &name, const QColor &color);
