// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVCaptions.h"
#include "HVLimits.h"
#include "HVShownText.h"

#include <QtCore/QString>
#include <QtCore/QVector>

namespace Hovlets {

class HVXmlElement;

/// A file with a picture, or with one of its variants.
struct HVEntryPicture
{
    QString path; ///< Empty if there is none.
    int density = 1; ///< The pixels that cover one device-independent pixel, in each direction.
};

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
        Warning,
        Button ///< asks the host to do something
    };

    Kind kind = Kind::Paragraph;
    HVShownText text; ///< Of an image: its description. Of a clip: only its captions, spoken.
    HVShownText caption; ///< Only of an image.
    QString locator; ///< Only of a link or a button.
    QString resource; ///< Of an image: the path of its file. Of a clip: its name in the resources.
    HVEntryPicture picture; ///< Of an image: what to show. Of a clip: only its density.
    HVEntryPicture darkPicture; ///< Only of an image: its variant for dark backgrounds.
    QVector<HVCaption> captions; ///< Only of a clip.
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

    /// The path of a file in the package's resources; empty if it is missing, or if \a neighbour is
    /// a file without such a file beside it. Unlike with resource(), the popup is complete without.
    virtual QString optionalResource(const QString &relativePath, const QString &neighbour)
    {
        Q_UNUSED(relativePath)
        Q_UNUSED(neighbour)
        return {};
    }

    /// The content of a file with captions; empty if it cannot be read or is too large.
    virtual QByteArray captionFile(const QString &path)
    {
        Q_UNUSED(path)
        return {};
    }

    /// Pixels of the screen per device-independent pixel.
    virtual qreal pixelRatio() { return 1; }
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
