// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtGui/QImage>

#include <vector>

namespace HovletsTool {

struct NamedPicture
{
    QString name;
    QImage picture;
};

/// Lays out all pictures in columns on one sheet, each with its name above it.
[[nodiscard]] QImage contactSheet(const std::vector<NamedPicture> &pictures);

} // namespace HovletsTool
