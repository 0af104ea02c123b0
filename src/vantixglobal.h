// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef VANTIXGLOBAL_H
#define VANTIXGLOBAL_H

//! \def VANTIX_EXPORT
//! Marks what libvantix exports; everything else stays hidden. Plain compiler
//! attributes, so that the decimal functions need no Qt header.
#if defined(_WIN32)
#if defined(VANTIX_LIBRARY)
#define VANTIX_EXPORT __declspec(dllexport)
#else
#define VANTIX_EXPORT __declspec(dllimport)
#endif
#else
#define VANTIX_EXPORT __attribute__((visibility("default")))
#endif

#endif // VANTIXGLOBAL_H
