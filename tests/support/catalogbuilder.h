// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

/// Builds translation catalogues byte by byte, including damaged ones that no tool would write.
namespace CatalogBuilder {

/// The tags of a catalogue's parts.
enum PartTag : uchar {
    Contexts = 0x2f,
    Hashes = 0x42,
    Messages = 0x69,
    NumerusRules = 0x88,
    Dependencies = 0x96,
    Language = 0xa7
};

/// The tags of a message's parts.
enum MessageTag : uchar {
    EndOfMessage = 1,
    Translation = 3,
    SourceText = 6,
    Context = 7,
    Comment = 8
};

/// The bytes at the start of every catalogue.
QByteArray magic();

/// The hash of the text "a".
constexpr quint32 HashOfA = 'a';

/// A part of a catalogue or of a message.
QByteArray part(uchar tag, const QByteArray& content);

/// A text in the form that catalogues store.
QByteArray utf16(const QString& text);

/// A message that translates "a", followed by `parts`.
QByteArray message(const QString& translation, const QByteArray& parts = {});

/// A catalogue of messages, which all have the hash of "a", followed by `parts`.
QByteArray catalog(const QByteArrayList& messages, const QByteArray& parts = {});

} // namespace CatalogBuilder
