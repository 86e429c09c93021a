// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ContentIndex.h"
#include "PopupLook.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QImage>

#include <memory>
#include <string>
#include <vector>

namespace HovletsTool {

class PopupHost;

/*!
 * \brief Takes pictures of popups, as the library shows them.
 *
 * A clip is on its first picture, and nothing moves: the same content gives the same picture. One
 * at a time: it sets the application's style, palette and font.
 */
class PopupRenderer
{
public:
    PopupRenderer(const std::vector<std::string> &paths, const PopupLook &look);
    ~PopupRenderer();

    /// What a placeholder stands for.
    void setProperty(const QString &name, const QString &value);

    /// Each key once, sorted.
    QStringList keys();

    /// Throws a ToolError when nothing is shown for \a key; its complaints() may tell more.
    QImage render(const QString &key);

    /// What the popups complained about so far: mistakes in QML, files that are not found.
    QStringList complaints() const;

private:
    std::unique_ptr<PopupHost> m_host;
    std::unique_ptr<ContentIndex> m_content;
};

} // namespace HovletsTool
