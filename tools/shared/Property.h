// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace HovletsTool {

/// The text that replaces the placeholder %(name)s.
struct Property
{
    QString name;
    QString value;
};

} // namespace HovletsTool
