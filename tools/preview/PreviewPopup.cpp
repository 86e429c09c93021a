// SPDX-License-Identifier: Apache-2.0
#include "PreviewPopup.h"

#include <HVContentTree.h>
#include <HVManager.h>
#include <HVPackageFiles.h>
#include <HVView.h>
#include <HVWidget.h>
#include <HVXmlElement.h>

#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace HovletsTool {

using namespace Hovlets;

namespace {

constexpr int Margin = 24; // pixels around the popup

} // namespace

PreviewPopup::PreviewPopup(QWidget *parent)
    : QScrollArea(parent)
{
    setWidgetResizable(true);
    setBackgroundRole(QPalette::Mid);
}

QString PreviewPopup::showEntry(HVManager &manager, const QString &key)
{
    QString path;
    int depth = 1;
    HVXmlElement *root = nullptr;
    HVXmlElement *entry = manager.retrieve(key, path, depth, root);
    HVContentTree tree(entry, root);
    if (!entry || !root)
        return {};

    auto *desk = new QWidget; // not a window, so the popup keeps its place in the layout
    auto *layout = new QVBoxLayout(desk);
    layout->setContentsMargins(Margin, Margin, Margin, Margin);
    m_popup = new HVWidget(&manager, desk, nullptr);
    layout->addWidget(m_popup, 0, Qt::AlignTop | Qt::AlignLeft);
    m_popup->setView(new HVView(&manager, m_popup));
    m_popup->view()->setContentTree(std::move(tree));
    setWidget(desk);
    const QString file = entry->attribute(QStringLiteral("HVLocation"));
    m_popup->showWithContent(nullptr, QPoint(Margin, Margin), entry, folderAbove(path, depth - 1));
    return file;
}

void PreviewPopup::showText(const QString &text)
{
    auto *label = new QLabel(text);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setMargin(Margin);
    setWidget(label);
}

QList<QQmlError> PreviewPopup::errors() const
{
    return view() ? view()->errors() : QList<QQmlError>();
}

HVView *PreviewPopup::view() const
{
    return m_popup ? m_popup->view() : nullptr;
}

} // namespace HovletsTool
