// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QDialog>

class QTextBrowser;

/// \brief Shows the program's guide, which is built into it.
class HelpWindow : public QDialog
{
    Q_OBJECT

public:
    explicit HelpWindow(QWidget *parent = nullptr);

    /// The part of the guide about \a topic. False when there is none.
    bool showTopic(const QString &topic);

    /// The page \a path, such as "help/guide.html". False when there is none.
    bool showFile(const QString &path);

    /// A page made at run time.
    void showPage(const QString &html);

private:
    void present();

    QTextBrowser *m_browser;
};
