// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Apart from its users: compilers that see both warn of what they inline by halves.

#include "allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t count = 0;

} // namespace

std::size_t allocationCount()
{
    return count;
}

void *operator new(std::size_t size)
{
    ++count;
    if (void *p = std::malloc(size > 0 ? size : 1))
        return p;
    throw std::bad_alloc();
}

void operator delete(void *p) noexcept
{
    std::free(p);
}

void operator delete(void *p, std::size_t) noexcept
{
    std::free(p);
}
