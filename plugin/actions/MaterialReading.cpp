// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MaterialReading.h"

#include "MaterialText.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

const qint64 MaterialReading::maximumSize;
const qint64 MaterialReading::maximumTime;

MaterialReading::MaterialReading(const QString& filePath, QObject* parent)
    : QThread(parent)
    , path(filePath)
    , stopped(false)
    , accepted(false)
{
}

MaterialReading::~MaterialReading()
{
    stop();
    wait();
}

void MaterialReading::stop()
{
    stopped = true;
}

void MaterialReading::run()
{
    QByteArray text;
    accepted = readText(&text) && !stopped && MaterialText::isObject(text);
}

bool MaterialReading::readText(QByteArray* text) const
{
    // Opening a pipe would wait for somebody to write into it.
    if (!QFileInfo(path).isFile())
        return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text) || file.size() > maximumSize)
        return false;
    QElapsedTimer time;
    time.start();
    const qint64 pieceSize = 64 * 1024;
    while (!stopped && text->size() <= maximumSize && time.elapsed() <= maximumTime) {
        const QByteArray piece = file.read(pieceSize);
        if (piece.isEmpty())
            return file.error() == QFile::NoError;
        text->append(piece);
    }
    return false;
}
