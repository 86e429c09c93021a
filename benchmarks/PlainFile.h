// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/*!
 * \brief Reads files in the cheapest way that the system offers, into one buffer.
 *
 * The bytes that a read returns are valid until the next read.
 */
class PlainFile
{
public:
    /// At most \a limit bytes from the start of the file. Exits on failure.
    std::string_view read(const std::string &path, size_t limit);
    std::string_view readAll(const std::string &path);

    /// The paths of the "*.xml" files in a folder.
    static std::vector<std::string> listXml(const std::string &folder);

private:
    std::vector<char> m_buffer;
};
