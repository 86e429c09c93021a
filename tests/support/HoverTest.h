// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVView.h"
#include "HVWidget.h"
#include "PackageFolder.h"
#include "Pointer.h"
#include "RecordingHost.h"

#include <QtCore/QHash>
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtTest/QtTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QWidget>

#include <memory>

/*!
 * \brief A host's window that records the toolkit's requests for tooltips.
 *
 * Of its buttons, "a", "b" and "disabled" have content; "unknown" has a tooltip of its own,
 * "silent" has nothing. "disabled" is disabled.
 */
class HostWindow : public QWidget
{
public:
    HostWindow();

    QPushButton &button(const char *name) const;
    QPoint centerOf(const char *name) const;
    bool eventFilter(QObject *object, QEvent *event) override;

    QLineEdit field { this };
    QStringList asked; // names

private:
    QHash<QString, QPushButton *> m_buttons;
};

/// Counts the presses of keys that reach a widget of the host.
class KeyCounter : public QObject
{
public:
    int presses = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        presses += event->type() == QEvent::KeyPress ? 1 : 0;
        return false;
    }
};

/// A test with a visible window, a host that watches the mouse, and the real pointer.
class HoverTest : public QObject
{
    Q_OBJECT

public:
    HoverTest();

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    Hovlets::HVWidget *popup() const { return m_host->popup(); }
    QTimer *timer() const;
    QString title() const;
    bool isShowing(const char *key) const;
    static bool isToolTipShown(const QString &text);

    /*!
     * Rests the pointer at \a position until \a happened. It moves a bit now and then, like a hand:
     * the toolkit asks for no tooltip if a window opens after the last move.
     */
    template <typename Condition> static bool rest(const QPoint &position, Condition happened)
    {
        return restAt([&] { return position; }, happened);
    }

    /// The same at the position that \a position returns each time. A window manager may move the
    /// content of a new window when it adds a frame.
    template <typename Position, typename Condition>
    static bool restAt(Position position, Condition happened)
    {
        for (int i = 0; i < 25; ++i) {
            Pointer::moveTo(position() + QPoint(i % 2, 0));
            if (QTest::qWaitFor(happened, 400))
                return true;
        }
        return false;
    }

    /// Rests the pointer on the control until the popup shows its content.
    bool hover(const char *name);

    /// Rests the pointer on the control until the toolkit has asked it for a tooltip.
    bool restOn(const char *name, const QPoint &offset = {});

    /// Stops the toolkit's requests for tooltips for the rest of the test. Otherwise, a control
    /// without content could hide the popup early.
    static void stopAskingForTooltips();

    /// Lets the toolkit ask for tooltips after a pause of \a delay ms for the rest of the test.
    static void askForTooltipsAfter(int delay);

    /// Opens a new window of the host at \a position, or on the whole output on Wayland.
    void showWindow(const QPoint &position);

    PackageFolder m_folder;
    PackageFolder m_german; // "a" and "unknown" once more, in German
    std::unique_ptr<HostWindow> m_window;
    std::unique_ptr<RecordingHost> m_host;
};
