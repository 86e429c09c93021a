// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <vector>

using NamedPicture = QPair<QString, QImage>;

/// All pictures on one sheet in columns, each below its name.
QImage contactSheet(const std::vector<NamedPicture> &pictures);
