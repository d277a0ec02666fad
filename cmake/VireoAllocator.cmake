# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
#
# The memory allocator of the programs.
#
#   vireo_program_allocator(<program>)   takes memory from mimalloc instead of the C library
#
# Networks are very many small objects, made and freed by the hundred thousand whenever one is
# opened, deleted or undone. The C library's allocator joins and sorts the freed pieces one by one,
# which costs more than reading the file.
#
# Only programs choose: a library takes what the program that loads it has, as the module does in
# the host. Sanitizers bring an allocator of their own.

include_guard(GLOBAL)

if(NOT VIREO_SANITIZE AND NOT VIREO_FUZZERS)
    find_package(mimalloc 2.0 REQUIRED)
endif()

function(vireo_program_allocator program)
    if(TARGET mimalloc)
        # Without its flags the linker may drop a library that is not called by name.
        target_link_options(${program} PRIVATE LINKER:--no-as-needed)
        target_link_libraries(${program} PRIVATE mimalloc)
        target_sources(${program} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/OperatorNew.cpp)
    endif()
endfunction()
