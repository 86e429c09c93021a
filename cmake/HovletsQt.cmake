# SPDX-License-Identifier: Apache-2.0
# Finds Qt and its modules. The SAX reader is in a different module in each major version.

set(_names Qt6 Qt5)
if(HOVLETS_QT_MAJOR)
    set(_names Qt${HOVLETS_QT_MAJOR})
endif()
find_package(QT NAMES ${_names} REQUIRED COMPONENTS Core)

set(HOVLETS_QT Qt${QT_VERSION_MAJOR})
if(QT_VERSION_MAJOR EQUAL 6)
    set(HOVLETS_QT_MINIMUM 6.4)
    set(HOVLETS_QT_SAX Core5Compat)
else()
    set(HOVLETS_QT_MINIMUM 5.15)
    set(HOVLETS_QT_SAX Xml)
endif()
find_package(${HOVLETS_QT} ${HOVLETS_QT_MINIMUM} REQUIRED
    COMPONENTS Core Gui Widgets Qml Quick QuickWidgets ${HOVLETS_QT_SAX})
message(STATUS "Hovlets is built with Qt ${QT_VERSION}")
