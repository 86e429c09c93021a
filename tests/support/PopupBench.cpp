// SPDX-License-Identifier: Apache-2.0
#include "PopupBench.h"

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtTest/QtTest>

using namespace Hovlets;

PopupBench::PopupBench()
{
    // Only tests of fading need fades.
    settings.set(HVKeyHideFadeDuration, 0);
    settings.set(HVKeyMessageLevel, HVMessageDebug);
    host = std::make_unique<RecordingHost>(settings, QStringList());
    control.setGeometry(300, 300, 100, 30);
    control.show();
    if (!QTest::qWaitForWindowExposed(&control))
        qFatal("the control's window did not appear");
    QCursor::setPos(control.geometry().center());
    m_roots = std::make_unique<QObject>();
    popup = std::make_unique<HVWidget>(host->manager(), nullptr, nullptr);
    // Window systems do not frame tooltip windows, but the offscreen platform does by default.
    popup->setWindowFlag(Qt::FramelessWindowHint);
    view = new HVView(host->manager(), popup.get());
    popup->setView(view);
    host->forgetMessages();
}

PopupBench::~PopupBench() = default;

QString PopupBench::ui(const QByteArray &name, const QByteArray &qml) const
{
    return folder.add(QString::fromUtf8(name), qml);
}

HVXmlElement *PopupBench::content(const QString &key, const QString &ui) const
{
    auto *root = new HVXmlElement(m_roots.get());
    root->setTagName(QStringLiteral("hovlets"));
    auto *entry = new HVXmlElement(root);
    entry->setTagName(QStringLiteral("hovlet"));
    entry->setAttribute(QStringLiteral("key"), key);
    entry->setAttribute(QStringLiteral("ui"), ui.isNull() ? this->ui() : ui);
    auto *title = new HVXmlElement(entry);
    title->setTagName(QStringLiteral("title"));
    title->appendContent(QStringLiteral("Title of %1").arg(key));
    return entry;
}

void PopupBench::show(const QPoint &position)
{
    popup->showWithContent(&control, position, content(QStringLiteral("a")), folder.path());
}

QPoint PopupBench::away()
{
    return QGuiApplication::primaryScreen()->geometry().bottomRight() - QPoint(5, 5);
}

void PopupBench::moveMouseAway()
{
    QCursor::setPos(away());
}

int PopupBench::countdown() const
{
    return hideTimer()->isActive() ? hideTimer()->interval() : -1;
}

QTimer *PopupBench::hideTimer() const
{
    return popup->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
}

QPropertyAnimation *PopupBench::fade() const
{
    return popup->findChild<QPropertyAnimation *>(QString(), Qt::FindDirectChildrenOnly);
}

HoverBench::HoverBench()
{
    settings.set(HVKeyHideFadeDuration, 0);
    folder.addPackage(QStringLiteral("Pack"), { QStringLiteral("a"), QStringLiteral("b") });
    window.setGeometry(300, 300, 100, 100);
    control = std::make_unique<QWidget>(&window);
    control->setGeometry(0, 0, 50, 50);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        qFatal("the window did not appear");
    QCursor::setPos(control->mapToGlobal(QPoint(25, 25)));
    host = std::make_unique<RecordingHost>(settings, QStringList { folder.path() });
}

bool HoverBench::show(const QString &key)
{
    return host->manager()->show(key, QPoint(100, 100), control.get());
}
