// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "RecordingHost.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <functional>
#include <utility>

/*!
 * \brief A host that does something unexpected once, while the library waits for its answer.
 *
 * Each function is called at the next request of its kind, and then forgotten.
 */
class InterruptingHost : public RecordingHost
{
public:
    using RecordingHost::RecordingHost;

    QWidget *createWindow(Hovlets::HVWindowType type) override
    {
        interrupt(atWindow);
        return RecordingHost::createWindow(type);
    }

    bool openExternalResource(Hovlets::HVExternalResourceType type,
                              const QString &resource) override
    {
        interrupt(atLink);
        return RecordingHost::openExternalResource(type, resource);
    }

    void handleMessage(Hovlets::HVMessageType type, const QString &message) override
    {
        RecordingHost::handleMessage(type, message);
        if (message.contains(awaitedMessage))
            interrupt(atMessage);
    }

    QString translateString(const QString &text, const QString &context) override
    {
        interrupt(atTranslation);
        return RecordingHost::translateString(text, context);
    }

    QString shortCutForObject(const QString &key, QObject *object,
                              const QString &contentShortcut) override
    {
        const QString answer = RecordingHost::shortCutForObject(key, object, contentShortcut);
        interrupt(atShortcut);
        return answer;
    }

    std::function<void()> atWindow;
    std::function<void()> atLink;
    std::function<void()> atMessage;
    std::function<void()> atTranslation;
    std::function<void()> atShortcut;
    QString awaitedMessage; // part of the message that calls atMessage; empty for any message

    /// Handles events for 20 ms, like a modal dialog.
    static void runEvents()
    {
        QEventLoop loop;
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
    }

private:
    static void interrupt(std::function<void()> &deed)
    {
        const std::function<void()> once = std::exchange(deed, nullptr);
        if (once)
            once();
    }
};
