// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PreviewContent.h"
#include "Property.h"

#include <QtQml/QQmlError>
#include <QtWidgets/QMainWindow>

class QLabel;
class QTabWidget;

namespace HovletsTool {

class FileWatch;
class FindingView;
class KeyList;
class LookBar;
class PreviewPopup;

struct PreviewOptions
{
    CheckOptions check;
    PopupLook look;
    std::vector<Property> properties;
};

/*!
 * \brief Shows all keys, the popup of the selected key and the findings in its entry.
 *
 * The window follows changes to the files. A key stays selected even while its entry is missing or
 * its file is broken.
 */
class PreviewWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit PreviewWindow(const PreviewOptions &options);
    ~PreviewWindow() override;

    void reload();

    /// Shows the popup for \a key, or why there is none.
    void chooseKey(const QString &key);

private:
    QWidget *makeEntry();
    void makeShortcuts();
    void watchFiles();

    void loadContent();
    void checkContent();
    void changeLook();
    void showKey(const QString &key);
    void showPopup();
    void showSource(const QString &file);
    void listFindings();

    PreviewOptions m_options;
    PreviewContent m_content;
    QString m_key;
    QList<QQmlError> m_errors; // of the current popup

    FileWatch *m_watch;
    LookBar *m_look;
    KeyList *m_keys;
    QLabel *m_source = nullptr;
    PreviewPopup *m_popup = nullptr;
    QTabWidget *m_tabs = nullptr;
    FindingView *m_ofEntry = nullptr;
    FindingView *m_all = nullptr;
};

} // namespace HovletsTool
