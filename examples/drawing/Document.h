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
 * \brief A drawing: its layers from the bottom up, and the history of their changes.
 *
 * Images are implicitly shared: each step of the history holds a whole drawing, but costs only the
 * layer that changed.
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

    /// Replaces the drawing and its history. Returns false if \a file is not a picture.
    bool load(const QString &file);

    /// Writes the visible layers, merged, as PNG.
    bool save(const QString &file) const;

    void clear();
    void addLayer();
    void removeLayer();
    void selectLayer(int index);
    void setLayerVisible(int index, bool visible);
    void setOpacity(qreal opacity);

    /// Makes \a image the current layer after a finished stroke; the history calls it \a step.
    void setImage(const QImage &image, const QString &step);

    /// Shows \a image instead of the current layer during a stroke.
    void preview(const QImage &image);

Q_SIGNALS:
    /// Emitted when paint() would draw something else.
    void painted();

    /// Emitted when layers were added, removed, selected or modified.
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
