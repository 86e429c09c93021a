// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <string>
#include <vector>

namespace HovletsTool {

/*!
 * \brief Shows paths as the user wrote them.
 *
 * Files in a folder that was given relative to the current folder are shown relative to it, all
 * others with their absolute path. For people only: programs get absolute paths.
 */
class GivenPaths
{
public:
    /// \param paths the folders on the command line
    explicit GivenPaths(const std::vector<std::string> &paths);

    /// \param path an absolute path
    [[nodiscard]] QString shown(const QString &path) const;

private:
    struct Folder
    {
        QString given;
        QString path; // absolute
    };
    std::vector<Folder> m_relative;
};

} // namespace HovletsTool
