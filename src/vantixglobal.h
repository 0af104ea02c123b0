// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef VANTIXGLOBAL_H
#define VANTIXGLOBAL_H

//! \def VANTIX_EXPORT
//! Marks what libvantix exports; everything else stays hidden. Plain compiler
//! attributes, so that the decimal functions need no Qt header. VANTIX_STATIC is
//! defined by the build system where the library is a static one.
#if defined(VANTIX_STATIC)
#define VANTIX_EXPORT
#elif defined(_WIN32)
#if defined(VANTIX_LIBRARY)
#define VANTIX_EXPORT __declspec(dllexport)
#else
#define VANTIX_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define VANTIX_EXPORT __attribute__((visibility("default")))
#else
#define VANTIX_EXPORT
#endif

//! \def VANTIX_HIDES_FIELD_BEGIN
//! Stands before a member that has the name of a base class's on purpose, and
//! VANTIX_HIDES_FIELD_END behind it.
#if defined(__clang__)
#define VANTIX_HIDES_FIELD_BEGIN                                                                   \
    _Pragma("clang diagnostic push") _Pragma("clang diagnostic ignored \"-Wshadow-field\"")
#define VANTIX_HIDES_FIELD_END _Pragma("clang diagnostic pop")
#else
#define VANTIX_HIDES_FIELD_BEGIN
#define VANTIX_HIDES_FIELD_END
#endif

#endif // VANTIXGLOBAL_H
