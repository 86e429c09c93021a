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
 * \brief A window of a host, and what the toolkit asked tooltips for.
 *
 * Of its buttons "a", "b" and "disabled", which is, have content; "unknown" has a tooltip of its
 * own, "silent" nothing.
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

/// A test with such a window on the screen, a host that watches the mouse, and the real pointer.
class HoverTest : public QObject
{
    Q_OBJECT

public:
    HoverTest();

private Q_SLOTS:
    void init();
    void cleanup();

protected:
    Hovlets::HVWidget *popup() const { return m_host->popup(); }
    QTimer *timer() const;
    QString title() const;
    bool isShowing(const char *key) const;
    static bool isToolTipShown(const QString &text);

    /*!
     * Rests the pointer at \a position until \a happened. As a hand does, it moves a bit now and
     * then: the toolkit asks for no tooltip when a window comes up after the last move.
     */
    template <typename Condition> static bool rest(const QPoint &position, Condition happened)
    {
        for (int i = 0; i < 10; ++i) {
            Pointer::moveTo(position + QPoint(i % 2, 0));
            if (QTest::qWaitFor(happened, 1000))
                return true;
        }
        return false;
    }

    /// Rests the pointer until the popup shows the content of that control.
    bool hover(const char *name);

    /// Rests the pointer until the toolkit has asked that control for a tooltip.
    bool restOn(const char *name, const QPoint &offset = {});

    /// The toolkit asks for no tooltip in the rest of the test: a control without content does not
    /// hide the popup before its time.
    static void stopAskingForTooltips();

    /// Shows a new window of the host there.
    void showWindow(const QPoint &position);

    PackageFolder m_folder;
    PackageFolder m_german; // the same control "a", and "unknown", in German
    std::unique_ptr<HostWindow> m_window;
    std::unique_ptr<RecordingHost> m_host;
};
