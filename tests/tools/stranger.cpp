// SPDX-License-Identifier: Apache-2.0
// A program that was built without Hovlets. It rests the mouse on its button until a hovlet shows.
//
//   stranger [--exit N] [--leave N] [--wait MS] [--controls 1]
//
// Ends with status 0 when a hovlet shows, with 3 if none does in time, or at once with N.
// With --leave, it calls exit(N) in its event loop when a hovlet shows. With --controls, it has
// controls of every kind, and tips for some of them.

#include <QtCore/QTimer>
#include <QtGui/QCursor>
#include <QtWidgets/QtWidgets>

#include <cstdio>
#include <cstdlib>

namespace {

bool isHovletVisible()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        if (window->isVisible() && window->inherits("Hovlets::HVWidget"))
            return true;
    }
    return false;
}

int valueOf(const char *option, int otherwise)
{
    const QStringList arguments = QApplication::arguments();
    const auto index = arguments.indexOf(QLatin1String(option));
    return index < 0 ? otherwise : arguments.value(index + 1).toInt();
}

QAction *addAction(QMenu &menu, const char *text, const char *name = "")
{
    QAction *action = menu.addAction(QLatin1String(text));
    action->setObjectName(QLatin1String(name));
    return action;
}

void addMenus(QMainWindow &window)
{
    QMenu *file = window.menuBar()->addMenu(QStringLiteral("&File"));
    QAction *save = addAction(*file, "&Save...", "actionSave");
    save->setShortcut(QKeySequence(QStringLiteral("Ctrl+S")));
    save->setToolTip(QStringLiteral("Writes the file to the disk. Asks for a name first."));
    save->setStatusTip(QStringLiteral("Write the file"));
    save->setWhatsThis(QStringLiteral("<p>Keeps a <b>copy</b>.</p>"));
    QPixmap icon(16, 16);
    icon.fill(Qt::red);
    save->setIcon(icon);
    constexpr int LongerThanAnyFileName = 300;
    addAction(*file, "Long", QByteArray(LongerThanAnyFileName, 'x').constData())->setIcon(icon);
    file->addSeparator();
    QMenu *recent = file->addMenu(QStringLiteral("Open &Recent"));
    addAction(*recent, "&Clear List");
}

/// The controls in the window's centre.
QWidget *makeForm()
{
    auto *tabs = new QTabWidget;
    tabs->setObjectName(QStringLiteral("tabs"));
    auto *page = new QGroupBox(QStringLiteral("Pa&per"));
    page->setObjectName(QStringLiteral("paper"));
    auto *layout = new QFormLayout(page);
    auto *width = new QSpinBox;
    width->setObjectName(QStringLiteral("width"));
    layout->addRow(QStringLiteral("&Width:"), width);
    auto *name = new QLineEdit(QStringLiteral("typed"));
    name->setObjectName(QStringLiteral("name"));
    name->setToolTip(QStringLiteral("Name of the paper"));
    layout->addRow(name);
    layout->addRow(new QLabel(QStringLiteral("Only words")));
    layout->addRow(new QCheckBox(QStringLiteral("Keep &ratio")));
    auto *table = new QTableWidget(2, 2);
    table->setObjectName(QStringLiteral("table"));
    table->setHorizontalHeaderLabels({ QStringLiteral("Name"), QStringLiteral("Size") });
    table->horizontalHeaderItem(1)->setToolTip(QStringLiteral("Size in bytes"));
    layout->addRow(table);
    tabs->addTab(page, QStringLiteral("Pa&ge"));
    tabs->addTab(new QWidget, QStringLiteral("Colours"));
    tabs->setTabToolTip(1, QStringLiteral("Colours of the lines"));
    return tabs;
}

void addControls(QMainWindow &window)
{
    addMenus(window);
    window.setCentralWidget(makeForm());
    auto *dock = new QDockWidget(QStringLiteral("Layers"));
    dock->setObjectName(QStringLiteral("dockLayers"));
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    auto *dialog = new QDialog(&window); // stays closed
    dialog->setObjectName(QStringLiteral("Options"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, dialog);
    buttons->setObjectName(QStringLiteral("buttonBox"));
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    if (valueOf("--exit", -1) >= 0)
        return valueOf("--exit", -1);

    QMainWindow window;
    window.setObjectName(QStringLiteral("Main"));
    QToolBar bar;
    QAction open(QStringLiteral("Open"));
    open.setObjectName(QStringLiteral("actionOpen"));
    bar.addAction(&open);
    window.addToolBar(&bar);
    if (valueOf("--controls", 0) == 1)
        addControls(window);
    window.resize(300, 200);
    window.show();

    QTimer hand;
    int step = 0;
    QObject::connect(&hand, &QTimer::timeout, [&] {
        if (isHovletVisible()) {
            if (valueOf("--leave", -1) >= 0)
                std::exit(valueOf("--leave", -1));
            return QApplication::exit(0);
        }
        const QWidget *button = bar.widgetForAction(&open);
        if (++step % 20 == 1)
            QCursor::setPos(button->mapToGlobal(QPoint(5 + step / 20 % 2, 5)));
    });
    hand.start(100);
    QTimer::singleShot(valueOf("--wait", 50000), &application, [] { QApplication::exit(3); });
    const int status = QApplication::exec();
    std::printf("variables: %s\n",
                qEnvironmentVariableIsSet("HOVLETS_ATTACH")
                                || qEnvironmentVariableIsSet("QT_QPA_GENERIC_PLUGINS")
                        ? "set"
                        : "unset");
    return status;
}
