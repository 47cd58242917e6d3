// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// The kinds of content that the library knows.
namespace MoodsetContent {

/// A kind of content: it decides the class of a record, the manager that writes it and the agent
/// that reads it. It is an int on the bus, so a value from there need not be one of the
/// enumerators. 3 and 5 are not used.
enum Type : int { File = 0, Moodset = 1, Image = 2, Download = 4, Install = 6, Index = 7 };

} // namespace MoodsetContent
