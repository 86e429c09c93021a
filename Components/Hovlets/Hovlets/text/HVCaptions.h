// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVector>

namespace Hovlets {

/// A text that a clip shows from one time to another.
struct HVCaption
{
    double begin = 0; ///< in seconds
    double end = 0; ///< in seconds
    QString text; ///< in one line, without tags
};

/// Bytes of a file with captions. A larger file is not read.
constexpr qint64 MostCaptionBytes = qint64 { 64 } * 1024;

/// Captions of one file. Further ones are omitted.
constexpr int MostCaptions = 200;

/// The content of a file with captions; empty if it cannot be read, is too large or is not a
/// regular file.
[[nodiscard]] QByteArray readCaptionFile(const QString &path);

/*!
 * \brief Reads captions in the format WebVTT.
 *
 * Comments, styles, regions, positions and tags are skipped. Returns at most MostCaptions, and none
 * of a file in another format. Sets \a problem to the first mistake, in English; captions without a
 * mistake are returned nevertheless. Sets \a isCut to whether the file has more captions.
 */
[[nodiscard]] QVector<HVCaption> readCaptions(const QByteArray &file, QString *problem = nullptr,
                                              bool *isCut = nullptr);

} // namespace Hovlets
