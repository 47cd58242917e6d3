// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// The kinds of content that the library knows.
namespace MoodsetContent {

/// A kind of content: what a record is, which manager writes it and which agent reads it. Travels
/// on the bus as an int, so a value received from there need not be one of the enumerators; 3 and 5
/// mean nothing.
enum Type : int { File = 0, Moodset = 1, Image = 2, Download = 4, Install = 6, Index = 7 };

} // namespace MoodsetContent
