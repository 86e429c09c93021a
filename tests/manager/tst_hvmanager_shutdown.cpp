// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVManager.h"
#include "HVView.h"
#include "HVWidget.h"
#include "RecordingHost.h"

#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

using namespace Hovlets;

/// Tests interfaces that are deleted after the event loop has ended, followed by the application.
class tst_HVManagerShutdown : public QObject
{
    Q_OBJECT

public:
    tst_HVManagerShutdown(int &argc, char **argv)
        : m_application(std::make_unique<QApplication>(argc, argv))
    {
    }

private Q_SLOTS:
    void shouldNotFailWhenTheEventLoopWasFaster()
    {
        QPointer<QObject> popup;
        {
            RecordingHost host(m_context, {});
            popup = fill(host).constFirst();
        }
        QVERIFY(popup);
        QCoreApplication::sendPostedEvents(popup, QEvent::DeferredDelete);
        QVERIFY(!popup);
    }

    /// Runs last, because Qt Quick does not work in a second application.
    void shouldDeletePopupsWithTheApplicationAtTheLatest()
    {
        QList<QPointer<QObject>> left;
        for (int i = 0; i < 3; ++i) {
            RecordingHost host(m_context, {});
            left += fill(host);
        }
        QCOMPARE(left.size(), 9);
        QVERIFY(!left.contains(QPointer<QObject>()));
        m_application.reset();
        left.removeAll(QPointer<QObject>());
        QCOMPARE(left.size(), 0);
    }

private:
    /// Creates the popup with its view and content, and returns all three.
    static QList<QPointer<QObject>> fill(RecordingHost &host)
    {
        host.manager()->show(QStringLiteral("unknown"), {}, nullptr);
        host.view()->setContent(new HVXmlElement);
        return { host.popup(), host.view(), host.view()->content() };
    }

    std::unique_ptr<QApplication> m_application;
    HVContext m_context;
};

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    tst_HVManagerShutdown test(argc, argv);
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hvmanager_shutdown.moc"
