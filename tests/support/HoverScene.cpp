// SPDX-License-Identifier: Apache-2.0
#include "HoverScene.h"

#include <QtCore/QDir>
#include <QtGui/QCursor>
#include <QtGui/QHelpEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

using namespace Hovlets;

Control::Control(const QString &key, QWidget *parent)
    : QWidget(parent)
{
    setObjectName(key);
}

bool Control::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip)
        ++toolTips;
    else if (event->type() == QEvent::MouseButtonPress)
        ++presses;
    return QWidget::event(event);
}

HoverScene::HoverScene()
    : control(new Control(QStringLiteral("a"), &window))
{
    QCursor::setPos(780, 780);
    packages.addPackage(QStringLiteral("Scene"), { QStringLiteral("a"), QStringLiteral("b") });
    m_settings.set(HVKeyTrackHover, true);
    m_settings.set(HVKeyHideDelay, 0);
    m_settings.set(HVKeyHideFadeDuration, 0);
    m_settings.set(HVKeyMessageLevel, HVMessageDebug);
    control->setGeometry(0, 0, 50, 50);
    window.setGeometry(0, 0, 100, 100);
    window.show();
}

HoverScene::~HoverScene()
{
    QToolTip::hideText();
    m_host.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void HoverScene::start(HVIndex *index)
{
    m_host = std::make_unique<RecordingHost>(m_settings, QStringList { packages.path() }, index);
    m_host->forgetMessages();
}

RecordingHost &HoverScene::host()
{
    if (!m_host)
        start();
    return *m_host;
}

HVContext &HoverScene::context()
{
    return m_host ? m_host->manager()->context() : m_settings;
}

QString HoverScene::shownKey()
{
    const HVXmlElement *content = view() ? view()->content() : nullptr;
    return content ? content->attribute(QStringLiteral("key")) : QString();
}

bool HoverScene::show(const QString &key, const QPoint &position)
{
    return manager().show(key, position, control);
}

bool HoverScene::rest(Control &widget, const QPoint &position)
{
    const int before = widget.toolTips;
    QHelpEvent event(QEvent::ToolTip, widget.mapFromGlobal(position), position);
    QApplication::sendEvent(&widget, &event);
    return widget.toolTips == before;
}

HVWidget *HoverScene::pin()
{
    HVWidget *pinned = popup();
    pinned->view()->setReserved(true);
    return pinned;
}

MadeUpIndex::MadeUpIndex(Answer answer)
    : HVIndex(nullptr, {})
    , answer(std::move(answer))
{
    if (!this->answer) {
        this->answer = [](const QString &key, QString &path, int &depth, HVXmlElement *&root) {
            path = QDir::tempPath();
            depth = 1;
            root = new HVXmlElement;
            return entry(key, root);
        };
    }
}

HVXmlElement *MadeUpIndex::retrieve(const QString &key, const QLocale &locale, QString &path,
                                    int &depth, HVXmlElement *&root)
{
    asked += key + QLatin1Char(' ') + locale.name();
    return answer(key, path, depth, root);
}

HVXmlElement *MadeUpIndex::entry(const QString &key, QObject *parent)
{
    auto *element = new HVXmlElement(parent);
    element->setAttribute(QStringLiteral("key"), key);
    return element;
}
