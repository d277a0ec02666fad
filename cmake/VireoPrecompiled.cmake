# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
#
# Precompiled headers: what most sources of a target parse again and again.
#
#   vireo_precompile(<target> <header>...)   e.g. vireo_precompile(vireo <CLI/CLI.hpp>)
#
# A source still includes what it uses: `-D VIREO_PRECOMPILE=OFF` builds without them, and the fuzz
# build does.

include_guard(GLOBAL)

option(VIREO_PRECOMPILE "Build with precompiled headers" ON)

function(vireo_precompile target)
    if(NOT VIREO_PRECOMPILE OR VIREO_FUZZERS)
        return()
    endif()
    target_precompile_headers(${target} PRIVATE ${ARGN})
    # The compiler cache needs to see where the header comes in.
    target_compile_options(${target} PRIVATE
        $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fpch-preprocess>)
endfunction()
