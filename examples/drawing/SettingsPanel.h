// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtWidgets/QWidget>

class DrawingHost;
class QFormLayout;
class QSpinBox;

namespace Hovlets {
class HVKeyboardAccess;
}

/*!
 * \brief Changes the library's settings while the program runs.
 *
 * Each control writes to the host's context, which takes effect at the next hover.
 */
class SettingsPanel : public QWidget
{
    Q_OBJECT

public:
    /// \a window is the parent of the windows for pinned popups.
    SettingsPanel(DrawingHost &host, Hovlets::HVKeyboardAccess &keyboard, QWidget *window);

private:
    void addLocale(QFormLayout *layout);
    void addModifiers(QFormLayout *layout);
    /// A spin box for a duration, and the setting that it writes.
    struct Duration
    {
        QSpinBox *box;
        int key;
    };
    Duration addDuration(QFormLayout *layout, const QString &label, int key, int defaultValue);
    void addReducedMotion(QFormLayout *layout, const QList<Duration> &fades);
    void addSwitch(QFormLayout *layout, const QString &label, int key, bool defaultValue);
    void addDismissal(QFormLayout *layout);
    void addExpandKey(QFormLayout *layout);
    void addFallback(QFormLayout *layout);
    void addKeyboard(QFormLayout *layout, Hovlets::HVKeyboardAccess &keyboard);
    void addPinned(QFormLayout *layout, QWidget *window);

    DrawingHost &m_host;
};
