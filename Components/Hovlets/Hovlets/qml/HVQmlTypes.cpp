// SPDX-License-Identifier: Apache-2.0
#include "HVQmlTypes.h"

#include "HVClipComponent.h"
#include "HVPictureComponent.h"
#include "HVScrollBarComponent.h"
#include "HVStyledRectangleComponent.h"
#include "HVVideoComponent.h"
#include "HVXmlElement.h"

#include <QtQml/qqml.h>

namespace Hovlets {

namespace {

constexpr auto Module = "com.zandor.hovlets.qml";

template <typename Type> void registerType(const char *name)
{
    // A type that is registered twice is ambiguous in QML.
    if (qmlTypeId(Module, 1, 0, name) < 0)
        qmlRegisterType<Type>(Module, 1, 0, name);
}

} // namespace

void registerQmlTypes()
{
    registerType<HVVideoComponent>("HVVideoComponent");
    registerType<HVXmlElement>("HVXmlElement");
    registerType<HVStyledRectangleComponent>("HVStyledRectangle");
    registerType<HVScrollBarComponent>("HVScrollBar");
    registerType<HVPictureComponent>("HVPicture");
    registerType<HVClipComponent>("HVClip");
}

} // namespace Hovlets
