# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
#
# Warnings and language level, one call a target.
#
#   vireo_target(<target>)          warnings as errors, C++17
#   vireo_target(<target> PLUGIN)   the same for the plug-in's folders: C++14, and no
#                                   complaint about API that Qt 5.15 calls deprecated but
#                                   Qt 4.8 needs
#
# Headers of Qt, the test library and the others come from imported targets, which CMake
# passes as system directories: no warning comes from there. `cmake
# --compile-no-warning-as-error` keeps the warnings and drops the errors.

include_guard(GLOBAL)

add_library(vireo_warnings INTERFACE)
target_compile_options(vireo_warnings INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:
        -Wall
        -Wextra
        -Wpedantic
        -Wcast-align
        -Wcast-qual
        -Wextra-semi
        -Wformat=2
        -Wimplicit-fallthrough
        -Wnon-virtual-dtor
        -Woverloaded-virtual
        -Wredundant-decls
        -Wshadow
        -Wundef
        -Wvla
    >
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:
        -Wduplicated-cond
        -Wlogical-op
        -Wsuggest-override
    >
    $<$<COMPILE_LANG_AND_ID:CXX,Clang,AppleClang>:
        -Winconsistent-missing-destructor-override
        -Wsuggest-override
        # The test library's value-parameterised macros rely on it.
        -Wno-gnu-zero-variadic-macro-arguments
        # The host asks a module for its version by value, through a function of C linkage.
        -Wno-return-type-c-linkage
    >
)

function(vireo_target target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "PLUGIN" "" "")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "vireo_target: unknown argument ${arg_UNPARSED_ARGUMENTS}")
    endif()

    # BUILD_INTERFACE, so that an installed library does not name this target.
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:vireo_warnings>)

    if(arg_PLUGIN)
        set(standard 14)
        target_compile_definitions(${target} PRIVATE QT_NO_DEPRECATED_WARNINGS)
    else()
        set(standard 17)
    endif()

    set_target_properties(${target} PROPERTIES
        COMPILE_WARNING_AS_ERROR ON
        CXX_STANDARD ${standard}
        CXX_STANDARD_REQUIRED ON
        CXX_EXTENSIONS OFF
    )
endfunction()
