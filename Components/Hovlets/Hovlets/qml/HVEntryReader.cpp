// SPDX-License-Identifier: Apache-2.0
#include "HVEntryReader.h"

#include "HVClipOpening.h"
#include "HVEntryContent.h"
#include "HVLimits.h"
#include "HVLookUpMemory.h"
#include "HVPictureFile.h"
#include "HVVideoComponent.h"
#include "HVView.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QStringList>

#include <array>
#include <optional>

namespace Hovlets {

namespace {

/// Forwards to the view; empty if the host has deleted the view during a call.
class Services : public HVEntryServices
{
public:
    explicit Services(HVView *view)
        : m_view(view)
    {
    }

    /// The limit on missing files, if it was met; otherwise empty.
    [[nodiscard]] QString limitMet() const
    {
        return m_isLimitMet ? QStringLiteral("%1 missing files").arg(MostMissing) : QString();
    }

    QString translate(const QString &text, const QString &context) override
    {
        return m_view ? m_view->translate(text, context) : QString();
    }

    QString interpolate(const QString &text) override
    {
        return m_view ? m_view->interpolate(text) : text;
    }

    /// The look-up looks in all folders of the entry, which takes long if there are thousands.
    QString resource(const QString &relativePath) override
    {
        if (m_missing >= MostMissing) {
            m_isLimitMet = true;
            return {};
        }
        const QString found = find(relativePath);
        m_missing += found.isEmpty() ? 1 : 0;
        return found;
    }

    QString optionalResource(const QString &relativePath, const QString &neighbour) override
    {
        const QFileInfo beside(QFileInfo(neighbour).dir(), nameOf(relativePath));
        return neighbour.isEmpty() || beside.isFile() ? find(relativePath) : QString();
    }

    QByteArray captionFile(const QString &path) override { return readCaptionFile(path); }

    qreal pixelRatio() override { return m_view ? m_view->devicePixelRatioF() : 1; }

    bool canShowPicture(const QString &path) override
    {
        return !HVPictureFile(path).size().isEmpty();
    }

private:
    static constexpr int MostMissing = 20;

    static QString nameOf(const QString &path)
    {
        return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    }

    /// The look-up returns the folder's name if the file is missing.
    QString find(const QString &relativePath)
    {
        const QString name = nameOf(relativePath);
        const QString found =
                name.isEmpty() || !m_view ? QString() : m_view->findResource(relativePath);
        return !name.isEmpty() && nameOf(found) == name ? found : QString();
    }

