// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QMainWindow>

class Actions;
class Canvas;
class Document;
class DrawingHost;
class HelpWindow;
class QLabel;

namespace Hovlets {
class HVKeyboardAccess;
}

/// \brief The main window: canvas, panels and the commands of the menus.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// \a host, \a help and \a keyboard must outlive the window.
    MainWindow(DrawingHost &host, HelpWindow &help, Hovlets::HVKeyboardAccess &keyboard, bool dark);

    void openFile(const QString &file);

private:
    void addPanels();
    void addSettings(Hovlets::HVKeyboardAccess &keyboard);
    void addStatusBar();
    void connectActions();
    void connectCanvas();
    void on(const QString &action, void (MainWindow::*slot)());

    void open();
    void save();
    void exportPng();
    void saveTo(const QString &file);
    void zoomIn();
    void zoomOut();
    void zoomReset();
    void showGuide();
    void showNews();
    void setDark(bool dark);

    DrawingHost &m_host;
    HelpWindow &m_help;
    Document *m_document;
    Canvas *m_canvas;
    Actions *m_actions;
    QLabel *m_position;
    QLabel *m_zoom;
    QString m_file;
};
