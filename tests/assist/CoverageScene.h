// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "AssistScene.h"

#include <HovletsAssist/HVCoverage.h>

#include <QtCore/QJsonObject>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtWidgets/QPushButton>

#include <memory>

/// The coverage of a window with a covered and a missing control.
class CoverageScene : public AssistScene
{
public:
    explicit CoverageScene(const Hovlets::HVCoverageSettings &wanted = {})
    {
        createHost();
        coverage = std::make_unique<Hovlets::HVCoverage>(*host, wanted);
        window.setWindowTitle(text("Window"));
        covered = add<QPushButton>("a");
        missing = add<QPushButton>("nobody");
        missing->setText(text("&No one"));
        window.resize(300, 300);
    }

    [[nodiscard]] QJsonObject report() const { return coverage->report(); }

    [[nodiscard]] QColor cornerOf(const QWidget *widget)
    {
        const QImage image = window.grab().toImage();
        return image.pixel(widget->geometry().topLeft() + QPoint(1, 1));
    }

    std::unique_ptr<Hovlets::HVCoverage> coverage;
    QPushButton *covered;
    QPushButton *missing;
};
