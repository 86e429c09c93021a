// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"
#include "RecordingHost.h"

#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPropertyAnimation>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <memory>

/*!
 * \brief A popup with a view. The test supplies the content; nothing hovers or looks keys up.
 *
 * The only control is a top-level window at (300, 300) of 100 x 30; the mouse rests on it.
 */
class PopupBench
{
public:
    PopupBench();
    ~PopupBench();

    HVContext &context() { return host->manager()->context(); }

    /// Writes a user interface and returns its path. The default one is 200 x 100.
    QString ui(const QByteArray &name = "Default.qml",
               const QByteArray &qml = PackageFolder::userInterface(200, 100)) const;

    /// An entry for \a key below a root, for the user interface \a ui. The popup owns it.
    Hovlets::HVXmlElement *content(const QString &key, const QString &ui = QString()) const;

    /// Shows new content for the control at \a position.
    void show(const QPoint &position = { 100, 100 });

    /// Moves the mouse out of the safe region and returns its new position.
    static QPoint away();
    static void moveMouseAway();

    /// The remaining duration of the countdown to hiding in ms; -1 if it does not run.
    int countdown() const;
    QTimer *hideTimer() const;
    QPropertyAnimation *fade() const;

private:
    std::unique_ptr<QObject> m_roots; // outlive the popup

public:
    PackageFolder folder;
    HVContext settings;
    std::unique_ptr<RecordingHost> host;
    QWidget control;
    std::unique_ptr<Hovlets::HVWidget> popup;
    Hovlets::HVView *view;
};

/// The manager's own popup, as a hover creates it. Only this one can be pinned.
class HoverBench
{
public:
    HoverBench();

    bool show(const QString &key = QStringLiteral("a"));

    Hovlets::HVWidget *popup() { return host->popup(); }
    Hovlets::HVView *view() { return host->view(); }
    HVContext &context() { return host->manager()->context(); }

    PackageFolder folder;
    HVContext settings;
    QWidget window;
    std::unique_ptr<QWidget> control;
    std::unique_ptr<RecordingHost> host;
};
