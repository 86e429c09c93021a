// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QDialog>

class QTextBrowser;

/// \brief Shows the guide, which is embedded in the program.
class HelpWindow : public QDialog
{
    Q_OBJECT

public:
    explicit HelpWindow(QWidget *parent = nullptr);

    /// Shows the section about \a topic. Returns false if there is none.
    bool showTopic(const QString &topic);

    /// Shows the page \a path, such as "help/guide.html". Returns false if there is none.
    bool showFile(const QString &path);

    /// Shows a page created at run time.
    void showPage(const QString &html);

private:
    void present();

    QTextBrowser *m_browser;
};
