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

/*!
 * \brief A popup inside a window, alive: its clip plays, its links open, it scrolls.
 */
class PreviewPopup : public QScrollArea
{
    Q_OBJECT

public:
    explicit PreviewPopup(QWidget *parent = nullptr);

    /*!
     * Shows the entry that \a manager finds for \a key, which lives as long as the popup does.
     * \return the control file that it comes from, empty when there is no entry
     */
    QString showEntry(Hovlets::HVManager &manager, const QString &key);

    /// Shows a text in place of a popup.
    void showText(const QString &text);

    /// Why there is no user interface, after showEntry().
    QList<QQmlError> errors() const;

    /// Null when there is no popup.
    Hovlets::HVView *view() const;

private:
    QPointer<Hovlets::HVWidget> m_popup;
};

} // namespace HovletsTool
