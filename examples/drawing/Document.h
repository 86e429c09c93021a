// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QVector>
#include <QtGui/QImage>

class QPainter;
class QUndoStack;

struct Layer
{
    QString name;
    QImage image; // ARGB32, premultiplied
    qreal opacity = 1.0;
    bool visible = true;
};

/*!
 * \brief A drawing: its layers, from the bottom up, and the history of what was done to them.
 *
 * Images are shared until they are written, so each step of the history keeps a whole drawing at
 * the price of the one layer that changed.
 */
class Document : public QObject
{
    Q_OBJECT

public:
    explicit Document(QObject *parent = nullptr);

    const QVector<Layer> &layers() const { return m_state.layers; }
    int current() const { return m_state.current; }
    const Layer &currentLayer() const { return m_state.layers.at(m_state.current); }
    QSize size() const { return m_state.layers.constFirst().image.size(); }
    QUndoStack *history() const { return m_history; }

    void paint(QPainter &painter) const;

    /// Replaces the drawing and forgets its history. False when \a file is no picture.
    bool load(const QString &file);

    /// Writes what is seen, all layers together, as PNG.
    bool save(const QString &file) const;

    void clear();
    void addLayer();
    void removeLayer();
    void selectLayer(int index);
    void setLayerVisible(int index, bool visible);
    void setOpacity(qreal opacity);

    /// What a finished stroke made of the current layer; \a step names it in the history.
    void setImage(const QImage &image, const QString &step);

    /// Shows \a image in place of the current layer while a stroke goes on.
    void preview(const QImage &image);

Q_SIGNALS:
    /// What paint() draws is another picture now.
    void painted();

    /// Layers came, went, were selected or have other properties.
    void layersChanged();

private:
    friend class DocumentStep;

    struct State
    {
        QVector<Layer> layers;
        int current = 0;
    };

    void apply(const State &state);
    void push(const State &state, const QString &step, int mergeId = -1);

    State m_state;
    QImage m_preview;
    QUndoStack *m_history;
};
