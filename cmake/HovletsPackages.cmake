# SPDX-License-Identifier: Apache-2.0
# Debian packages of the installed components: run `cpack -G DEB` in the build folder.

string(TOLOWER "${HOVLETS_QT}" _qt)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME hovlets)
set(CPACK_PACKAGE_VENDOR "The Hovlets developers")
set(CPACK_PACKAGE_CONTACT "The Hovlets developers <hovlets@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON) # and has ldconfig run
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    "${CMAKE_CURRENT_BINARY_DIR}/Components/Hovlets/Hovlets"
    "${CMAKE_CURRENT_BINARY_DIR}/Components/Hovlets/Assist")
set(CPACK_COMPONENTS_ALL Runtime Data Headers Dev)
if(TARGET HovletsPlugin)
    list(APPEND CPACK_COMPONENTS_ALL Plugin)
endif()
if(TARGET HovletsQuick)
    list(APPEND CPACK_COMPONENTS_ALL Quick)
endif()
# One package of the program is enough: both builds do the same.
if(TARGET hovlets AND QT_VERSION_MAJOR EQUAL 6)
    list(APPEND CPACK_COMPONENTS_ALL Tools)
endif()

# hovlets_deb(COMPONENT NAME SECTION SUMMARY [ALL] [DEPENDS "package, …"] [RECOMMENDS "package, …"])
macro(hovlets_deb component name section summary)
    cmake_parse_arguments(_deb "ALL" "DEPENDS;RECOMMENDS" "" ${ARGN})
    string(TOUPPER ${component} _upper)
    set(CPACK_DEBIAN_${_upper}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${_upper}_PACKAGE_SECTION ${section})
    set(CPACK_COMPONENT_${_upper}_DESCRIPTION "${PROJECT_DESCRIPTION}: ${summary}")
    set(CPACK_DEBIAN_${_upper}_PACKAGE_DEPENDS "${_deb_DEPENDS}")
    set(CPACK_DEBIAN_${_upper}_PACKAGE_RECOMMENDS "${_deb_RECOMMENDS}")
    install(FILES LICENSE RENAME copyright
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" COMPONENT ${component})
    if(_deb_ALL)
        set(CPACK_DEBIAN_${_upper}_PACKAGE_ARCHITECTURE all)
        set(CPACK_DEBIAN_${_upper}_PACKAGE_SHLIBDEPS OFF)
    endif()
endmacro()

if(QT_VERSION_MAJOR EQUAL 6)
    set(_qml "qml6-module-qtquick, qml6-module-qtquick-window, qml6-module-qtqml, qml6-module-qtqml-workerscript")
    set(_qt_dev "qt6-base-dev, qt6-declarative-dev, qt6-5compat-dev")
else()
    set(_qml "qml-module-qtquick2, qml-module-qtquick-window2")
    set(_qt_dev "qtbase5-dev, qtdeclarative5-dev")
endif()
set(_same "(= ${PROJECT_VERSION})")
hovlets_deb(Runtime lib${CPACK_PACKAGE_NAME}-${_qt}-${PROJECT_VERSION_MAJOR} libs
    "the library for ${HOVLETS_QT}" DEPENDS "hovlets-data ${_same}, ${_qml}")
hovlets_deb(Data hovlets-data misc "the default content packages" ALL)
hovlets_deb(Headers hovlets-headers libdevel "headers and CMake package for all Qt" ALL)
hovlets_deb(Dev lib${CPACK_PACKAGE_NAME}-${_qt}-dev libdevel "what hosts on ${HOVLETS_QT} link with"
    DEPENDS "libhovlets-${_qt}-${PROJECT_VERSION_MAJOR} ${_same}, hovlets-headers ${_same}, ${_qt_dev}")
if("Plugin" IN_LIST CPACK_COMPONENTS_ALL)
    hovlets_deb(Plugin hovlets-${_qt}-plugin utils
        "the plug-in for applications on ${HOVLETS_QT} that were built without it"
        DEPENDS "libhovlets-${_qt}-${PROJECT_VERSION_MAJOR} ${_same}")
endif()
if("Quick" IN_LIST CPACK_COMPONENTS_ALL)
    hovlets_deb(Quick hovlets-${_qt}-qml libs "the QML module for programs with Qt Quick on ${HOVLETS_QT}"
        DEPENDS "libhovlets-${_qt}-${PROJECT_VERSION_MAJOR} ${_same}")
endif()
if("Tools" IN_LIST CPACK_COMPONENTS_ALL)
    hovlets_deb(Tools hovlets-tools devel "the program for content authors"
        DEPENDS "hovlets-data ${_same}, ${_qml}"
        RECOMMENDS "qt6-l10n-tools") # for `hovlets translate`
endif()

include(CPack)
