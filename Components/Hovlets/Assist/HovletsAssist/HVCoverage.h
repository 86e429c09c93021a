// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HovletsAssist/HVAssistExport.h>

#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace Hovlets {

class HVInterface;

/// Options for the construction of an HVCoverage.
struct HVCoverageSettings
{
    /// File to which the report is written when the program ends; relative to the working
    /// directory. If empty, none is written. A failure is silent: call HVCoverage::writeReport() to
    /// see it.
    QString reportFile;

    /// Outlines the controls: solid green with an entry, dashed red without.
    bool overlay = false;

    /// Names of classes to skip, with derived classes and everything inside their widgets.
    QStringList ignoredClasses { QStringLiteral("QColorDialog"),   QStringLiteral("QErrorMessage"),
                                 QStringLiteral("QFileDialog"),    QStringLiteral("QFontDialog"),
                                 QStringLiteral("QInputDialog"),   QStringLiteral("QMessageBox"),
                                 QStringLiteral("QProgressDialog") };
};

/*!
 * \brief Finds controls without an entry and entries without a control in a running host.
 *
 * This is a tool for developers: create it when a command-line option or a debug build asks for it,
 * not for every user. Use the program, then read the report. docs/assist.md defines what counts as
 * a control and describes the report.
 *
 * Create it after the host's interface and delete it before. Once the interface is gone, it does
 * nothing.
 *
 * It watches the application's events and walks the windows within 50 ms after something was shown.
 * A walk calls HVInterface::keyForObject() for each visible widget and looks up each new key once.
 * The look-up takes as long as that of a hover and sends the same messages of level 300; apart from
 * that, a walk takes some microseconds per widget. With the overlay, layout changes start a walk,
 * too, and each window has one additional child widget, which receives no events. Only a report
 * reads the keys of all entries.
 *
 * GUI thread only.
 */
class HOVLETS_ASSIST_EXPORT HVCoverage : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVCoverage)

public:
    /// Starts to watch the application. The interface is not owned; the settings are copied.
    explicit HVCoverage(HVInterface &host, const HVCoverageSettings &settings = {},
                        QObject *parent = nullptr);

    /// Writes the report unless the end of the program has already done so.
    ~HVCoverage() override;

    /// Walks the visible windows. Happens automatically after something was shown.
    void walk();

    /// Walks the visible windows and returns the report so far, which may take seconds with much
    /// content. Empty if the interface no longer exists.
    QJsonObject report();

    /*!
     * Writes report() to \a file, replacing an existing one.
     * \return false if writing failed or the interface no longer exists
     */
    bool writeReport(const QString &file);

    /// Whether controls are outlined. The initial value is HVCoverageSettings::overlay.
    [[nodiscard]] bool isOverlayVisible() const;

    /// Shows or hides the outlines.
    void setOverlayVisible(bool visible);

protected:
    /// Watches all events of the application and consumes none.
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void walkSoon();

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
