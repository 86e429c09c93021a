// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVXmlElement.h"

#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QVariant>

namespace Hovlets {

class HVView;

/*!
 * \brief Converts entries to texts that are safe and quick to show; "hovletReader" in QML.
 *
 * A child of its view, which provides translations, placeholders and resources. GUI thread only.
 */
class HVEntryReader : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVEntryReader)
    Q_PROPERTY(QString disabledReason READ disabledReason NOTIFY disabledReasonChanged)

public:
    explicit HVEntryReader(HVView *view);

    /// Why the control is disabled, in plain text; empty if it is not, or if the host does not say.
    [[nodiscard]] QString disabledReason() const { return m_disabledReason; }
    void setDisabledReason(const QString &reason);

    /*!
     * The content of \a entry that the default user interface shows. Links to documentation topics
     * are included only with \a topics. Of an entry that exceeds a limit, only the part within the
     * limit is returned, and the host gets one warning for it. After 20 missing files, no further
     * ones are looked for. If \a entry is null, all texts are empty.
     *
     * The result has "key", "title", "shortcut" and "blocks", a list of objects with a "kind":
     * "paragraph", "heading", "note" or "warning" (text, format, muted), "code" (text), "link" or
     * "button" (text, locator), "image" (source, density, darkSource, darkDensity, text, caption)
     * or "clip" (name, density, captions). All have "spoken", plain text. A density is the number
     * of pixels of the file for one unit of length. Each caption has "begin", "end" (in s) and
     * "text".
     */
    Q_INVOKABLE QVariantMap read(Hovlets::HVXmlElement *entry, bool topics);

    /*!
     * The state of the size of \a clip, an HVVideoComponent, for popups that need their final size
     * before their first frame: "known", "pending", or "none" if there is no clip or it cannot be
     * opened. Waits up to 60 ms until the file is open and its first frame can be shown.
     */
    Q_INVOKABLE QString awaitClipSize(QObject *clip);

Q_SIGNALS:
    /// The file of \a clip, which was passed to awaitClipSize(), cannot be opened.
    void clipFailed(QObject *clip);

    /// A warning for the host.
    void warned(const QString &message);

    void disabledReasonChanged();

private:
    void warn(const HVXmlElement &entry, const QString &limit);

    HVView *m_view;
    QString m_disabledReason;
    QSet<QString> m_warned; // "file key"
};

} // namespace Hovlets
