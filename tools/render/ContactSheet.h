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

/// All pictures on one sheet in columns, each below its name.
QImage contactSheet(const std::vector<NamedPicture> &pictures);

} // namespace HovletsTool
