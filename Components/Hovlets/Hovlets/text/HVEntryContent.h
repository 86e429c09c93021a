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
    enum class Kind {
        Paragraph,
        Link,
        Image,
        Clip,
        Heading,
        Part, ///< a list or a table
        Code, ///< lines of plain text
        Note,
        Warning
    };

    Kind kind = Kind::Paragraph;
    HVShownText text; ///< Of an image: its description. Empty for a clip.
    QString locator; ///< Only of a link.
    QString resource; ///< Of an image: the path of its file. Of a clip: its name in the resources.
    bool isMuted = false; ///< Whether the paragraph only replaces missing content.
};

/// The content of an entry to show.
struct HVEntryContent
{
    QString key;
    HVShownText title;
    HVShownText shortcut;
    QVector<HVEntryBlock> blocks;

    /// The first limit that was met, such as "300 elements"; empty if everything is shown.
    QString limitMet;
};

/// The services of the popup that reading an entry needs.
class HVEntryServices
{
public:
    virtual ~HVEntryServices() = default;

    /// The translation; empty if there is none. It may be of any length.
    virtual QString translate(const QString &text, const QString &context) = 0;

    /// \a text with its placeholders filled.
    virtual QString interpolate(const QString &text) = 0;

    /// The path of a file in the package's resources; empty if it is missing.
    virtual QString resource(const QString &relativePath) = 0;

    /// Whether the file contains a picture that can be shown.
    virtual bool canShowPicture(const QString &path) = 0;
};

/*!
 * \brief Reads an entry into the form in which the default user interface shows it.
 *
 * The package's HovletsUI.qml describes the format. The texts are safe to show whatever the control
 * file contains: see shownMarkup(). Work and result stay within \a limits. \a topics says whether
 * links to documentation topics can be followed; otherwise they are omitted.
 */
HVEntryContent readEntry(const HVXmlElement &entry, HVEntryServices &services, bool topics,
                         const HVLimits &limits);

} // namespace Hovlets
