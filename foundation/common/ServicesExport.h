// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Marks what the service library offers to the desks and to hosts.
/// The library that keeps the contracts (the real one, or the recording fakes)
/// is compiled with KODMS_SERVICES_BUILD; everybody else imports.
#if defined(_WIN32)
#if defined(KODMS_SERVICES_STATIC)
#define KODMS_SERVICES_API
#elif defined(KODMS_SERVICES_BUILD)
#define KODMS_SERVICES_API __declspec(dllexport)
#else
#define KODMS_SERVICES_API __declspec(dllimport)
#endif
#else
#define KODMS_SERVICES_API __attribute__((visibility("default")))
#endif
