// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointerRest.h"
#include "RecordedFile.h"

#include <QtWidgets/QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace Hovlets {

class AttachedHost;

/*!
 * \brief A window that shows the key of what is under the mouse, and writes entries for it.
 *
 * It follows the mouse to wherever it rests in the program. While it has text that is not saved, it
 * stays with its control. GUI thread only.
 */
class Recorder : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Recorder)

public:
    /// The host must outlive it.
    Recorder(AttachedHost &host, const RecordedFile &file);

    /// The control file of a package to which entries for a locale are written.
    static RecordedFile fileIn(const QString &package, const QString &locale);

private:
    void showControl(QWidget *widget, const QPoint &position);
    void showEntry(const QString &key);
    void save();
    void discard();
    void setModified(bool isModified);
    void followModalWindow();

    AttachedHost &m_host;
    RecordedFile m_file;
    PointerRest *m_rest;
    bool m_isModified = false;
    bool m_isFilling = false; // the fields change, but not by the author

    QLabel *m_path;
    QComboBox *m_key;
    QLabel *m_reason;
    QLineEdit *m_title;
    QPlainTextEdit *m_text;
    QPushButton *m_save;
    QPushButton *m_discard;
    QLabel *m_status;
};

} // namespace Hovlets
