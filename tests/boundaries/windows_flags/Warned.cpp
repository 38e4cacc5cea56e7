// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0

/// One warning, which is to be an error.
int warned(int unused)
{
    return 1;
}
