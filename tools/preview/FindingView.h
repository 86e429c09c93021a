// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Findings.h"

#include <QtQml/QQmlError>
#include <QtWidgets/QTreeWidget>

namespace HovletsTool {

/// A list of findings. Activating a finding opens its file.
class FindingView : public QTreeWidget
{
    Q_OBJECT

public:
    explicit FindingView(const QString &name, QWidget *parent = nullptr);

    void addFindings(const QList<Finding> &findings);

    /// Adds the errors and messages of a popup.
    void addErrors(const QList<QQmlError> &errors);
    void addComplaints(const QStringList &complaints);

private:
    QTreeWidgetItem *addRow(const QString &code, const QString &place, const QString &text,
                            const QString &file);
};

} // namespace HovletsTool
