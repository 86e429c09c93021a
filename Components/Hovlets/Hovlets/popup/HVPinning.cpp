// SPDX-License-Identifier: Apache-2.0
#include "HVPinning.h"

#include "HVPinnedCompanions.h"
#include "HVView.h"
#include "HVViewWindow.h"
#include "HVWidget.h"
#include "HVXmlElement.h"

#include <QtCore/QPointer>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>
#include <QtWidgets/QVBoxLayout>

namespace Hovlets {

namespace {

constexpr Qt::WindowFlags PinnedHints =
        Qt::WindowTitleHint | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint;

/// A popup that draws its title bar has no frame of the desktop.
Qt::WindowFlags hintsFor(const HVWidget &popup)
{
    const HVView *view = popup.view();
    const bool isOwn = view && view->viewWindow().titleBar() == HVViewWindow::TitleBar::Own;
    return isOwn ? Qt::FramelessWindowHint : PinnedHints;
}

/// The content of the popup, whose view may be gone by the time the popup moves.
const HVXmlElement *contentOf(const HVWidget &popup)
{
    const HVView *view = popup.view();
    return view ? view->content() : nullptr;
}

/// The title of a pinned popup, which content may have in any of three places.
QString titleOf(const HVXmlElement *content)
{
    if (!content)
        return {};
    QString title = content->property("title").toString();
    if (title.isEmpty())
        title = content->attribute(QStringLiteral("title"));
    const HVXmlElement *child = content->childElement(QStringLiteral("title"));
    if (title.isEmpty() && child)
        title = child->content().simplified();
    return title;
}

bool rendersToTexture(const HVWidget &popup)
{
    const QQuickWindow *scene = popup.view() ? popup.view()->quickWindow() : nullptr;
    return scene && scene->rendererInterface()->graphicsApi() != QSGRendererInterface::Software;
}

/*!
 * \brief A window that is never shown, between the host's window and its popup.
 *
 * A widget that renders to a texture marks its new parent window as composed of textures, even if
 * the widget is a window itself. Qt never removes the mark, and a marked window that paints by
 * itself is no longer repaired after another window covered it. Only the next window up gets the
 * mark, so this one protects the host's.
 */
class WindowBetween : public QWidget
{
public:
    WindowBetween(QWidget *window, QWidget *popup)
        : QWidget(window, Qt::Tool)
    {
        connect(popup, &QObject::destroyed, this, &QObject::deleteLater);
    }
};

QWidget *parentInside(QWidget *window, HVWidget &popup)
{
    return window && rendersToTexture(popup) ? new WindowBetween(window, &popup) : window;
}

/// Puts \a popup into \a container. A container that is a window moves to \a position.
void moveInto(HVWidget &popup, QWidget &container, const QPoint &position)
{
    popup.setParent(&container, Qt::WindowFlags());
    if (!container.layout()) {
        auto *layout = new QVBoxLayout(&container);
        layout->setContentsMargins(0, 0, 0, 0);
    }
    const HVXmlElement *content = contentOf(popup);
    container.setWindowTitle(content ? content->attribute(QStringLiteral("title")) : QString());
    container.layout()->addWidget(&popup);
    if (const QWidget *reference = popup.referenceWidget())
        HVPinnedCompanions::add(popup, *reference->window());
    container.setWindowFlags(container.windowFlags() | PinnedHints);
    popup.show();
    popup.contentResized();
    if (container.isWindow())
        container.move(position);
    container.show();
}

/// Makes \a popup a window of \a type at \a position.
void showAsWindow(HVWidget &popup, const QPoint &position, Qt::WindowType type)
{
    popup.setAttribute(Qt::WA_DeleteOnClose);
    const QWidget *reference = popup.referenceWidget();
    QWidget *window = reference ? reference->window() : nullptr;
    popup.setParent(parentInside(window, popup), type | hintsFor(popup));
    if (window)
        HVPinnedCompanions::add(popup, *window);
    popup.setWindowModality(Qt::NonModal);
    popup.setWindowTitle(titleOf(contentOf(popup)));
    popup.move(position);
    popup.show();
}

/// Calls \a move when it does not disturb QML. Moving a view to another window may rebuild its
/// scene, which must not delete the item whose handler is pinning the popup.
template <typename Move> void whenQmlPermits(HVWidget &popup, const Move &move)
{
    if (popup.view()->isReservedByQml())
        QMetaObject::invokeMethod(&popup, move, Qt::QueuedConnection);
    else
        move();
}

} // namespace

void dockPopup(HVWidget &popup, QWidget &container, Qt::WindowType otherwise)
{
    popup.setAttribute(Qt::WA_DeleteOnClose, false);
    whenQmlPermits(
            popup,
            [&popup, place = popup.pos(), target = QPointer<QWidget>(&container), otherwise] {
                if (target)
                    moveInto(popup, *target, place);
                else
                    showAsWindow(popup, place, otherwise); // it was destroyed meanwhile
            });
}

void makeWindow(HVWidget &popup, Qt::WindowType type)
{
    popup.setAttribute(Qt::WA_DeleteOnClose); // it may be closed before it moves
    whenQmlPermits(popup,
                   [&popup, place = popup.pos(), type] { showAsWindow(popup, place, type); });
}

} // namespace Hovlets
