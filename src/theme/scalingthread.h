// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// Makes QImage scale and convert pictures on one thread that lives as long as the process.
/// Otherwise Qt would start threads for each scaling, and wait forever if there is no memory for
/// one.
///
/// This changes Qt's thread pool for the whole process, so only the main function of a program may
/// call it: once, on the main thread, before the first picture takes memory.
void keepScalingThread();
