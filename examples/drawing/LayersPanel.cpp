// SPDX-License-Identifier: Apache-2.0
#include "LayersPanel.h"

#include "Document.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>

LayersPanel::LayersPanel(Document *document, QWidget *parent)
    : QWidget(parent)
    , m_document(document)
    , m_list(new QListWidget)
    , m_remove(new QPushButton(tr("Remove")))
    , m_opacityLabel(new QLabel(tr("Opacity")))
    , m_opacity(new QSlider(Qt::Horizontal))
{
    auto *add = new QPushButton(tr("Add"));
    add->setObjectName(QStringLiteral("addLayer"));
    m_remove->setObjectName(QStringLiteral("removeLayer"));
    m_list->setObjectName(QStringLiteral("layers"));
    m_opacity->setObjectName(QStringLiteral("opacity"));
    m_opacity->setRange(0, 100);

    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list, 0, 0, 1, 2);
    layout->addWidget(add, 1, 0);
    layout->addWidget(m_remove, 1, 1);
    layout->addWidget(m_opacityLabel, 2, 0);
    layout->addWidget(m_opacity, 2, 1);

    connect(add, &QPushButton::clicked, document, &Document::addLayer);
    connect(m_remove, &QPushButton::clicked, document, &Document::removeLayer);
    connect(m_opacity, &QSlider::valueChanged, this,
            [document](int percent) { document->setOpacity(percent / 100.0); });
    connect(m_list, &QListWidget::currentRowChanged, this, &LayersPanel::rowSelected);
    connect(m_list, &QListWidget::itemChanged, this, &LayersPanel::itemChanged);
    // Queued: the list must keep its items while it emits the signal for a click on one.
    connect(document, &Document::layersChanged, this, &LayersPanel::refresh, Qt::QueuedConnection);
    refresh();
}

int LayersPanel::layerAt(int row) const
{
    return m_list->count() - 1 - row;
}

void LayersPanel::refresh()
{
    const QSignalBlocker listBlocker(m_list);
    const QSignalBlocker opacityBlocker(m_opacity);
    m_list->clear();
    for (const Layer &layer : m_document->layers()) {
        auto *item = new QListWidgetItem(layer.name);
        item->setCheckState(layer.visible ? Qt::Checked : Qt::Unchecked);
        item->setToolTip(tr("%1: %2, opacity %3 %")
                                 .arg(layer.name, layer.visible ? tr("shown") : tr("hidden"))
                                 .arg(qRound(layer.opacity * 100)));
        m_list->insertItem(0, item);
    }
    m_list->setCurrentRow(layerAt(m_document->current()));

    const bool background = m_document->current() == 0;
    m_remove->setDisabled(background);
    m_opacityLabel->setDisabled(background);
    m_opacity->setDisabled(background);
    m_opacity->setValue(qRound(m_document->currentLayer().opacity * 100));
}

void LayersPanel::rowSelected(int row)
{
    if (row >= 0)
        m_document->selectLayer(layerAt(row));
}

void LayersPanel::itemChanged(const QListWidgetItem *item)
{
    m_document->setLayerVisible(layerAt(m_list->row(item)), item->checkState() == Qt::Checked);
}
