// SPDX-License-Identifier: Apache-2.0
#include "PopupRenderer.h"

#include "Program.h"

#include <HVInterface.h>
#include <HVVideoComponent.h>
#include <HVView.h>
#include <HVWidget.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QThread>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <algorithm>

using namespace Hovlets;

/// Keeps what the library has to say.
class PopupRenderer::Host : public HVInterface
{
public:
    explicit Host(HVContext &context)
        : HVInterface(context, {})
    {
    }

    void handleMessage(HVMessageType type, const QString &message) override
    {
        if (type <= HVMessageWarning || message.startsWith(QLatin1String("QML Warning"))
            || message.startsWith(QLatin1String("Error"))
            || message.startsWith(QLatin1String("Can't find")))
            complaints += message.trimmed();
    }

    QStringList complaints;
};

namespace {

QPalette paletteFor(bool dark)
{
    QPalette palette;
    if (!dark) {
        palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xff, 0xdc));
        palette.setColor(QPalette::ToolTipText, Qt::black);
        return palette;
    }
    const QColor text(0xf0, 0xf0, 0xf0);
    palette = QPalette(QColor(0x40, 0x40, 0x40), QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    for (const QPalette::ColorRole role :
         { QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText })
        palette.setColor(role, text);
    palette.setColor(QPalette::ToolTipBase, QColor(0x2b, 0x2b, 0x2b));
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb4, 0xff));
    return palette;
}

void applyLook(const PopupLook &look)
{
    QApplication::setStyle(QStringLiteral("Fusion")); // which is there on every machine
    const QPalette palette = paletteFor(look.dark);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    if (look.fontSize > 0) {
        QFont font = QApplication::font();
        font.setPointSizeF(look.fontSize);
        QApplication::setFont(font);
    }
}

HVContext contextFor(const PopupLook &look)
{
    HVContext context;
    context.set(HVKeyHideDelay, 0);
    context.set(HVKeyMessageLevel, HVMessageDebug);
    context.set(HVKeyDocumentationEnabled, true); // links to topics are content, too
    context.set(HVKeySimpleMode, look.simple);
    if (!look.locale.empty())
        context.set(HVKeyLocale, QString::fromStdString(look.locale));
    if (!look.fallbackLocale.empty())
        context.set(HVKeyFallbackLocale, QString::fromStdString(look.fallbackLocale));
    return context;
}

template <typename Condition> void waitFor(Condition isMet, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!isMet() && !deadline.hasExpired()) {
        QCoreApplication::processEvents();
        QThread::msleep(2);
    }
}

/// Whether all clips below \a item are on a picture.
bool isLoaded(const QQuickItem *item)
{
    const auto *video = qobject_cast<const HVVideoComponent *>(item);
    if (video && !video->source().isEmpty() && video->loadProgress() != 1)
        return false;
    const QList<QQuickItem *> children = item->childItems();
    return std::all_of(children.begin(), children.end(), &isLoaded);
}

/// Clips come some time after the popup; one that cannot be opened never does.
void waitForClips(const HVView &view)
{
    constexpr int Patience = 3000; // ms
    waitFor([&] { return isLoaded(view.rootObject()); }, Patience);
}

/// The picture at which the popup comes to rest.
QImage pictureAtRest(HVView &view)
{
    constexpr int Patience = 2000; // ms
    QImage picture;
    waitFor(
            [&] {
                const QImage last = picture;
                picture = view.grabFramebuffer();
                return picture == last;
            },
            Patience);
    return picture.convertToFormat(QImage::Format_RGB32);
}

} // namespace

PopupRenderer::PopupRenderer(const std::vector<std::string> &paths, const PopupLook &look)
{
    applyLook(look);
    HVContext context = contextFor(look);
    m_host = std::make_unique<Host>(context);
    m_content = std::make_unique<ContentIndex>(paths, context, m_host.get());
    m_content->manager().setGlobalProperty(QStringLiteral("reducedMotion"), true);
}

PopupRenderer::~PopupRenderer()
{
    m_content.reset(); // tells the host, to the end
}

void PopupRenderer::setProperty(const QString &name, const QString &value)
{
    m_content->manager().setGlobalProperty(name, value);
}

QStringList PopupRenderer::keys()
{
    QStringList keys = m_content->manager().keys();
    keys.removeDuplicates();
    keys.sort();
    return keys;
}

QImage PopupRenderer::render(const QString &key)
{
    if (!m_content->manager().show(key, QPoint(), nullptr))
        throw ToolError(QStringLiteral("There is no entry for the key \"%1\" in this locale; "
                                       "`hovlets list` prints the keys")
                                .arg(key));
    HVView *view = m_content->manager().widget()->view();
    if (!view->rootObject())
        throw ToolError(QStringLiteral("The popup for \"%1\" has no user interface:\n%2")
                                .arg(key, complaints().join(QLatin1Char('\n'))));
    waitForClips(*view);
    return pictureAtRest(*view);
}

QStringList PopupRenderer::complaints() const
{
    return m_host->complaints;
}
