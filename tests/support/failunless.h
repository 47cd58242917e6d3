// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// Fails the current test with a text if `isSo` is false. The test continues.
void failUnless(bool isSo, const char* text);
