// SPDX-License-Identifier: Apache-2.0
#include "HelpWindow.h"

#include <QtCore/QFile>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>

namespace {

const QLatin1String Guide("help/guide.html");

} // namespace

HelpWindow::HelpWindow(QWidget *parent)
    : QDialog(parent)
    , m_browser(new QTextBrowser)
{
    setWindowTitle(tr("Guide"));
    resize(420, 460);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_browser);
    m_browser->setFrameShape(QFrame::NoFrame);
    m_browser->setOpenExternalLinks(true);
}

bool HelpWindow::showTopic(const QString &topic)
{
    QFile guide(QStringLiteral(":/") + Guide);
    if (!guide.open(QIODevice::ReadOnly))
        return false;
    if (!guide.readAll().contains("name=\"" + topic.toUtf8() + "\""))
        return false;
    present(); // first: the position of a topic depends on the window's width
    m_browser->setSource(QUrl(QStringLiteral("qrc:/") + Guide + QLatin1Char('#') + topic));
    return true;
}

bool HelpWindow::showFile(const QString &path)
{
    if (!QFile::exists(QStringLiteral(":/") + path))
        return false;
    m_browser->setSource(QUrl(QStringLiteral("qrc:/") + path));
    present();
    return true;
}

void HelpWindow::showPage(const QString &html)
{
    m_browser->setHtml(html);
    present();
}

void HelpWindow::present()
{
    show();
    raise();
}
