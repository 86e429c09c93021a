// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "EntryTexts.h"

#include <QtCore/QMap>
#include <QtCore/QString>

#include <vector>

namespace HovletsTool {

/*!
 * \brief The texts that QML and JavaScript files of packages mark for translation, such as
 * qsTr("Close").
 *
 * The library does not translate them by itself: their user interface passes them to
 * hovletView.translate(), with the context that lupdate gives them.
 */
class QmlTexts
{
public:
    /// The texts of all files below the folder of a package, which is read once. Throws a ToolError
    /// if there are marked texts but lupdate is not installed or fails.
    [[nodiscard]] const std::vector<TranslatableText> &in(const QString &package);

private:
    QMap<QString, std::vector<TranslatableText>> m_known;
};

} // namespace HovletsTool
