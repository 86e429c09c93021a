// SPDX-License-Identifier: Apache-2.0
#include "Document.h"

#include <QtGui/QPainter>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QUndoStack>

#include <utility>

namespace {

constexpr QSize NewSize(640, 440);
constexpr int HistoryLimit = 60;
constexpr int OpacityId = 1;

QImage blank(const QSize &size, const QColor &color)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

} // namespace

/// A step of the history: switches between two states of the drawing.
class DocumentStep : public QUndoCommand
{
public:
    DocumentStep(Document *document, Document::State after, const QString &text, int id)
        : QUndoCommand(text)
        , m_document(document)
        , m_before(document->m_state)
        , m_after(std::move(after))
        , m_id(id)
    {
    }

    int id() const override { return m_id; }
    void undo() override { m_document->apply(m_before); }
    void redo() override { m_document->apply(m_after); }

    bool mergeWith(const QUndoCommand *next) override
    {
        const auto *step = static_cast<const DocumentStep *>(next);
        if (step->m_before.current != m_after.current)
            return false;
        m_after = step->m_after;
        return true;
    }

private:
    Document *m_document;
    Document::State m_before;
    Document::State m_after;
    int m_id;
};

Document::Document(QObject *parent)
    : QObject(parent)
    , m_history(new QUndoStack(this))
{
    m_history->setUndoLimit(HistoryLimit);
    m_state.layers.append({ tr("Background"), blank(NewSize, Qt::white) });
}

void Document::paint(QPainter &painter) const
{
    for (int i = 0; i < m_state.layers.size(); ++i) {
        const Layer &layer = m_state.layers.at(i);
        if (!layer.visible)
            continue;
        const bool previewed = i == m_state.current && !m_preview.isNull();
        painter.setOpacity(layer.opacity);
        painter.drawImage(0, 0, previewed ? m_preview : layer.image);
    }
    painter.setOpacity(1.0);
}

bool Document::load(const QString &file)
{
    QImage image(file);
    if (image.isNull())
        return false;
    State state;
    state.layers.append(
            { tr("Background"), image.convertToFormat(QImage::Format_ARGB32_Premultiplied) });
    m_history->clear();
    apply(state);
    return true;
}

bool Document::save(const QString &file) const
{
    QImage image = blank(size(), Qt::transparent);
    QPainter painter(&image);
    paint(painter);
    painter.end();
    return image.save(file, "PNG");
}

void Document::clear()
{
    State state;
    state.layers.append({ tr("Background"), blank(size(), Qt::white) });
    push(state, tr("Clear"));
}

void Document::addLayer()
{
    State state = m_state;
    const QString name = tr("Layer %1").arg(state.layers.size());
    state.layers.insert(++state.current, { name, blank(size(), Qt::transparent) });
    push(state, tr("Add layer"));
}

void Document::removeLayer()
{
    if (m_state.current == 0)
        return; // the background stays
    State state = m_state;
    state.layers.removeAt(state.current--);
    push(state, tr("Remove layer"));
}

void Document::selectLayer(int index)
{
    if (index < 0 || index >= m_state.layers.size() || index == m_state.current)
        return;
    m_state.current = index;
    Q_EMIT layersChanged();
}

void Document::setLayerVisible(int index, bool visible)
{
    if (m_state.layers.at(index).visible == visible)
        return;
    State state = m_state;
    state.layers[index].visible = visible;
    push(state, visible ? tr("Show layer") : tr("Hide layer"));
}

void Document::setOpacity(qreal opacity)
{
    if (qFuzzyCompare(currentLayer().opacity, opacity))
        return;
    State state = m_state;
    state.layers[state.current].opacity = opacity;
    push(state, tr("Opacity"), OpacityId);
}

void Document::setImage(const QImage &image, const QString &step)
{
    m_preview = QImage();
    State state = m_state;
    state.layers[state.current].image = image;
    push(state, step);
}

void Document::preview(const QImage &image)
{
    m_preview = image;
    Q_EMIT painted();
}

void Document::apply(const State &state)
{
    m_state = state;
    Q_EMIT layersChanged();
    Q_EMIT painted();
}

void Document::push(const State &state, const QString &step, int mergeId)
{
    m_history->push(new DocumentStep(this, state, step, mergeId));
}
