// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>

class QByteArray;
class QImageReader;

/// Whether the pixels of the reader's picture may be asked for. False for vector pictures, whose
/// texts need the fonts of a graphical application and end any other process; their size is safe to
/// ask for. The content tells them, not the file's name. Pictures from anywhere are to be checked
/// before they are decoded.
bool isDecodable(const QImageReader& reader);

/// The picture in a file's content, of any decodable format; null if there is none, or no memory
/// for it.
QImage imageFromData(const QByteArray& data);
