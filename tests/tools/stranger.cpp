// SPDX-License-Identifier: Apache-2.0
// A program that was built without Hovlets. It rests the mouse on its button until a hovlet shows.
//
//   stranger [--exit N] [--leave N] [--wait MS]
//
// Ends with status 0 when a hovlet shows, with 3 if none does in time, or at once with N.
// With --leave, it calls exit(N) in its event loop when a hovlet shows.

#include <QtCore/QTimer>
#include <QtGui/QCursor>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

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
