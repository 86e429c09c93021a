# SPDX-License-Identifier: Apache-2.0
# How a test program is built and run. There are many of them, and most of what each compiles and
# links is Qt and the library, so what a program costs beyond its own lines is kept small here.

# A fast linker, where there is one.
find_program(HOVLETS_LLD ld.lld DOC "Links the tests faster than the compiler's usual linker")
mark_as_advanced(HOVLETS_LLD)

# Tests are compiled more often than they run: the library is optimised, they are not. Line numbers
# are enough for a stack trace; a Debug build has the rest.
function(hovlets_test_options target)
    target_compile_options(${target} PRIVATE
        $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-O0 $<$<NOT:$<CONFIG:Debug>>:-g1>>)
endfunction()

# hovlets_test(FOLDER/NAME [DISPLAY [SCREENS]])
#
# A QTest program NAME from FOLDER/NAME.cpp, which includes NAME.moc. It runs on the offscreen
# platform or, with DISPLAY, on an X server with a window manager and, with SCREENS, a second screen.
# A warning that the test does not expect fails it.
function(hovlets_test source)
    cmake_parse_arguments(PARSE_ARGV 1 arg "DISPLAY;SCREENS" "" "")
    get_filename_component(name ${source} NAME)
    # Clips alone have threads. Two tests of theirs are not clean with the thread sanitizer. What it
    # reports of the keeper lies in QtCore's lists of connections and events, whose locks it does not
    # see; of the sleep it reports a path that is handed over under a lock of ours, which has still to
    # be explained.
    if(HOVLETS_SANITIZE STREQUAL thread
            AND (NOT name MATCHES "^tst_(hvvideo|hvclip)" OR name MATCHES "^tst_hvvideo_(idle|keeper)$"))
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

    # AUTOMOC would compile one more file for each program, as long as it takes to compile the test.
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    set(moc "${CMAKE_CURRENT_BINARY_DIR}/moc/${name}.moc")
    qt_generate_moc(${source}.cpp "${moc}" TARGET ${name})
    target_sources(${name} PRIVATE "${moc}")
    target_include_directories(${name} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/moc")

    if(arg_DISPLAY)
        set(screens "")
        if(arg_SCREENS)
            set(screens --second 640x480)
        endif()
        add_test(NAME ${name} COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/support/with-display ${screens}
            $<TARGET_FILE:${name}>)
        # Each moves a pointer over windows of its own and wants the machine's attention for it.
        set_tests_properties(${name} PROPERTIES RUN_SERIAL ON)
    else()
        add_test(NAME ${name} COMMAND ${name})
    endif()
    set_tests_properties(${name} PROPERTIES FAIL_REGULAR_EXPRESSION "QWARN;QCRITICAL" TIMEOUT 600)
    if(HOVLETS_SANITIZE)
        set_tests_properties(${name} PROPERTIES ENVIRONMENT
            "ASAN_OPTIONS=detect_stack_use_after_return=1;UBSAN_OPTIONS=print_stacktrace=1;LSAN_OPTIONS=suppressions=${CMAKE_CURRENT_SOURCE_DIR}/sanitizers/leak.supp:print_suppressions=0;TSAN_OPTIONS=suppressions=${CMAKE_CURRENT_SOURCE_DIR}/sanitizers/thread.supp:die_after_fork=0")
    endif()
endfunction()
