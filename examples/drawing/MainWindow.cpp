// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "Actions.h"
#include "Canvas.h"
#include "ColorPanel.h"
#include "Document.h"
#include "DrawingHost.h"
#include "HelpWindow.h"
#include "LayersPanel.h"
#include "SettingsPanel.h"
#include "Theme.h"

#include <QtCore/QSet>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QUndoView>
#include <QtWidgets/QVBoxLayout>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

namespace {

constexpr qreal ZoomStep = 1.25;
constexpr int MessageTime = 6000; // ms

QGroupBox *grouped(const QString &title, QWidget *content)
{
    auto *group = new QGroupBox(title);
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(content);
    return group;
}

QDockWidget *dock(const QString &title, const QString &name, QWidget *content)
{
    auto *dock = new QDockWidget(title);
    dock->setObjectName(name);
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dock->setWidget(content);
    return dock;
}

} // namespace

MainWindow::MainWindow(DrawingHost &host, HelpWindow &help, Hovlets::HVKeyboardAccess &keyboard,
                       bool dark)
    : m_host(host)
    , m_help(help)
    , m_document(new Document(this))
    , m_canvas(new Canvas(m_document))
    , m_actions(new Actions(m_document->history(), this))
    , m_position(new QLabel)
    , m_zoom(new QLabel)
{
    setWindowTitle(tr("Drawing"));
    auto *area = new QScrollArea;
    area->setWidget(m_canvas);
    area->setAlignment(Qt::AlignCenter);
    area->setBackgroundRole(QPalette::Mid);
    setCentralWidget(area);
    m_host.setCanvas(m_canvas);

    addStatusBar();
    connectCanvas();
    addPanels();
    addSettings(keyboard);
    connectActions();
    m_actions->get(QStringLiteral("dark"))->setChecked(dark);
    m_actions->get(QStringLiteral("pen"))->trigger();
}

void MainWindow::openFile(const QString &file)
{
    if (!m_document->load(file)) {
        statusBar()->showMessage(tr("%1 is not a picture").arg(file), MessageTime);
        return;
    }
    m_file = file;
}

void MainWindow::addPanels()
{
    auto *colors = new ColorPanel;
    connect(colors, &ColorPanel::colorChanged, this, [this](const QColor &color) {
        m_canvas->setColor(color);
        m_host.setGlobalProperty(QStringLiteral("color"), color.name());
    });
    connect(colors, &ColorPanel::widthChanged, this, [this](int width) {
        m_canvas->setPenWidth(width);
        m_host.setGlobalProperty(QStringLiteral("penWidth"), width);
    });
    colors->start();

    auto *history = new QUndoView(m_document->history());
    history->setObjectName(QStringLiteral("history"));
    history->setEmptyLabel(tr("Start"));

    auto *panel = new QWidget;
    auto *layout = new QVBoxLayout(panel);
    layout->addWidget(grouped(tr("Stroke"), colors));
    layout->addWidget(grouped(tr("Layers"), new LayersPanel(m_document)));
    layout->addWidget(grouped(tr("History"), history));
    addDockWidget(Qt::RightDockWidgetArea, dock(tr("Panels"), QStringLiteral("panels"), panel));
}

void MainWindow::addSettings(Hovlets::HVKeyboardAccess &keyboard)
{
    QDockWidget *settings = dock(tr("Popup settings"), QStringLiteral("settingsDock"),
                                 new SettingsPanel(m_host, keyboard, this));
    addDockWidget(Qt::LeftDockWidgetArea, settings);
    settings->hide();
    connect(m_actions->get(QStringLiteral("settings")), &QAction::toggled, settings,
            &QDockWidget::setVisible);
}

void MainWindow::addStatusBar()
{
    m_zoom->setObjectName(QStringLiteral("zoomLevel"));
    m_position->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000, 0000")));
    statusBar()->addPermanentWidget(m_position);
    statusBar()->addPermanentWidget(m_zoom);
    statusBar()->showMessage(tr("Rest the mouse on a control to learn about it."));
    connect(&m_host, &DrawingHost::opened, this,
            [this](const QString &what) { statusBar()->showMessage(what, MessageTime); });
}

