// SPDX-License-Identifier: Apache-2.0
#include "HVPinning.h"

#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"

#include <QtWidgets/QVBoxLayout>

namespace Hovlets {

namespace {

constexpr Qt::WindowFlags PinnedHints =
        Qt::WindowTitleHint | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint;

/// What the popup shows; its view may be gone by the time it moves.
const HVXmlElement *contentOf(const HVWidget &popup)
{
    const HVView *view = popup.view();
    return view ? view->content() : nullptr;
}

/// What to call a pinned popup: content may carry its title in any of three places.
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

} // namespace

void dockPopup(HVWidget &popup, QWidget &container, const QPoint &position)
{
    popup.setParent(&container, Qt::WindowFlags());
    if (!container.layout()) {
        auto *layout = new QVBoxLayout(&container);
        layout->setContentsMargins(0, 0, 0, 0);
    }
    const HVXmlElement *content = contentOf(popup);
    container.setWindowTitle(content ? content->attribute(QStringLiteral("title")) : QString());
    container.layout()->addWidget(&popup);
    container.setWindowFlags(container.windowFlags() | PinnedHints);
    popup.show();
    popup.contentResized();
    if (container.isWindow())
        container.move(position);
    container.show();
}

void makeToolWindow(HVWidget &popup, const QPoint &position)
{
    const QWidget *reference = popup.referenceWidget();
    popup.setParent(reference ? reference->window() : nullptr, Qt::Tool | PinnedHints);
    popup.setWindowModality(Qt::NonModal);
    popup.setWindowTitle(titleOf(contentOf(popup)));
    popup.move(position);
    popup.show();
}

} // namespace Hovlets
