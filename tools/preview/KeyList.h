// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QWidget>

class QLineEdit;
class QTreeWidget;

namespace HovletsTool {

class PreviewContent;

/// The list of all keys, with a search field above it.
class KeyList : public QWidget
{
    Q_OBJECT

public:
    explicit KeyList(QWidget *parent = nullptr);

    /// Lists the keys of \a content and selects \a current, without emitting chosen().
    void setKeys(const PreviewContent &content, const QString &current);

    /// Shows the number of findings beside each key.
    void setFindings(const PreviewContent &content);

    /// Selects \a key. Returns false when it is not in the list.
    bool choose(const QString &key);

    void focusSearch();

Q_SIGNALS:
    void chosen(const QString &key);

private:
    void filter(const QString &text);
    void move(int steps);

    QLineEdit *m_search;
    QTreeWidget *m_keys;
};

} // namespace HovletsTool
