// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QWidget>

class Document;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QSlider;

/*!
 * \brief The list of layers, top first, and the commands for the selected one.
 *
 * The list has a hovlet, while its items have ordinary tooltips.
 */
class LayersPanel : public QWidget
{
    Q_OBJECT

public:
    explicit LayersPanel(Document *document, QWidget *parent = nullptr);

private:
    void refresh();
    void rowSelected(int row);
    void itemChanged(const QListWidgetItem *item);
    int layerAt(int row) const;

    Document *m_document;
    QListWidget *m_list;
    QPushButton *m_remove;
    QLabel *m_opacityLabel;
    QSlider *m_opacity;
};
