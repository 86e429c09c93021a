// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVInterface.h"
#include "PackageFolder.h"
#include "Text.h"

#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>

#include <memory>

/// A host with entries for "a", "b" and "generic", and an empty window.
class AssistScene
{
public:
    AssistScene()
    {
        packages.addPackage(text("Scene"), { text("a"), text("b"), text("generic") });
        settings.set(Hovlets::HVKeyTrackHover, true);
    }

    /// Call when the settings and packages are complete.
    void createHost()
    {
        host = std::make_unique<Hovlets::HVInterface>(settings, QStringList { packages.path() });
    }

    template <typename Widget> Widget *add(const char *name, QWidget *parent)
    {
        auto *widget = new Widget;
        widget->setObjectName(text(name));
        if (!parent->layout())
            new QVBoxLayout(parent);
        parent->layout()->addWidget(widget);
        return widget;
    }

    template <typename Widget> Widget *add(const char *name) { return add<Widget>(name, &window); }

    PackageFolder packages;
    HVContext settings;
    std::unique_ptr<Hovlets::HVInterface> host;
    QWidget window;
};
