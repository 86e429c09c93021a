// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PreviewContent.h"
#include "Property.h"

#include <QtQml/QQmlError>
#include <QtWidgets/QMainWindow>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace HovletsTool {

class FileWatch;
class PreviewPopup;

struct PreviewOptions
{
    CheckOptions check;
    PopupLook look;
    std::vector<Property> properties;
};

/*!
 * \brief All keys, the popup of one of them, and what is found in it.
 *
 * Follows the files: what an author saves is shown at once, broken or not, and the choice of a key
 * outlives its entry.
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
    QWidget *makeKeys();
    QWidget *makeEntry();
    void makeToolBar();

    void loadContent();
    void checkContent();
    void changeLook();
    void listLocales();
    void listKeys();
    void listFindings();
    void addFindings(QTreeWidget *list, const QList<Finding> &findings);
    void filterKeys(const QString &text);
    void moveInKeys(int steps);
    void showKey(const QString &key);
    void countFindings();
    void showPopup();

    PreviewOptions m_options;
    PreviewContent m_content;
    QString m_key;
    QList<QQmlError> m_errors; // of the popup that is chosen

    FileWatch *m_watch;
    QComboBox *m_locale = nullptr;
    QComboBox *m_palette = nullptr;
    QCheckBox *m_simple = nullptr;
    QLineEdit *m_search = nullptr;
    QTreeWidget *m_keys = nullptr;
    QLabel *m_source = nullptr;
    PreviewPopup *m_popup = nullptr;
    QTabWidget *m_tabs = nullptr;
    QTreeWidget *m_ofEntry = nullptr;
    QTreeWidget *m_all = nullptr;
};

} // namespace HovletsTool
