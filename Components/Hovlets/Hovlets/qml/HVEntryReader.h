// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVXmlElement.h"

#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QVariant>

namespace Hovlets {

class HVView;

/*!
 * \brief Reads entries for QML, as "hovletReader", into texts that are safe and quick to show.
 *
 * A child of its view, which answers for translations, placeholders and resources. GUI thread only.
 */
class HVEntryReader : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVEntryReader)

public:
    explicit HVEntryReader(HVView *view);

    /*!
     * What the default user interface shows of \a entry, without links to documentation topics
     * unless \a topics. Of an entry past a limit it is the part within, and the host gets one
     * warning for that entry. All of it is empty for null.
     *
     * An object with "key", "title", "shortcut" and "blocks", a list of objects with a
     * "kind": "paragraph" (text, format, muted), "link" (text, locator), "image" (source,
     * text) or "clip" (name). All of them have "spoken", plain text.
     */
    Q_INVOKABLE QVariantMap read(Hovlets::HVXmlElement *entry, bool topics);

Q_SIGNALS:
    /// A warning for the host.
    void warned(const QString &message);

private:
    void warn(const HVXmlElement &entry, const QString &limit);

    HVView *m_view;
    QSet<QString> m_warned; // "file key"
};

} // namespace Hovlets
