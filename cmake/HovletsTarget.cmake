# SPDX-License-Identifier: Apache-2.0
# The compile and link options of every target in the project.

function(hovlets_target target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES
        AUTOMOC ON
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII
        QT_NO_CAST_TO_ASCII
        QT_NO_FOREACH
        QT_NO_KEYWORDS
        # Qt 5.15 deprecates the SAX reader, which Qt 6 still ships in the module Core5Compat.
        QT_DEPRECATED_WARNINGS_SINCE=0x050E00)
    target_compile_options(${target} PRIVATE
        $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Wall -Wextra -Wpedantic>
        # The sources are in UTF-8, which MSVC assumes only if told.
        $<$<CXX_COMPILER_ID:MSVC>:/W4 /utf-8 /permissive->
        # Qt's logging macros are variadic, and called with the category alone.
        $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-gnu-zero-variadic-macro-arguments>
        $<$<AND:$<BOOL:${HOVLETS_WERROR}>,$<CXX_COMPILER_ID:GNU,Clang,AppleClang>>:-Werror>
        $<$<AND:$<BOOL:${HOVLETS_WERROR}>,$<CXX_COMPILER_ID:MSVC>>:/WX>)
    if(CMAKE_UNITY_BUILD)
        # A class in a source may have members with types from the source's unnamed namespace, even
        # if another source includes it.
        target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    endif()
    if(HOVLETS_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${HOVLETS_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${HOVLETS_SANITIZE})
    endif()
endfunction()
