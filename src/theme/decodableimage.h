// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>

#include <functional>

class QByteArray;
class QImageReader;

/// Whether the pixels of the reader's picture may be asked for. False for vector pictures, whose
/// texts need the fonts of a graphical application and end any other process; their size is safe to
/// ask for. The content tells them, not the file's name.
bool isDecodable(const QImageReader& reader);

/// What `decode` makes of a reader's picture; null if that is not decodable, or if there is no
/// memory for it. Every picture from anywhere is to be decoded here.
QImage decoded(QImageReader* reader, const std::function<QImage(QImageReader*)>& decode);

/// The picture in a file's content, of any decodable format; null if there is none, or no memory
/// for it.
QImage imageFromData(const QByteArray& data);
