// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Marks the three widget classes, which are all that the desk library offers. Who links the
/// desks' objects themselves, as their tests do, is compiled with KODMS_DESKS_STATIC.
#if defined(_WIN32)
#if defined(KODMS_DESKS_STATIC)
#define KODMS_DESKS_API
#elif defined(KODMS_DESKS_BUILD)
#define KODMS_DESKS_API __declspec(dllexport)
#else
#define KODMS_DESKS_API __declspec(dllimport)
#endif
#else
#define KODMS_DESKS_API __attribute__((visibility("default")))
#endif
