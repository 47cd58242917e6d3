// SPDX-License-Identifier: BSD-3-Clause
#include "contextfreecatalog.h"

#include <QtEndian>

#include <optional>
#include <string_view>

namespace {

using Bytes = std::string_view;

constexpr Bytes Magic("\x3c\xb8\x64\x18\xca\xef\x9c\x95\xcd\x21\x1c\xbf\x60\xa1\xbd\xdd", 16);

/// The tags of a catalogue's parts.
enum PartTag : uchar { EndOfParts = 0, Contexts = 0x2f, Hashes = 0x42, Messages = 0x69 };

/// The tags of a message's parts.
enum MessageTag : uchar {
    EndOfMessage = 1,
    Translation = 3,
    SourceText = 6,
    Context = 7,
    Comment = 8
};

/// The tag of a part and its length in 32 bits.
constexpr size_t PartHeadSize = 5;

/// The hash of a message's source text and the message's offset, of 32 bits each.
constexpr size_t HashEntrySize = 8;

/// No message needs more parts: it has three texts, and one translation for each plural form.
constexpr int MaximumMessageParts = 16;

/// At most this many messages without a context may share a hash, because a search tries them all.
constexpr int MaximumEqualHashes = 64;

struct Part
{
    uchar tag;
    Bytes content;
};

struct Catalog
{
    Bytes contexts;
    Bytes hashes;
    Bytes messages;
};

quint32 number(Bytes bytes)
{
    return qFromBigEndian<quint32>(bytes.data());
}

/// Takes the first part from `bytes`. Empty if the part does not fit.
std::optional<Part> takePart(Bytes* bytes)
{
    if (bytes->size() < PartHeadSize) {
        return std::nullopt;
    }
    const size_t length = number(bytes->substr(1));
    if (length > bytes->size() - PartHeadSize) {
        return std::nullopt;
    }
    const Part part{uchar(bytes->front()), bytes->substr(PartHeadSize, length)};
    bytes->remove_prefix(PartHeadSize + length);
    return part;
}

/// The parts of a catalogue. If several have the same tag, the last one counts.
std::optional<Catalog> readCatalog(Bytes bytes)
{
    if (bytes.substr(0, Magic.size()) != Magic) {
        return std::nullopt;
    }
    bytes.remove_prefix(Magic.size());
    Catalog catalog;
    while (bytes.size() > PartHeadSize && bytes.front() != EndOfParts) {
        const std::optional<Part> part = takePart(&bytes);
        if (!part) {
            return std::nullopt;
        }
        if (part->content.empty()) {
            break;
        }
        if (part->tag == Contexts) {
            catalog.contexts = part->content;
        } else if (part->tag == Hashes) {
            catalog.hashes = part->content;
        } else if (part->tag == Messages) {
            catalog.messages = part->content;
        }
    }
    return catalog;
}

bool isEmptyText(Bytes text)
{
    return text.empty() || text == Bytes("\0", 1);
}

/// Whether a message is undamaged, and its text belongs to no context and has no comment.
bool isWanted(Bytes message)
{
    for (int i = 0; i < MaximumMessageParts && !message.empty(); ++i) {
        if (message.front() == EndOfMessage) {
            return true;
        }
        const std::optional<Part> part = takePart(&message);
        if (!part) {
            return false;
        }
        const bool isLabel = part->tag == Context || part->tag == Comment;
        const bool isKnown = isLabel || part->tag == Translation || part->tag == SourceText;
        if (!isKnown || (isLabel && !isEmptyText(part->content))) {
            return false;
        }
    }
    return false;
}

/// The hashes of a catalogue's wanted messages.
QByteArray wantedHashes(const Catalog& catalog)
{
    QByteArray wanted;
    quint32 previousHash = 0;
    int equalHashes = 0;
    for (Bytes rest = catalog.hashes; rest.size() >= HashEntrySize;
         rest.remove_prefix(HashEntrySize)) {
        const quint32 hash = number(rest);
        const quint32 offset = number(rest.substr(4));
        if (offset >= catalog.messages.size() || !isWanted(catalog.messages.substr(offset))) {
            continue;
        }
        equalHashes = hash == previousHash ? equalHashes + 1 : 1;
        previousHash = hash;
        if (equalHashes <= MaximumEqualHashes) {
            wanted.append(rest.data(), int(HashEntrySize));
        }
    }
    return wanted;
}

void appendPart(PartTag tag, Bytes content, QByteArray* catalog)
{
    const quint32 length = qToBigEndian(quint32(content.size()));
    catalog->append(char(tag));
    catalog->append(reinterpret_cast<const char*>(&length), sizeof(length));
    catalog->append(content.data(), int(content.size()));
}

} // namespace

QByteArray contextFreeCatalog(const QByteArray& file)
{
    const std::optional<Catalog> catalog =
        readCatalog(Bytes(file.constData(), size_t(file.size())));
    if (!catalog) {
        return {};
    }
    QByteArray result(Magic.data(), int(Magic.size()));
    // If the catalogue lists contexts, QTranslator does not search for texts outside of them.
    const QByteArray hashes = catalog->contexts.empty() ? wantedHashes(*catalog) : QByteArray();
    if (!hashes.isEmpty()) {
        appendPart(Hashes, Bytes(hashes.constData(), size_t(hashes.size())), &result);
        appendPart(Messages, catalog->messages, &result);
    }
    return result;
}
