// SPDX-License-Identifier: Apache-2.0
#include <Hovlets/HVContext.h>
#include <Hovlets/HVInterface.h>

#include <QtGui/QHelpEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

/// Watches the mouse and forwards its events to the library. With HVKeyTrackHover, the library does
/// so itself, and a host needs neither eventFilter() nor the body of the constructor.
class MinimalHost : public Hovlets::HVInterface
{
public:
    MinimalHost(HVContext &context, const QStringList &dataPaths)
        : HVInterface(context, dataPaths)
    {
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseMove:
            return mouseMoveEventFilter(object, static_cast<QMouseEvent *>(event));
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
            return mouseButtonEventFilter(object, static_cast<QMouseEvent *>(event));
        case QEvent::ToolTip: // Sent by Qt when the mouse rests on a control.
            return show(keyForObject(object), static_cast<QHelpEvent *>(event)->globalPos(),
                        object);
        default:
            return false;
        }
    }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);

    HVContext settings;
    settings.set(Hovlets::HVKeyHideDelay, 1000); // ms
    MinimalHost host(settings,
                     { QStringLiteral(DEFAULT_PACKAGES), QStringLiteral(MINIMAL_PACKAGES) });

    QPushButton button(QStringLiteral("Rest the mouse here"));
    button.setObjectName(QStringLiteral("greeting")); // the key of its entry
    button.resize(260, 80);
    button.show();
    return application.exec();
}
