// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ALLOCATIONS_H
#define ALLOCATIONS_H

#include <cstddef>

//! How often operator new was called so far, in a program that allocations.cpp is part of.
std::size_t allocationCount();

#endif // ALLOCATIONS_H
