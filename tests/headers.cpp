// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Qt's headers are compiled with this file, and reused by the tests.
int main()
{
    return 0;
}
