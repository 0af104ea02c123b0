// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NAMES_WINDOWS_H
#define NAMES_WINDOWS_H

//! \file
//! The names of Windows' headers, as the programs have them that imitate those elsewhere:
//! its 64 bits are a long long everywhere.

#define _WINDEF_
#define _BASETSD_H_

typedef unsigned char BYTE;
typedef int BOOL;
typedef unsigned short UINT16;
typedef unsigned int UINT32;
typedef unsigned long long UINT64;
typedef long long INT64;

#define max(a, b) (((a) > (b)) ? (a) : (b))
#define min(a, b) (((a) < (b)) ? (a) : (b))

#endif // NAMES_WINDOWS_H
