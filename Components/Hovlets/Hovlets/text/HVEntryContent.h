// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVLimits.h"
#include "HVShownText.h"

#include <QtCore/QString>
#include <QtCore/QVector>

namespace Hovlets {

class HVXmlElement;

/// One of the blocks that a popup shows below each other.
struct HVEntryBlock
{
    enum Kind { Paragraph, Link, Image, Clip };

    Kind kind = Paragraph;
    HVShownText text; ///< Of an image its description; of a clip nothing.
    QString locator; ///< Of a link.
    QString resource; ///< Of an image the path of its file, of a clip its name in the resources.
    bool isMuted = false; ///< A paragraph that stands for something else.
};

/// What there is to show of an entry.
struct HVEntryContent
{
    QString key;
    HVShownText title;
    HVShownText shortcut;
    QVector<HVEntryBlock> blocks;

    /// The first limit that was met, such as "300 elements"; empty when all is shown.
    QString limitMet;
};

/// What reading an entry asks of the popup around it.
class HVEntryServices
{
public:
    virtual ~HVEntryServices() = default;

    /// The translation; empty where there is none.
    virtual QString translate(const QString &text, const QString &context) = 0;

    /// \a text with its placeholders filled.
    virtual QString interpolate(const QString &text) = 0;

    /// The path of a file in the package's resources, empty when it is missing.
    virtual QString resource(const QString &relativePath) = 0;

    /// Whether the file holds a picture that can be shown.
    virtual bool canShowPicture(const QString &path) = 0;
};

/*!
 * \brief Reads an entry into what the default user interface shows of it.
 *
 * The format is described in the package's HovletsUI.qml. The texts are safe to show, whatever the
 * control file holds: see shownMarkup(). Work and result stay within \a limits. With \a topics the
 * links to documentation topics can be followed; without it they are left out.
 */
HVEntryContent readEntry(const HVXmlElement &entry, HVEntryServices &services, bool topics,
                         const HVLimits &limits);

} // namespace Hovlets
