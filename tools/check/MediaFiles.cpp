// SPDX-License-Identifier: Apache-2.0
#include "MediaFiles.h"

#include <HVCaptions.h>
#include <HVClip.h>
#include <HVLimits.h>
#include <HVPictureFile.h>
#include <HVRegularFile.h>

#include <QtCore/QFile>
#include <QtGui/QImage>

#include <algorithm>

namespace HovletsTool {

namespace {

/// Decodes the picture as the library does, to find damage and what the library refuses.
MediaProblem openPicture(const QString &path)
{
    constexpr int Side = 512; // pixels; a JPEG file at this size takes less memory
    const Hovlets::HVPictureFile file(path);
    const Hovlets::HVPictureHeader header = file.header();
    const Hovlets::HVLimits limits = Hovlets::HVLimits::current();
    const QSize size = header.size;
    if (qint64 { size.width() } * size.height() > limits.picturePixels)
        return { "HV308",
                 QStringLiteral("\"%1\" has %2 × %3 pixels, but the library shows pictures of at "
                                "most %4 pixels")
                         .arg(path)
                         .arg(size.width())
                         .arg(size.height())
                         .arg(limits.picturePixels) };
    if (header.memory > limits.pictureMemory)
        return { "HV308",
                 QStringLiteral("\"%1\" takes %2 bytes to decode, but the library shows pictures "
                                "that take at most %3 bytes")
                         .arg(path)
                         .arg(header.memory)
                         .arg(limits.pictureMemory) };
    QString problem;
    const QSize small = size.boundedTo({ Side, Side }).isEmpty()
            ? QSize(Side, Side)
            : size.scaled(Side, Side, Qt::KeepAspectRatio).expandedTo({ 1, 1 }).boundedTo(size);
    if (file.decode(small, &problem).isNull())
        return { "HV302", QStringLiteral("\"%1\": %2").arg(path, problem) };
    return {};
}

/// Reads captions as the library does, to find mistakes.
MediaProblem openCaptions(const QString &path)
{
    QFile file(path);
    if (!Hovlets::openRegularFile(file, path))
        return { "HV310", QStringLiteral("\"%1\" cannot be read").arg(path) };
    if (file.size() > Hovlets::MostCaptionBytes)
        return { "HV312",
                 QStringLiteral("\"%1\" has more than %2 bytes, so its captions are not shown")
                         .arg(path)
                         .arg(Hovlets::MostCaptionBytes) };
    QString problem;
    bool isCut = false;
    const auto captions =
            Hovlets::readCaptions(file.read(Hovlets::MostCaptionBytes), &problem, &isCut);
    if (problem.isEmpty() && isCut)
        return { "HV312",
                 QStringLiteral("\"%1\": only the first %2 captions are shown")
                         .arg(path)
                         .arg(Hovlets::MostCaptions) };
    if (problem.isEmpty() && captions.isEmpty())
        problem = QStringLiteral("it has no captions");
    if (problem.isEmpty())
        return {};
    return { "HV310", QStringLiteral("\"%1\": %2").arg(path, problem) };
}

/// The problem with a variant that does not have the \a expected size.
MediaProblem compareSizes(const QString &variant, const QSize &size, const QSize &expected)
{
    if (expected.isEmpty() || size == expected)
        return {};
    return { "HV311",
             QStringLiteral("\"%1\" has %2 × %3 pixels instead of %4 × %5")
                     .arg(variant)
                     .arg(size.width())
                     .arg(size.height())
                     .arg(expected.width())
                     .arg(expected.height()) };
}

} // namespace

const MediaProblem &MediaFiles::checkClip(const QString &path)
{
    const auto known = m_clips.constFind(path);
    return known == m_clips.cend() ? *m_clips.insert(path, openClip(path)) : *known;
}

const MediaProblem &MediaFiles::checkPicture(const QString &path)
{
    const auto known = m_pictures.constFind(path);
    return known == m_pictures.cend() ? *m_pictures.insert(path, openPicture(path)) : *known;
}

const MediaProblem &MediaFiles::checkCaptions(const QString &path)
{
    const auto known = m_captions.constFind(path);
    return known == m_captions.cend() ? *m_captions.insert(path, openCaptions(path)) : *known;
}

MediaProblem MediaFiles::checkVariant(const QString &path, const QString &variant, int factor)
{
    const Hovlets::HVPictureHeader usual = Hovlets::HVPictureFile(path).header();
    const QSize size = Hovlets::HVPictureFile(variant).header().size;
    return usual.format == "svg" ? MediaProblem()
                                 : compareSizes(variant, size, factor * usual.size);
}

MediaProblem MediaFiles::checkClipVariant(const QString &path, const QString &variant)
{
    checkClip(path);
    checkClip(variant);
    const QSize size = m_clipSizes.value(variant);
    return size.isEmpty() ? MediaProblem()
                          : compareSizes(variant, size, 2 * m_clipSizes.value(path));
}

MediaProblem MediaFiles::openClip(const QString &path)
{
    Hovlets::HVClip clip([] { return false; });
    if (const char *reason = clip.open(path))
        return { "HV303", QString::fromUtf8(reason).arg(path) };
    m_clipSizes.insert(path, clip.size());
    if (clip.duration() > m_longestClip)
        return { "HV304",
                 QStringLiteral("\"%1\" lasts %2 seconds").arg(path).arg(clip.duration()) };
    constexpr double BytesPerPixel = 4;
    const double frame = BytesPerPixel * clip.size().width() * clip.size().height()
            + double { Hovlets::HVFrameMemory::Overhead };
    const double memory = clip.duration() * clip.frameRate() * frame;
    const auto most = static_cast<double>(Hovlets::HVLimits::current().clipMemory);
    if (memory > most)
        return { "HV309",
                 QStringLiteral(
                         "\"%1\" takes %2 MB in memory, but all clips together may take %3 MB")
                         .arg(path)
                         .arg(memory / 1e6, 0, 'f', 0)
                         .arg(most / 1e6, 0, 'f', 0) };
    return {};
}

} // namespace HovletsTool
