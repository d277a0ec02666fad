// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QThread>
#include <atomic>

/// Reads and checks one material file on a thread of its own, so that windows stay alive whatever
/// the file holds. It ends without a word when the file is too large, cannot be read in time or
/// does not hold an object.
class MaterialReading : public QThread
{
    Q_OBJECT

public:
    /// The largest file that is read, in bytes.
    static const qint64 maximumSize = 16 * 1024 * 1024;
    /// How long reading from the disk may take, in milliseconds.
    static const qint64 maximumTime = 5000;

    explicit MaterialReading(const QString& path, QObject* parent = nullptr);
    /// Stops the reading and waits for its end.
    ~MaterialReading() override;

    /// After the end: true when the file held an object. The action does not ask, and nothing is
    /// made of the object: only whoever tests the reading wants to know.
    bool isAccepted() const { return accepted; }

public slots:
    /// Lets the thread end soon, without a result.
    void stop();

protected:
    void run() override;

private:
    bool readText(QByteArray* text) const;

    QString path;
    std::atomic<bool> stopped;
    bool accepted;
};
