// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVIndex.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"
#include "RecordingHost.h"

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

#include <functional>
#include <memory>

/// A widget that records the tooltip requests and clicks that reach it.
class Control : public QWidget
{
    Q_OBJECT

public:
    explicit Control(const QString &key = QString(), QWidget *parent = nullptr);

    int toolTips = 0;
    int presses = 0;

protected:
    bool event(QEvent *event) override;
};

/*!
 * \brief A host whose manager watches the mouse, and a window of 100 x 100 with a control on it.
 *
 * The window is in the screen's top-left corner, far from where popups show, and the mouse rests at
 * the bottom right. Popups hide without a fade and never by themselves. The package has the keys
 * "a" and "b".
 */
class HoverScene
{
public:
    HoverScene();
    ~HoverScene();

    /// Starts the library. The first call of host() does so otherwise.
    void start(Hovlets::HVIndex *index = nullptr);

    RecordingHost &host();
    Hovlets::HVManager &manager() { return *host().manager(); }

    /// The initial settings before the start, the current ones afterwards.
    HVContext &context();

    Hovlets::HVWidget *popup() { return host().popup(); }
    Hovlets::HVView *view() { return host().view(); }

    bool isShowing() { return popup() && popup()->isVisible(); }

    /// The key of the popup's content; null without content.
    QString shownKey();

    /// Shows \a key for the control, like a host that tracks the mouse by itself.
    bool show(const QString &key, const QPoint &position = Position);

    /// Rests the mouse on \a widget; returns true if the widget did not receive the event.
    static bool rest(Control &widget, const QPoint &position = Position);

    /// Pins the popup and returns it.
    Hovlets::HVWidget *pin();

    /// The cursor position for which popups show; they open below it, to the right.
    static constexpr QPoint Position { 300, 300 };

    PackageFolder packages;
    Control window;
    Control *control;

private:
    HVContext m_settings;
    std::unique_ptr<RecordingHost> m_host;
};

/// An index with content that the test defines.
class MadeUpIndex : public Hovlets::HVIndex
{
    Q_OBJECT

public:
    using Answer = std::function<Hovlets::HVXmlElement *(const QString &key, QString &path,
                                                         int &depth, Hovlets::HVXmlElement *&root)>;

    explicit MadeUpIndex(Answer answer = {});

    Hovlets::HVXmlElement *retrieve(const QString &key, const QLocale &locale, QString &path,
                                    int &depth, Hovlets::HVXmlElement *&root) override;

    /// A new entry for \a key.
    static Hovlets::HVXmlElement *entry(const QString &key, QObject *parent = nullptr);

    Answer answer; // by default, an entry below a root for every key
    QStringList asked; // "key locale"
};
