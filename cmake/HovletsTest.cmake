# SPDX-License-Identifier: Apache-2.0
# How test programs are built and run. There are many, and each mostly compiles and links Qt and the
# library. The options here keep that cost small.

# A fast linker, if available.
find_program(HOVLETS_LLD ld.lld DOC "Links the tests faster than the compiler's usual linker")
mark_as_advanced(HOVLETS_LLD)

# Tests that move a pointer over their windows need processor time at once, and spend most of it
# waiting. Other tests run beside them with less priority: prefix their commands with this.
find_program(HOVLETS_NICE nice DOC "Runs tests with less priority than those with a pointer")
mark_as_advanced(HOVLETS_NICE)
set(HOVLETS_BEHIND $<$<BOOL:${HOVLETS_NICE}>:${HOVLETS_NICE}> $<$<BOOL:${HOVLETS_NICE}>:-n10>)

# Tests are compiled more often than they run, so they are not optimised; the library is. Line
# numbers suffice for a stack trace; a Debug build has full debug information.
function(hovlets_test_options target)
    target_compile_options(${target} PRIVATE
        $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-O0 $<$<NOT:$<CONFIG:Debug>>:-g1>>)
endfunction()

# hovlets_test(FOLDER/NAME [DISPLAY [SCREENS] [BOTH_SCENE_GRAPHS]] [WAYLAND [OPTION...]])
#
# Builds the QTest program NAME from FOLDER/NAME.cpp, which includes NAME.moc. It runs on the
# offscreen platform. With DISPLAY it runs on an X server with a window manager, and with SCREENS on
# two screens. With BOTH_SCENE_GRAPHS it runs a second time, as NAME_opengl, on OpenGL instead of the
# software scene graph. With WAYLAND it runs on a Wayland display, with the given options of
# with-wayland; with DISPLAY and WAYLAND it runs on both, on Wayland as NAME_wayland. An unexpected warning fails the test.
function(hovlets_test source)
    cmake_parse_arguments(PARSE_ARGV 1 arg "DISPLAY;SCREENS;BOTH_SCENE_GRAPHS" "" "WAYLAND")
    get_filename_component(name ${source} NAME)
    # The thread sanitizer runs only the tests of clips, the main users of threads, and not that of
    # the keeper. QtCore is built without annotations and locks with futexes, so the sanitizer sees
    # no order between a thread's last actions and QThread::wait(), or between posting an event and
    # handling it. The keeper relies on both, and each of its tests reports QtCore's own objects.
    if(HOVLETS_SANITIZE STREQUAL thread
            AND (NOT name MATCHES "^tst_(hvvideo|hvclip)" OR name STREQUAL "tst_hvvideo_keeper"))
        return()
    endif()
    add_executable(${name} ${source}.cpp)
    hovlets_target(${name})
    hovlets_test_options(${name})
    target_link_libraries(${name} PRIVATE HovletsTestSupport)
    target_precompile_headers(${name} REUSE_FROM HovletsTestSupport)
    if(HOVLETS_LLD AND CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang)$")
        target_link_options(${name} PRIVATE -fuse-ld=lld)
    endif()

    # With AUTOMOC, each program would compile another file, which takes as long as the test itself.
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    set(moc "${CMAKE_CURRENT_BINARY_DIR}/moc/${name}.moc")
    qt_generate_moc(${source}.cpp "${moc}" TARGET ${name})
    target_sources(${name} PRIVATE "${moc}")
    target_include_directories(${name} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/moc")

    # One at a time, and early: together they take longer than the others.
    set(pointer RESOURCE_LOCK pointer PROCESSORS 2 COST 50)
    if(arg_DISPLAY)
        set(screens "")
        if(arg_SCREENS)
            set(screens --second 640x480)
        endif()
        set(tests ${name})
        if(arg_BOTH_SCENE_GRAPHS)
            list(APPEND tests ${name}_opengl)
        endif()
        foreach(test IN LISTS tests)
            add_test(NAME ${test} COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/support/with-display ${screens}
                $<TARGET_FILE:${name}>)
        endforeach()
        set_tests_properties(${tests} PROPERTIES ${pointer})
    elseif(NOT "WAYLAND" IN_LIST ARGN)
        set(tests ${name})
        add_test(NAME ${name} COMMAND ${HOVLETS_BEHIND} $<TARGET_FILE:${name}> COMMAND_EXPAND_LISTS)
    endif()
    if("WAYLAND" IN_LIST ARGN)
        set(wayland ${name})
        if(arg_DISPLAY)
            set(wayland ${name}_wayland)
        endif()
        add_test(NAME ${wayland} COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/support/with-wayland
            ${arg_WAYLAND} $<TARGET_FILE:${name}>)
        set_tests_properties(${wayland} PROPERTIES ${pointer})
        list(APPEND tests ${wayland})
    endif()
    set_tests_properties(${tests} PROPERTIES FAIL_REGULAR_EXPRESSION "QWARN;QCRITICAL" TIMEOUT 600)
    if(arg_BOTH_SCENE_GRAPHS)
        set_property(TEST ${name}_opengl APPEND PROPERTY ENVIRONMENT
            "QT_QUICK_BACKEND=;QSG_RHI_BACKEND=opengl;LIBGL_ALWAYS_SOFTWARE=1")
    endif()
    if(HOVLETS_SANITIZE)
        set(thread_options "suppressions=${CMAKE_CURRENT_SOURCE_DIR}/sanitizers/thread.supp:die_after_fork=0")
        # Newer versions of Qt and FFmpeg hand memory from thread to thread in ways that the thread
        # sanitizer cannot see, so it takes what they do with it for races. Accesses by the project's
        # own code count with every version.
        if(QT_VERSION VERSION_GREATER_EQUAL 6.5)
            string(APPEND thread_options ":ignore_noninstrumented_modules=1")
        endif()
        set_property(TEST ${tests} APPEND PROPERTY ENVIRONMENT
            "ASAN_OPTIONS=detect_stack_use_after_return=1;UBSAN_OPTIONS=print_stacktrace=1;LSAN_OPTIONS=suppressions=${CMAKE_CURRENT_SOURCE_DIR}/sanitizers/leak.supp:print_suppressions=0;TSAN_OPTIONS=${thread_options}")
    endif()
endfunction()

# hovlets_test_twice_as_large(NAME) runs a test again, as NAME_2x, with two pixels per unit of length.
function(hovlets_test_twice_as_large name)
    if(NOT TEST ${name})
        return()
    endif()
    add_test(NAME ${name}_2x COMMAND ${HOVLETS_BEHIND} $<TARGET_FILE:${name}> COMMAND_EXPAND_LISTS)
    get_test_property(${name} ENVIRONMENT environment)
    if(environment)
        set_tests_properties(${name}_2x PROPERTIES ENVIRONMENT "${environment}")
    endif()
    set_tests_properties(${name}_2x PROPERTIES
        ENVIRONMENT_MODIFICATION "QT_SCALE_FACTOR=set:2" FAIL_REGULAR_EXPRESSION "QWARN;QCRITICAL"
        TIMEOUT 600)
endfunction()
