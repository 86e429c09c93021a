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

/// What an HVCoverage does, at its construction.
struct HVCoverageSettings
{
    /// Where the report goes when the program ends. Empty: nowhere by itself.
    QString reportFile;

    /// Whether to outline the controls: solid green with an entry, dashed red without.
    bool overlay = false;

    /// Widgets of these classes, and of those derived from them, are left out with all in them.
    QStringList ignoredClasses { QStringLiteral("QColorDialog"),   QStringLiteral("QErrorMessage"),
                                 QStringLiteral("QFileDialog"),    QStringLiteral("QFontDialog"),
                                 QStringLiteral("QInputDialog"),   QStringLiteral("QMessageBox"),
                                 QStringLiteral("QProgressDialog") };
};

/*!
 * \brief Finds the controls of a running host that have no entry, and the entries without control.
 *
 * A tool for the authors of a host: make one where a command-line option or a debug build asks for
 * it, not for every user. Use the program, then read the report; docs/assist.md says what counts as
 * a control and what the report holds.
 *
 * Make it after the host's interface and delete it before; without the interface it does nothing.
 * It watches the application's events, and walks the windows shortly after something was shown. A
 * walk asks HVInterface::keyForObject() for each visible widget and looks each new key up once:
 * as long as one hover for each, then some microseconds for each widget. With the overlay it also
 * walks after changes of layout, and each window gets one more child widget, which takes no
 * events. The keys of all entries are read for a report only.
 *
 * GUI thread only. The look-ups send the messages of level 300 that those of hovering send.
 */
class HOVLETS_ASSIST_EXPORT HVCoverage : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVCoverage)

public:
    /*!
     * Begins to watch.
     * \param host the host's interface; not owned
     * \param settings what to do; they are copied
     * \param parent owner of the object, as of any QObject; null for none
     */
    explicit HVCoverage(HVInterface &host, const HVCoverageSettings &settings = {},
                        QObject *parent = nullptr);

    /// Writes the report, unless the end of the program has done so before.
    ~HVCoverage() override;

    /// Walks the windows that are visible now; it happens by itself when something is shown.
    void walk();

    /*!
     * Walks, and tells what was found so far.
     * \return the report; empty when the interface is gone
     */
    QJsonObject report();

    /*!
     * Walks and writes the report.
     * \param file where to; one that is there is replaced
     * \return false when that failed, or the interface is gone
     */
    bool writeReport(const QString &file);

    /*!
     * Whether controls are outlined.
     * \return as HVCoverageSettings::overlay or the last setOverlayVisible() has it
     */
    bool isOverlayVisible() const;

    /*!
     * Outlines the controls, or no longer.
     * \param visible whether to
     */
    void setOverlayVisible(bool visible);

protected:
    /*!
     * Watches the application.
     * \param object whose event it is
     * \param event any event of the application
     * \return false, so that the event goes on to its target
     */
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void walkSoon();

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
