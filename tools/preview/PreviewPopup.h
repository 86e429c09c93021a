// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPointer>
#include <QtQml/QQmlError>
#include <QtWidgets/QScrollArea>

namespace Hovlets {
class HVManager;
class HVView;
class HVWidget;
} // namespace Hovlets

namespace HovletsTool {

/// A live popup inside a window: its clip plays, its links open and it scrolls.
class PreviewPopup : public QScrollArea
{
    Q_OBJECT

public:
    explicit PreviewPopup(QWidget *parent = nullptr);

    /*!
     * Shows the entry that \a manager finds for \a key. The popup owns the entry.
     * \return the control file of the entry, or an empty string when there is no entry
     */
    QString showEntry(Hovlets::HVManager &manager, const QString &key);

    /// Shows a text in place of a popup.
    void showText(const QString &text);

    /// Why showEntry() could not show the user interface.
    [[nodiscard]] QList<QQmlError> errors() const;

    /// Null when there is no popup.
    [[nodiscard]] Hovlets::HVView *view() const;

private:
    QPointer<Hovlets::HVWidget> m_popup;
};

} // namespace HovletsTool
