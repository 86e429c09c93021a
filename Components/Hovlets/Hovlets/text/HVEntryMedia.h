// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVEntryContent.h"

#include <QtCore/QString>

namespace Hovlets {

class HVEntryTexts;
class HVXmlElement;

/// The name of a variant of a file: \a suffix is inserted before the extension.
[[nodiscard]] QString variantName(const QString &path, const char *suffix);

/// The name of the captions of a clip, unless the entry has another one.
[[nodiscard]] QString captionsName(const QString &clip);

/// Suffixes of variants. Dark comes first in the name of a file that has both.
constexpr auto DenseVariant = "@2x"; // twice the pixels
constexpr auto DarkVariant = "-dark"; // for popups with a dark background
constexpr auto DarkDenseVariant = "-dark@2x";

/*!
 * \brief Finds the files of an entry's pictures and clip, with those of their variants that the
 * screen can use.
 */
class HVEntryMedia
{
public:
    /// Both arguments must outlive the object.
    HVEntryMedia(HVEntryServices &services, HVEntryTexts &texts);

    /// Sets the files of a picture; false if there is none that can be shown.
    bool findPicture(const QString &path, HVEntryBlock &block);

    /// Sets the file of a clip; false if it is missing.
    bool findClip(const QString &path, HVEntryBlock &block);

    /// Adds the captions of the \a entry to its clip, which findClip() has found.
    void addCaptions(const HVXmlElement &entry, HVEntryBlock &clip);

private:
    QString variant(const QString &path, const char *suffix, const QString &neighbour);
    HVEntryPicture bestOf(const QString &path, const char *suffix, const char *denseSuffix,
                          const QString &neighbour);

    HVEntryServices &m_services;
    HVEntryTexts &m_texts;
    QString m_clip; // the path that resource() returned for it
};

} // namespace Hovlets
