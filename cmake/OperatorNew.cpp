// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

// Part of each program that takes memory from mimalloc. That library is written in C: where it has
// no memory left for an object it cannot throw, and ends the program.

#include <cstdlib>
#include <new>

namespace {

void* checked(void* memory)
{
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void* allocate(std::size_t size)
{
    return checked(std::malloc(size));
}

void* allocateAligned(std::size_t size, std::align_val_t alignment)
{
    void* memory = nullptr;
    return checked(
        posix_memalign(&memory, static_cast<std::size_t>(alignment), size) == 0 ? memory : nullptr);
}

} // namespace

void* operator new(std::size_t size)
{
    return allocate(size);
}

void* operator new[](std::size_t size)
{
    return allocate(size);
}

void* operator new(std::size_t size, std::align_val_t alignment)
{
    return allocateAligned(size, alignment);
}

void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return allocateAligned(size, alignment);
}

// What the library's own would do.

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::align_val_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::align_val_t) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept
{
    std::free(memory);
}
