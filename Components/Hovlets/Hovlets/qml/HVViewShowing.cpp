// SPDX-License-Identifier: Apache-2.0
#include "HVViewPrivate.h"

#include "HVShowScope.h"
#include "HVViewWindow.h"

#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>

// The content that a view shows, and its levels: simple and full.

namespace Hovlets {

void HVView::showContent(HVXmlElement *content, const QString &rootPath)
{
    const HVShowScope showing;
    const HVViewActivity::Scope running(d->activity);
    const QPointer<HVView> self(this);
    setPackageRoot(QDir(rootPath));
    viewWindow().setExpanding(false);
    d->isExpanded = false;
    d->isSimple = d->services && d->services->settings().get(HVKeySimpleMode).toBool();
    if (d->content.entry() != content)
        setContentTree(HVContentTree(content));
    d->translator.contentShown();
    const QFileInfo ui(uiRootFilePath());
    if (!self || d->content.entry() != content)
        return; // the host's code has shown something else, or has closed the popup
    refreshTheme();
    d->context.setContent(rootPath);
    if (!self || d->content.entry() != content)
        return;
    loadQML(ui.absoluteFilePath());
    if (!self)
        return;
    clearBehindCorners();
    settle();
}

bool HVView::isSimple() const
{
    return d->isSimple && !d->isExpanded;
}

bool HVView::hasMore() const
{
    return isNotDenied("hasMore");
}

bool HVView::isPinnable() const
{
    return isNotDenied("pinnable");
}

/// Whether the property of the root item is missing or true.
bool HVView::isNotDenied(const char *property) const
{
    const QVariant value = rootObject() ? rootObject()->property(property) : QVariant();
    return !value.isValid() || value.toBool();
}

void HVView::expand()
{
    whenIdle([this, content = QPointer<HVXmlElement>(d->content.entry())] {
        if (!content || content != d->content.entry() || !isSimple())
            return;
        d->isExpanded = true;
        const HVShowScope showing;
        const HVViewActivity::Scope running(d->activity);
        const QPointer<HVView> self(this);
        const QFileInfo ui(uiRootFilePath());
        if (!self || content != d->content.entry())
            return;
        viewWindow().setExpanding(true);
        loadQML(ui.absoluteFilePath());
        if (!self)
            return;
        viewWindow().setExpanding(false);
        clearBehindCorners();
        settle();
        if (self)
            Q_EMIT lookChanged();
    });
}

} // namespace Hovlets
