// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// True when the bytes begin like a gzip file.
bool isGzip(const QByteArray& data);

/// Unpacks a gzip file. On failure false and the cause in `error`: damaged or cut off, a wrong
/// checksum, or more than a scene can be (2 GiB, or 1,000 times the packed size beyond 64 MiB).
bool gunzip(const QByteArray& packed, QByteArray* data, QString* error);

/// Packs as the host does: fast, without a date. Empty when there is no memory.
QByteArray gzip(const QByteArray& data);
