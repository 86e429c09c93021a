// SPDX-License-Identifier: Apache-2.0
#include "PlainFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

[[noreturn]] void fail(const std::string &path)
{
    std::perror(path.c_str());
    std::exit(EXIT_FAILURE);
}

} // namespace

std::string_view PlainFile::read(const std::string &path, size_t limit)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    if (file < 0 || ::fstat(file, &status) != 0)
        fail(path);
    const size_t size = std::min(limit, static_cast<size_t>(status.st_size));
    m_buffer.resize(std::max(m_buffer.size(), size));
    if (::read(file, m_buffer.data(), size) != static_cast<ssize_t>(size))
        fail(path);
    ::close(file);
    return { m_buffer.data(), size };
}

std::string_view PlainFile::readAll(const std::string &path)
{
    return read(path, std::numeric_limits<size_t>::max());
}

std::vector<std::string> PlainFile::listXml(const std::string &folder)
{
    DIR *directory = ::opendir(folder.c_str());
    if (!directory)
        fail(folder);
    constexpr std::string_view Suffix = ".xml";
    std::vector<std::string> paths;
    while (const dirent *entry = ::readdir(directory)) {
        const std::string_view name(entry->d_name);
        if (name.size() > Suffix.size() && name.substr(name.size() - Suffix.size()) == Suffix)
            paths.push_back(folder + '/' + entry->d_name);
    }
    ::closedir(directory);
    return paths;
}
