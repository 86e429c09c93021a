// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVInterface.h"
#include "HVManager.h"

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <functional>
#include <memory>

namespace Hovlets {
class HVView;
class HVWidget;
} // namespace Hovlets

/*!
 * \brief A host that records the library's requests and returns the answers that the test sets.
 *
 * HVInterface keeps its manager private. Therefore this class creates a second one, with the given
 * settings and content, for tests to use; the base class's manager has neither.
 */
class RecordingHost : public Hovlets::HVInterface
{
    Q_OBJECT

public:
    RecordingHost(HVContext &context, const QStringList &dataPaths,
                  Hovlets::HVIndex *index = nullptr);

    ~RecordingHost() override;

    Hovlets::HVManager *manager();

    /// The current popup; null before the first show.
    Hovlets::HVWidget *popup();
    Hovlets::HVView *view();

    void forgetMessages();

    /// The texts of the messages of one type.
    QStringList messagesOf(Hovlets::HVMessageType type) const;

    QWidget *createWindow(Hovlets::HVWindowType type) override;
    bool openExternalResource(Hovlets::HVExternalResourceType type,
                              const QString &resource) override;
    void handleMessage(Hovlets::HVMessageType type, const QString &message) override;
    QString translateString(const QString &text, const QString &context) override;
    QString shortCutForObject(const QString &key, QObject *object,
                              const QString &shortcut) override;

    QList<QPair<Hovlets::HVMessageType, QString>> messages;
    QList<QPair<Hovlets::HVExternalResourceType, QString>> opened;
    QList<Hovlets::HVWindowType> windowsAskedFor;
    QStringList shortcutsAskedFor; // keys

    QPointer<QWidget> container; // answer of createWindow()
    bool opens = true; // answer of openExternalResource()
    std::function<void()> opening; // what openExternalResource() does; may be empty
    QString shortcut; // answer of shortCutForObject(); null gives back the content's own

private:
    std::unique_ptr<Hovlets::HVManager> m_manager;
};
