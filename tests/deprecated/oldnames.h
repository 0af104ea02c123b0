// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef OLDNAMES_H
#define OLDNAMES_H

#include <QMetaType>

//! Which names a file sees that two versions have deprecated.
struct OldNames
{
    bool of02 = false; //!< those of 0.2
    bool of03 = false; //!< those of 0.3
};
Q_DECLARE_METATYPE(OldNames)

OldNames oldNamesByDefault();
//! In a file that hides what 0.2 and what is before has deprecated.
OldNames oldNamesAfter020();
//! The same with 0.3.
OldNames oldNamesAfter030();

#endif // OLDNAMES_H
