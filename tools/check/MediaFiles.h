// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QSize>
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

    /// Checks that the clip \a variant has twice as many pixels in each direction as \a path.
    MediaProblem checkClipVariant(const QString &path, const QString &variant);

private:
    [[nodiscard]] MediaProblem openClip(const QString &path);

    double m_longestClip; // in seconds
    QHash<QString, MediaProblem> m_clips;
    QHash<QString, QSize> m_clipSizes; // of those that can be opened
    QHash<QString, MediaProblem> m_pictures;
    QHash<QString, MediaProblem> m_captions;
};

} // namespace HovletsTool
