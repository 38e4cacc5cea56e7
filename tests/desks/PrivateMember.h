// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Tests {

/// Opens a private member of a desk to the tests, because nothing outside the desk
/// calls it. Access is not checked where a template is instantiated explicitly:
///
///     struct Check { using Type = bool (Desk::*)(); friend Type member(Check); };
///     template struct PrivateMember<Check, &Desk::check>;
///     (desk.*member(Check()))();
template <typename Tag, typename Tag::Type Pointer> struct PrivateMember {
    friend typename Tag::Type member(Tag) { return Pointer; }
};

} // namespace KODMS::Tests
