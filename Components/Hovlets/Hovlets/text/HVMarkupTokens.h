// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVMarkupTags.h"

#include <QtCore/QString>

namespace Hovlets {

/// A known tag in a text.
struct HVTagToken
{
    HVMarkupTag tag = HVMarkupTag::A;
    bool isEnd = false;
    bool isEmpty = false; ///< The tag ends with "/>".
    QStringView attributes;
    qsizetype end = 0; ///< The position after the tag.
};

/// A character entity, or a placeholder.
struct HVNamedToken
{
    QStringView name; ///< Without its delimiters.
    qsizetype end = 0;
};

/// The known tag whose "<" is at \a at.
std::optional<HVTagToken> readTag(QStringView text, qsizetype at);

/// The entity whose "&" is at \a at, such as "&lt;" or "&#60;", known or not.
std::optional<HVNamedToken> readEntity(QStringView text, qsizetype at);

/// The placeholder "%(name)s" whose "%" is at \a at.
std::optional<HVNamedToken> readPlaceholder(QStringView text, qsizetype at);

/// The text of an entity; null if the name is not known here.
QString entityText(QStringView name);

} // namespace Hovlets
