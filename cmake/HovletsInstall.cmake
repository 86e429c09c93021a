# SPDX-License-Identifier: Apache-2.0
# What `cmake --install` installs, in components that HovletsPackages turns into packages:
#
#   Runtime  the library and the helper library
#   Data     the default packages
#   Headers  headers and the CMake package "Hovlets"
#   Dev      what hosts link with: the CMake package and the pkg-config file for one Qt
#   Plugin   the plug-in for applications that were built without the library
#   Quick    the QML module for programs with Qt Quick
#   Tools    the program for authors: `hovlets`, or `hovlets-qt5` in the build for Qt 5
#
# The builds for Qt 6 and Qt 5 can share a prefix: files without the Qt in their names (Data, Headers
# and the files of the program) are the same in both.

include(CMakePackageConfigHelpers)

set(HOVLETS_PACKAGES_DIR "${CMAKE_INSTALL_DATADIR}/hovlets/packages")
string(TOLOWER "${HOVLETS_QT}" _qt)
set(HOVLETS_QML_DIR "${CMAKE_INSTALL_LIBDIR}/${_qt}/qml")
set(_config_dir "${CMAKE_INSTALL_LIBDIR}/cmake")
set(_library "Hovlets${HOVLETS_QT}")

install(TARGETS Hovlets EXPORT HovletsTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Runtime NAMELINK_COMPONENT Dev
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Runtime
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Dev
    PUBLIC_HEADER DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/Hovlets" COMPONENT Headers
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(TARGETS HovletsAssist EXPORT HovletsTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Runtime NAMELINK_COMPONENT Dev
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Runtime
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Dev
    PUBLIC_HEADER DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/HovletsAssist" COMPONENT Headers
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY Components/Hovlets/Packages/
    DESTINATION "${HOVLETS_PACKAGES_DIR}" COMPONENT Data)

# find_package(Hovlets) selects the package for the host's Qt.
install(EXPORT HovletsTargets NAMESPACE Hovlets:: FILE "${_library}Targets.cmake"
    DESTINATION "${_config_dir}/${_library}" COMPONENT Dev)

# A host of the shared library needs Qt's modules of the public headers. One of the static library also
# links what the library uses.
set(HOVLETS_QT_OF_HOSTS "Core Gui Widgets")
set(HOVLETS_FIND_FFMPEG "")
set(HOVLETS_PC_REQUIRES "")
set(HOVLETS_PC_CFLAGS "")
if(HOVLETS_LIBRARY_TYPE STREQUAL STATIC)
    string(APPEND HOVLETS_QT_OF_HOSTS " Qml Quick QuickWidgets ${HOVLETS_QT_SAX}")
    string(CONCAT HOVLETS_FIND_FFMPEG
        "list(APPEND CMAKE_MODULE_PATH \"\${CMAKE_CURRENT_LIST_DIR}\")\n"
        "find_dependency(HovletsFFmpeg)\n"
        "list(POP_BACK CMAKE_MODULE_PATH)\n")
    install(FILES cmake/FindHovletsFFmpeg.cmake
        DESTINATION "${_config_dir}/${_library}" COMPONENT Dev)
    foreach(_module IN ITEMS Gui Widgets Qml Quick QuickWidgets ${HOVLETS_QT_SAX})
        string(APPEND HOVLETS_PC_REQUIRES " ${HOVLETS_QT}${_module}")
    endforeach()
    string(APPEND HOVLETS_PC_REQUIRES " libavformat libavcodec libavutil libswscale")
    set(HOVLETS_PC_CFLAGS " -DHOVLETS_STATIC")
endif()
configure_package_config_file(cmake/HovletsQtConfig.cmake.in "${_library}Config.cmake"
    INSTALL_DESTINATION "${_config_dir}/${_library}"
    PATH_VARS HOVLETS_PACKAGES_DIR HOVLETS_QML_DIR)
configure_file(cmake/HovletsConfig.cmake.in HovletsConfig.cmake @ONLY)
write_basic_package_version_file(HovletsConfigVersion.cmake
    COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
write_basic_package_version_file("${_library}ConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${_library}Config.cmake"
              "${CMAKE_CURRENT_BINARY_DIR}/${_library}ConfigVersion.cmake"
    DESTINATION "${_config_dir}/${_library}" COMPONENT Dev)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/HovletsConfig.cmake"
              "${CMAKE_CURRENT_BINARY_DIR}/HovletsConfigVersion.cmake"
    DESTINATION "${_config_dir}/Hovlets" COMPONENT Headers)

# With a relative prefix, an installed tree can be moved.
file(RELATIVE_PATH HOVLETS_PC_PREFIX
    "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
foreach(_module IN ITEMS Hovlets HovletsAssist)
    configure_file(cmake/${_module}.pc.in "${_module}${HOVLETS_QT}.pc" @ONLY)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${_module}${HOVLETS_QT}.pc"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT Dev)
endforeach()
