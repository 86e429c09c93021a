// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>

#include <optional>

namespace HovletsTool {

/// A problem with a clip or picture. An empty code means that there is none.
struct MediaProblem
{
    const char *code = "";
    QString message;
};

/// Opens clips, pictures and captions, each file only once.
class MediaFiles
{
public:
    explicit MediaFiles(double longestClip)
        : m_longestClip(longestClip)
    {
    }

    const MediaProblem &checkClip(const QString &path);
    const MediaProblem &checkPicture(const QString &path);

    const MediaProblem &checkCaptions(const QString &path);

    /// Checks that \a variant has \a factor times as many pixels in each direction as \a path.
    [[nodiscard]] static MediaProblem checkVariant(const QString &path, const QString &variant,
                                                   int factor);

private:
    [[nodiscard]] MediaProblem openClip(const QString &path) const;

    double m_longestClip; // in seconds
    QHash<QString, MediaProblem> m_clips;
    QHash<QString, MediaProblem> m_pictures;
    QHash<QString, MediaProblem> m_captions;
};

} // namespace HovletsTool
