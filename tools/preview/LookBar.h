// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PopupLook.h"

#include <QtWidgets/QToolBar>

class QCheckBox;
class QComboBox;

namespace HovletsTool {

/// The tool bar that selects the locale, the palette and the simple popup.
class LookBar : public QToolBar
{
    Q_OBJECT

public:
    explicit LookBar(const PopupLook &look, QWidget *parent = nullptr);

    /// Offers these locales, en_US and the locale of \a look, which is selected.
    void setLocales(const QStringList &locales, const PopupLook &look);

    /// Writes the selected values to \a look.
    void applyTo(PopupLook &look) const;

    [[nodiscard]] QString locale() const;

Q_SIGNALS:
    void changed();
    void reloadRequested();

private:
    void addLabelled(const QString &text, QWidget *widget);

    QComboBox *m_locale;
    QComboBox *m_palette;
    QCheckBox *m_simple;
};

} // namespace HovletsTool
