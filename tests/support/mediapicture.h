// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QSize>
#include <QVector>

/// A box of an ISO media file, the form of HEIF and AVIF pictures.
QByteArray box(const QByteArray& type, const QByteArray& content);
/// A box that begins with a version and flags.
QByteArray fullBox(
    const QByteArray& type, quint8 version, const QByteArray& content, quint32 flags = 0);

/// How the box with the properties of pictures writes their numbers.
enum class PropertyNumbers { Short, Long };

/// A file with the brand `brand` ("heic", "avif") that describes pictures of these sizes, of which
/// the one at the index `main` is the one to show. It has no pixels.
QByteArray mediaPicture(
    const QByteArray& brand, const QVector<QSize>& sizes, int main,
    PropertyNumbers numbers = PropertyNumbers::Short);
