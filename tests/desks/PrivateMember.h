// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Tests {

/// A private member of a desk that nothing outside the desk calls, as a pointer:
///
///     struct Check { using Type = bool (Desk::*)(); };
///     template struct OpenMember<Check, &Desk::check>;
///     (desk.*privateMember<Check>)();
template <typename Tag> inline typename Tag::Type privateMember = nullptr;

/// Opens it: where a template is instantiated explicitly, access is not checked.
template <typename Tag, typename Tag::Type Pointer> struct OpenMember {
    struct Opener {
        Opener() { privateMember<Tag> = Pointer; }
    };

    static inline const Opener opener;
};

} // namespace KODMS::Tests
