// SPDX-License-Identifier: Apache-2.0
#include "PopupRenderer.h"

#include "PopupHost.h"
#include "PopupPicture.h"
#include "ToolError.h"

#include <HVPictureComponent.h>
#include <HVVideoComponent.h>
#include <HVView.h>
#include <HVViewWindow.h>
#include <HVWidget.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QLocale>
#include <QtCore/QThread>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>

#include <algorithm>

namespace HovletsTool {

using namespace Hovlets;

namespace {

template <typename Condition> void waitFor(Condition isMet, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!isMet() && !deadline.hasExpired()) {
        QCoreApplication::processEvents();
        QThread::msleep(2);
    }
}

/// Whether all clips and pictures below \a item have begun to appear.
bool isOpen(const QQuickItem *item)
{
    const auto *video = qobject_cast<const HVVideoComponent *>(item);
    if (video && !video->source().isEmpty() && video->loadProgress() != 1)
        return false;
    const auto *picture = qobject_cast<const HVPictureComponent *>(item);
    if (picture && picture->isLoading())
        return false;
    const QList<QQuickItem *> children = item->childItems();
    return std::all_of(children.begin(), children.end(), &isOpen);
}

/// Whether all open clips below \a item have all their frames, one of which may be the one to show.
bool isDecoded(const QQuickItem *item)
{
    const auto *video = qobject_cast<const HVVideoComponent *>(item);
    if (video && video->loadProgress() == 1 && !video->isDecoded())
        return false;
    const QList<QQuickItem *> children = item->childItems();
    return std::all_of(children.begin(), children.end(), &isDecoded);
}

/// Shows the frames at the current positions, without waiting until the clips' threads do.
void showDueFrames(QQuickItem *item)
{
    if (auto *video = qobject_cast<HVVideoComponent *>(item))
        video->frameReady();
    const QList<QQuickItem *> children = item->childItems();
    std::for_each(children.begin(), children.end(), &showDueFrames);
}

/// Gives the popup the room of a usual screen. Qt's screen without a display is small, the more so
/// the larger the scale.
void giveRoom(QObject &ui)
{
    constexpr QSizeF Usual(1920, 1080); // in device-independent pixels
    if (ui.property("screenSize").isValid())
        ui.setProperty("screenSize", Usual);
}

/// Clips and pictures appear some time after the popup. A clip that cannot be opened never appears.
void waitForMedia(const HVView &view)
{
    constexpr int Patience = 3000; // ms
    constexpr int DecodingPatience = 60000; // ms
    waitFor([&] { return isOpen(view.rootObject()); }, Patience);
    waitFor([&] { return isDecoded(view.rootObject()); }, DecodingPatience);
    QCoreApplication::processEvents(); // the user interface turns to the frame that it wants
    showDueFrames(view.rootObject());
}

/// Whether the popup shows a clip.
bool hasClip(const QQuickItem *item)
{
    const auto *video = qobject_cast<const HVVideoComponent *>(item);
    const QList<QQuickItem *> children = item->childItems();
    return (video && !video->source().isEmpty())
            || std::any_of(children.begin(), children.end(), &hasClip);
}

/// The popup as it is now. Qt leaves memory as it was at the edges of a scene that covers only
/// parts of their pixels, so the scene is made larger than the popup.
QImage currentPicture(HVView &view)
{
    constexpr QSize Spare(4, 4);
    const QSize size = view.sizeHint();
    view.resize(size + Spare); // until the next popup is shown
    const QImage picture = view.grabFramebuffer();
    return picture.copy(QRect(QPoint(), size * picture.devicePixelRatio()));
}

/// The first picture of the popup that does not change any more. A clip turns to the frame that its
/// user interface wants some time after it is loaded.
QImage pictureAtRest(HVView &view)
{
    constexpr int Patience = 2000; // ms
    const int rest = hasClip(view.rootObject()) ? 100 : 0; // ms
    QImage picture;
    QDeadlineTimer steady;
    waitFor(
            [&] {
                const QImage last = picture;
                showDueFrames(view.rootObject());
                picture = currentPicture(view);
                if (picture != last)
                    steady = QDeadlineTimer(rest);
                return picture == last && steady.hasExpired();
            },
            Patience);
    return picture;
}

} // namespace

PopupRenderer::PopupRenderer(const std::vector<std::string> &paths, const PopupLook &look)
{
    m_look = look;
    applyLook(look);
    if (!look.locale.empty()) {
        const QLocale locale(QString::fromLatin1(look.locale.c_str()));
        QApplication::setLayoutDirection(locale.textDirection());
    }
    HVContext context = contextFor(look);
    m_host = std::make_unique<PopupHost>(context);
    m_content = std::make_unique<ContentIndex>(paths, context, m_host.get());
    m_host->setManager(m_content->manager());
    m_content->manager().setGlobalProperty(QStringLiteral("reducedMotion"), true);
}

PopupRenderer::~PopupRenderer()
{
    m_content.reset(); // it sends messages to the host until the end
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
        throw ToolError(
                QStringLiteral(
                        "no entry for the key \"%1\" is served in this locale; `hovlets list` "
                        "lists the keys, and `hovlets check` says why one is not served")
                        .arg(key));
    HVView *view = m_content->manager().widget()->view();
    view->statusHasChanged(view->status()); // sends the errors of the user interface to the host
    if (!view->rootObject())
        throw ToolError(QStringLiteral("the popup for \"%1\" has no user interface").arg(key));
    const bool hasBar = m_look.pinned && view->drawsTitleBar();
    view->viewWindow().setTitleBar(hasBar ? HVViewWindow::TitleBar::Own
                                          : HVViewWindow::TitleBar::None);
    view->setSurface(m_look.surface, m_look.surface && !hasBar); // see HVSurface
    giveRoom(*view->rootObject());
    waitForMedia(*view);
    const QImage picture = pictureAtRest(*view);
    if (m_look.surface)
        return hasBar ? inRoundedWindow(picture, *view) : onSurface(picture, *view);
    return withRim(picture, *view).convertToFormat(QImage::Format_RGB32);
}

QStringList PopupRenderer::complaints() const
{
    return m_host->complaints();
}

} // namespace HovletsTool
