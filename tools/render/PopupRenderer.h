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
 * \brief Renders popups to pictures, exactly as the library shows them.
 *
 * The same content gives the same picture as long as its user interface respects reduced motion:
 * the default one then shows the last frame of clips, and nothing moves. A clip that plays
 * regardless is at any frame.
 *
 * Use one renderer at a time, as it sets the application's style, palette and font.
 */
class PopupRenderer
{
public:
    PopupRenderer(const std::vector<std::string> &paths, const PopupLook &look);
    ~PopupRenderer();
    Q_DISABLE_COPY_MOVE(PopupRenderer)

    /// Sets the text for a placeholder.
    void setProperty(const QString &name, const QString &value);

    /// All keys, sorted, without duplicates.
    [[nodiscard]] QStringList keys();

    /// Throws a ToolError when there is nothing to show for \a key; complaints() may say why.
    [[nodiscard]] QImage render(const QString &key);

    /// What the popups have complained about so far: mistakes in QML and missing files.
    [[nodiscard]] QStringList complaints() const;

private:
    PopupLook m_look;
    std::unique_ptr<PopupHost> m_host;
    std::unique_ptr<ContentIndex> m_content;
};

} // namespace HovletsTool
