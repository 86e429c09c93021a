// SPDX-License-Identifier: Apache-2.0
#include "HVEntryMedia.h"

#include "HVEntryTexts.h"
#include "HVXmlElement.h"

namespace Hovlets {

namespace {

/// Where the extension of a file name begins, or the end of the name.
int extensionIn(const QString &path)
{
    const auto dot = path.lastIndexOf(QLatin1Char('.'));
    return static_cast<int>(dot > path.lastIndexOf(QLatin1Char('/')) + 1 ? dot : path.size());
}

} // namespace

QString variantName(const QString &path, const char *suffix)
{
    QString name = path;
    return name.insert(extensionIn(path), QLatin1String(suffix));
}

QString captionsName(const QString &clip)
{
    return clip.left(extensionIn(clip)) + QLatin1String(".vtt");
}

HVEntryMedia::HVEntryMedia(HVEntryServices &services, HVEntryTexts &texts)
    : m_services(services)
    , m_texts(texts)
{
}

QString HVEntryMedia::variant(const QString &path, const char *suffix, const QString &neighbour)
{
    const QString found = m_services.optionalResource(variantName(path, suffix), neighbour);
    return !found.isEmpty() && m_services.canShowPicture(found) ? found : QString();
}

/// The variant with the most pixels that the screen can show.
HVEntryPicture HVEntryMedia::bestOf(const QString &path, const char *suffix,
                                    const char *denseSuffix, const QString &neighbour)
{
    if (m_services.pixelRatio() > 1) {
        const QString dense = variant(path, denseSuffix, neighbour);
        if (!dense.isEmpty())
            return { dense, 2 };
    }
    return { suffix ? variant(path, suffix, neighbour) : neighbour, 1 };
}

bool HVEntryMedia::findPicture(const QString &path, HVEntryBlock &block)
{
    const QString found = path.isEmpty() ? QString() : m_services.resource(path);
    // Counted first, because finding that a file contains no picture takes time, too.
    if (found.isEmpty() || !m_texts.budget().takePicture() || !m_services.canShowPicture(found))
        return false;
    block.resource = found;
    block.picture = bestOf(path, nullptr, DenseVariant, found);
    block.darkPicture = bestOf(path, DarkVariant, DarkDenseVariant, found);
    return true;
}

bool HVEntryMedia::findClip(const QString &path, HVEntryBlock &block)
{
    const QString found = path.isEmpty() ? QString() : m_services.resource(path);
    if (found.isEmpty())
        return false;
    m_clip = found;
    block.resource = path;
    const QString dense = variantName(path, DenseVariant);
    if (m_services.pixelRatio() > 1 && !m_services.optionalResource(dense, found).isEmpty()) {
        block.resource = dense;
        block.picture.density = 2;
    }
    return true;
}

void HVEntryMedia::addCaptions(const HVXmlElement &entry, HVEntryBlock &clip)
{
    const QString named = entry.attribute(QStringLiteral("captions"));
    const QString besideClip = captionsName(entry.attribute(QStringLiteral("clip")));
    const QString file = named.isEmpty() ? m_services.optionalResource(besideClip, m_clip)
                                         : m_services.optionalResource(named, {});
    if (file.isEmpty())
        return;
    const QVector<HVCaption> captions = readCaptions(m_services.captionFile(file));
    for (HVCaption caption : captions) {
        const HVShownText text = m_texts.plain(caption.text);
        if (m_texts.budget().isSpent())
            return;
        if (text.text.isEmpty())
            continue;
        caption.text = text.text;
        clip.captions += caption;
        clip.text.spoken +=
                (clip.text.spoken.isEmpty() ? QString() : QStringLiteral("\n")) + text.spoken;
    }
}

} // namespace Hovlets
