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

//! The number of a version, as VANTIX_VERSION has it. Each part is from 0 to 255.
#define VANTIX_VERSION_CHECK(major, minor, patch) (((major) << 16) | ((minor) << 8) | (patch))
//! The version of these headers, 0x000200 for 0.2.0.
#define VANTIX_VERSION VANTIX_VERSION_CHECK(0, 2, 0)
//! The same as a text.
#define VANTIX_VERSION_STR "0.2.0"

//! \def VANTIX_DISABLE_DEPRECATED_BEFORE
//! A program that defines it as a VANTIX_VERSION_CHECK() sees nothing that this version or an
//! earlier one has deprecated. Without it, nothing is hidden.
#if !defined(VANTIX_DISABLE_DEPRECATED_BEFORE)
#define VANTIX_DISABLE_DEPRECATED_BEFORE 0
#endif

//! For #if around what version \a major . \a minor has deprecated: false if the program wants it
//! hidden. The library, which is built without hiding, goes on exporting it.
#define VANTIX_HAS_DEPRECATED(major, minor)                                                        \
    (VANTIX_VERSION_CHECK(major, minor, 0) > VANTIX_DISABLE_DEPRECATED_BEFORE)

//! \def VANTIX_DEPRECATED_SINCE
//! Has compilers warn of what stands behind it: version \a major . \a minor has deprecated it,
//! and \a text, a literal, says what there is instead. It stands first in a declaration. A
//! program that defines VANTIX_NO_DEPRECATED_WARNINGS is not warned.
#if defined(VANTIX_NO_DEPRECATED_WARNINGS)
#define VANTIX_DEPRECATED_SINCE(major, minor, text)
#else
#define VANTIX_DEPRECATED_SINCE(major, minor, text)                                                \
    [[deprecated("since vantix " #major "." #minor ": " text)]]
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
