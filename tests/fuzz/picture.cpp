// SPDX-License-Identifier: Apache-2.0
// Checks that no file that claims to be a picture can harm the host that shows it.
#include "FuzzTarget.h"
#include "HVLimits.h"
#include "HVPictureCheck.h"
#include "HVPictureFile.h"
#include "PackageFolder.h"

#include <QtCore/QThreadPool>
#include <QtGui/QImage>

#include <future>

using namespace Hovlets;

namespace {

constexpr QSize OnScreen(24, 18);

/// Large pictures take time, but reach no other code.
void useSmallLimits()
{
    HVLimits limits;
    limits.picturePixels = qint64 { 512 } * 512;
    limits.pictureMemory = qint64 { 8 } * 1024 * 1024;
    HVLimits::setCurrent(limits);
}

/// Decodes on another thread, as the library does. It never ends, because Qt leaks a few bytes when
/// a thread that has drawn text ends.
QImage decoded(const HVPictureFile &file)
{
    static auto &thread = *new QThreadPool;
    thread.setMaxThreadCount(1);
    thread.setExpiryTimeout(-1);
    std::promise<QImage> image;
    thread.start([&] { image.set_value(file.decode(OnScreen)); });
    return image.get_future().get();
}

bool fits(const QSize &size, const QSize &limit)
{
    return size.width() <= limit.width() && size.height() <= limit.height();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const PackageFolder folder;
    useSmallLimits();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const HVPictureFile file(folder.add(QStringLiteral("picture"), bytes));
    const HVPictureHeader header = file.header();
    if (!HVPictureFile::isWithinLimits(header))
        return 0;
    const HVPictureCheck check(header, bytes, OnScreen); // also without a plug-in for the format
    const QImage image = decoded(file);
    if (image.isNull())
        return 0;
    if (!check.problem().isEmpty() || !fits(image.size(), header.size.expandedTo(OnScreen)))
        __builtin_trap();
    return 0;
}
