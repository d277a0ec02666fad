# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
#
# Sanitizers and fuzz targets.
#
#   vireo_setup_sanitizers()   call once in the top CMakeLists.txt, after the options and
#                              before the first target: with VIREO_SANITIZE or VIREO_FUZZERS
#                              it instruments everything that is built below
#   vireo_add_fuzzer(<name> SOURCES <file>... [LIBRARIES <target>...])
#                              a libFuzzer program; does nothing unless VIREO_FUZZERS is on
#
# The whole tree is instrumented, never a single target: libraries, module and programs
# share objects across their borders.

include_guard(GLOBAL)

macro(vireo_setup_sanitizers)
    if(VIREO_FUZZERS AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR
            "VIREO_FUZZERS needs clang; configure with `cmake --preset fuzz`.")
    endif()

    if(VIREO_SANITIZE OR VIREO_FUZZERS)
        # Casting a float that does not fit is undefined too, but not part of "undefined".
        set(_vireo_sanitize address,undefined,float-cast-overflow)
        set(_vireo_sanitize_compile ${_vireo_sanitize})
        if(VIREO_FUZZERS)
            string(APPEND _vireo_sanitize_compile ",fuzzer-no-link")
        endif()
        add_compile_options(
            -fsanitize=${_vireo_sanitize_compile}
            -fno-sanitize-recover=all
            -fno-omit-frame-pointer
        )
        add_link_options(-fsanitize=${_vireo_sanitize})
        add_compile_definitions(_GLIBCXX_ASSERTIONS)
    endif()
endmacro()

function(vireo_add_fuzzer name)
    if(NOT VIREO_FUZZERS)
        return()
    endif()
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    if(arg_UNPARSED_ARGUMENTS OR NOT arg_SOURCES)
        message(FATAL_ERROR
            "usage: vireo_add_fuzzer(<name> SOURCES <file>... [LIBRARIES <target>...])")
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer -fuse-ld=lld)
    vireo_target(${name})
endfunction()
