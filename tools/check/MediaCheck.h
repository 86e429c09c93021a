// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace HovletsTool {

class ContentIndex;
class ControlFile;
class FindingList;
class Progress;

struct MediaLimits
{
    double seconds = 60;
    double megabytes = 20;
};

/*!
 * \brief Checks the clips, pictures and user interfaces that entries name.
 *
 * The library resolves their paths.
 */
class MediaCheck
{
public:
    /// \param hostAttributes attributes of entries that the host reads
    MediaCheck(ContentIndex &content, const MediaLimits &limits, const QStringList &hostAttributes,
               FindingList &findings);
    ~MediaCheck();

    /// Checks the entries that the library serves. Steps \a progress once for each entry.
    /// \param packages the packages that the attribute "search" may name
    void check(const ControlFile &file, const QSet<QString> &packages, Progress &progress);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace HovletsTool
