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
 * \brief A popup with a view, fed with content by hand: no hovering, no look-ups.
 *
 * There is one control, a top-level window at (300, 300) of 100 x 30, and the mouse rests on it.
 */
class PopupBench
{
public:
    PopupBench();
    ~PopupBench();

    /// The settings in force.
    HVContext &context() { return host->manager()->context(); }

    /// Writes a user interface and returns its path; the default one is 200 x 100.
    QString ui(const QByteArray &name = "Default.qml",
               const QByteArray &qml = PackageFolder::userInterface(200, 100)) const;

    /// A content entry for \a key below a root, run by the QML file \a ui. The popup owns it.
    Hovlets::HVXmlElement *content(const QString &key, const QString &ui = QString()) const;

    /// Shows new content for the control at \a position.
    void show(const QPoint &position = { 100, 100 });

    /// A point of the screen where nothing is safe, and the mouse moved there.
    static QPoint away();
    static void moveMouseAway();

    /// Whether the countdown to hiding runs, and how long it is; -1 when it does not run.
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

/// The manager's own popup, as a hover makes it, for what only that one can do: be pinned.
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
