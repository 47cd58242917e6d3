// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// Fails the current test with a text, unless something is so that it counts on. The test goes on.
void failUnless(bool isSo, const char* text);