    QPointer<HVView> m_view;
    int m_missing = 0;
    bool m_isLimitMet = false;
};

/// The texts that are not empty, in lines.
QString joined(QStringList texts)
{
    texts.removeAll(QString());
    return texts.join(QLatin1Char('\n'));
}

QVariantList toVariant(const QVector<HVCaption> &captions)
{
    QVariantList list;
    for (const HVCaption &caption : captions)
        list.append(QVariantMap { { QStringLiteral("begin"), caption.begin },
                                  { QStringLiteral("end"), caption.end },
                                  { QStringLiteral("text"), caption.text } });
    return list;
}

QVariantMap toVariant(const HVEntryBlock &block)
{
    QVariantMap map { { QStringLiteral("text"), block.text.text },
                      { QStringLiteral("spoken"), block.text.spoken } };
    const auto set = [&map](const char *name, const QVariant &value) {
        map.insert(QLatin1String(name), value);
    };
    static constexpr std::array<const char *, 3> Formats { "plain", "styled", "rich" };
    set("format", QLatin1String(Formats[size_t(block.text.format)]));
    set("muted", block.isMuted);
    switch (block.kind) {
    case HVEntryBlock::Kind::Paragraph:
    case HVEntryBlock::Kind::Part:
        set("kind", QStringLiteral("paragraph"));
        break;
    case HVEntryBlock::Kind::Heading:
        set("kind", QStringLiteral("heading"));
        break;
    case HVEntryBlock::Kind::Code:
        set("kind", QStringLiteral("code"));
        break;
    case HVEntryBlock::Kind::Note:
        set("kind", QStringLiteral("note"));
        break;
    case HVEntryBlock::Kind::Warning:
        set("kind", QStringLiteral("warning"));
        break;
    case HVEntryBlock::Kind::Link:
        set("kind", QStringLiteral("link"));
        set("locator", block.locator);
        break;
    case HVEntryBlock::Kind::Image:
        set("kind", QStringLiteral("image"));
        set("source", block.picture.path);
        set("density", block.picture.density);
        set("darkSource", block.darkPicture.path);
        set("darkDensity", block.darkPicture.density);
        set("caption", block.caption.text);
        if (!block.caption.spoken.isEmpty())
            set("spoken", joined({ block.text.spoken, block.caption.spoken }));
        break;
    case HVEntryBlock::Kind::Clip:
        set("kind", QStringLiteral("clip"));
        set("name", block.resource);
        set("density", block.picture.density);
        set("captions", toVariant(block.captions));
        break;
    case HVEntryBlock::Kind::Button:
        set("kind", QStringLiteral("button"));
        set("locator", block.locator);
        break;
    }
    return map;
}

QVariantMap toVariant(const HVEntryContent &content)
{
    QVariantList blocks;
    for (const HVEntryBlock &block : content.blocks)
        blocks.append(toVariant(block));
    return { { QStringLiteral("key"), content.key },
             { QStringLiteral("title"), content.title.text },
             { QStringLiteral("shortcut"), content.shortcut.text },
             { QStringLiteral("blocks"), blocks } };
}

} // namespace

HVEntryReader::HVEntryReader(HVView *view)
    : QObject(view)
    , m_view(view)
{
}

void HVEntryReader::setDisabledReason(const QString &reason)
{
    if (reason == m_disabledReason)
        return;
    m_disabledReason = reason;
    Q_EMIT disabledReasonChanged();
}

QVariantMap HVEntryReader::read(HVXmlElement *entry, bool topics)
{
    if (!entry)
        return toVariant(HVEntryContent());
    const QPointer<HVEntryReader> alive(this);
    std::optional<HVLookUpMemory::Scope> reading;
    if (m_view)
        reading.emplace(m_view->lookUps());
    Services services(m_view);
    const HVEntryContent content = readEntry(*entry, services, topics, HVLimits::current());
    const QString limitMet = content.limitMet.isEmpty() ? services.limitMet() : content.limitMet;
    if (alive && !limitMet.isEmpty())
        warn(*entry, limitMet);
    return toVariant(content);
}

void HVEntryReader::warn(const HVXmlElement &entry, const QString &limit)
{
    const QString key = entry.attribute(QStringLiteral("key"));
    const QString file = entry.attribute(QStringLiteral("HVLocation"));
    const QString which = file + QLatin1Char(' ') + key;
    if (m_warned.contains(which))
        return;
    m_warned.insert(which);
    Q_EMIT warned(QStringLiteral("Only part of \"%1\" in %2 is shown: it has more than %3")
                          .arg(key, file, limit));
}

QString HVEntryReader::awaitClipSize(QObject *clip)
{
    auto *video = qobject_cast<HVVideoComponent *>(clip);
    if (!video)
        return QStringLiteral("none");
    const HVClipOpening *opening = &video->opening();
    disconnect(opening, nullptr, this, nullptr);
    connect(opening, &HVClipOpening::failed, this, [this, failed = QPointer<QObject>(clip)] {
        if (failed)
            Q_EMIT clipFailed(failed);
    });
    switch (video->awaitSize()) {
    case HVVideoComponent::SizeState::Known:
        return QStringLiteral("known");
    case HVVideoComponent::SizeState::Pending:
        return QStringLiteral("pending");
    case HVVideoComponent::SizeState::None:
        break;
    }
    return QStringLiteral("none");
}

} // namespace Hovlets