void MainWindow::connectCanvas()
{
    connect(m_actions, &Actions::toolChosen, m_canvas, &Canvas::setTool);
    connect(m_canvas, &Canvas::hovered, this, [this](const QPoint &position) {
        m_position->setText(tr("%1, %2").arg(position.x()).arg(position.y()));
    });
    const auto showZoom = [this](qreal zoom) {
        m_zoom->setText(tr("%1 %").arg(qRound(zoom * 100)));
        m_host.setGlobalProperty(QStringLiteral("zoom"), m_zoom->text());
    };
    connect(m_canvas, &Canvas::zoomChanged, this, showZoom);
    showZoom(m_canvas->zoom());
}

void MainWindow::on(const QString &action, void (MainWindow::*slot)())
{
    connect(m_actions->get(action), &QAction::triggered, this, slot);
}

void MainWindow::connectActions()
{
    on(QStringLiteral("open"), &MainWindow::open);
    on(QStringLiteral("save"), &MainWindow::save);
    on(QStringLiteral("export"), &MainWindow::exportPng);
    on(QStringLiteral("zoomIn"), &MainWindow::zoomIn);
    on(QStringLiteral("zoomOut"), &MainWindow::zoomOut);
    on(QStringLiteral("zoomReset"), &MainWindow::zoomReset);
    on(QStringLiteral("guide"), &MainWindow::showGuide);
    on(QStringLiteral("news"), &MainWindow::showNews);
    connect(m_actions->get(QStringLiteral("clear")), &QAction::triggered, m_document,
            &Document::clear);
    connect(m_actions->get(QStringLiteral("quit")), &QAction::triggered, qApp,
            &QApplication::closeAllWindows);
    connect(m_actions->get(QStringLiteral("dark")), &QAction::toggled, this, &MainWindow::setDark);
}

void MainWindow::open()
{
    const QString file =
            QFileDialog::getOpenFileName(this, tr("Open"), m_file, tr("Pictures (*.png *.jpg)"));
    if (!file.isEmpty())
        openFile(file);
}

void MainWindow::save()
{
    if (m_file.isEmpty())
        exportPng();
    else
        saveTo(m_file);
}

void MainWindow::exportPng()
{
    const QString file =
            QFileDialog::getSaveFileName(this, tr("Export"), m_file, tr("PNG pictures (*.png)"));
    if (!file.isEmpty())
        saveTo(file);
}

void MainWindow::saveTo(const QString &file)
{
    const bool saved = m_document->save(file);
    statusBar()->showMessage(saved ? tr("Saved %1").arg(file) : tr("Could not save %1").arg(file),
                             MessageTime);
    if (saved)
        m_file = file;
}

void MainWindow::zoomIn()
{
    m_canvas->setZoom(m_canvas->zoom() * ZoomStep);
}

void MainWindow::zoomOut()
{
    m_canvas->setZoom(m_canvas->zoom() / ZoomStep);
}

void MainWindow::zoomReset()
{
    m_canvas->setZoom(1.0);
}

void MainWindow::showGuide()
{
    m_help.showFile(QStringLiteral("help/guide.html"));
}

/// The controls that the key-data file marks as new, with the titles of their hovlets.
void MainWindow::showNews()
{
    QString items;
    QSet<QString> seen;
    const QStringList keys = m_host.keys();
    for (const QString &key : keys) {
        const bool isNew = m_host.hovletAttribute(key, QStringLiteral("since"), {})
                == QApplication::applicationVersion();
        if (!isNew || seen.contains(key))
            continue;
        seen.insert(key);
        const QString title = m_host.hovletAttribute(key, QStringLiteral("title"), key);
        items += QStringLiteral("<li>%1</li>").arg(title.toHtmlEscaped());
    }
    m_help.showPage(tr("<h2>New in %1 %2</h2><ul>%3</ul>")
                            .arg(QApplication::applicationDisplayName(),
                                 QApplication::applicationVersion(), items));
}

void MainWindow::setDark(bool dark)
{
    applyTheme(dark);
    m_actions->refreshIcons();
}
