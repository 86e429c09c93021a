// SPDX-License-Identifier: Apache-2.0
#include "RecordingHost.h"

#include "HVView.h"
#include "HVWidget.h"

using namespace Hovlets;

namespace {

/// Settings for the base class, whose manager takes no part in tests.
HVContext &noSettings()
{
    static HVContext context;
    return context;
}

} // namespace

RecordingHost::RecordingHost(HVContext &context, const QStringList &dataPaths, HVIndex *index)
    : HVInterface(noSettings(), {}, nullptr)
    , m_manager(std::make_unique<HVManager>(this, context, dataPaths, index))
{
}

RecordingHost::~RecordingHost() = default;

HVManager *RecordingHost::manager()
{
    return m_manager.get();
}

HVWidget *RecordingHost::popup()
{
    return m_manager->widget();
}

HVView *RecordingHost::view()
{
    return popup() ? popup()->view() : nullptr;
}

void RecordingHost::forgetMessages()
{
    messages.clear();
}

QStringList RecordingHost::messagesOf(HVMessageType type) const
{
    QStringList texts;
    for (const auto &message : messages) {
        if (message.first == type)
            texts += message.second;
    }
    return texts;
}

QWidget *RecordingHost::createWindow(HVWindowType type)
{
    windowsAskedFor += type;
    return container;
}

bool RecordingHost::openExternalResource(HVExternalResourceType type, const QString &resource)
{
    opened.append({ type, resource });
    if (opening)
        opening();
    return opens;
}

void RecordingHost::handleMessage(HVMessageType type, const QString &message)
{
    messages.append({ type, message });
}

QString RecordingHost::translateString(const QString &text, const QString &context)
{
    return m_manager->translateString(text, context);
}

QString RecordingHost::shortCutForObject(const QString &key, QObject *object,
                                         const QString &contentShortcut)
{
    Q_UNUSED(object)
    shortcutsAskedFor += key;
    return shortcut.isNull() ? contentShortcut : shortcut;
}
