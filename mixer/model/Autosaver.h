// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QObject>
#include <memory>

class AutosaveStore;
class MixerDocument;
class QTimer;

/// Keeps a copy of each document a moment after its last change, and at times while changes go on.
/// A document that is saved or goes has no copies.
class Autosaver : public QObject
{
    Q_OBJECT

public:
    /// Milliseconds of rest after which a copy is made, and the longest time without one while
    /// changes go on.
    static const int restTime = 3000;
    static const int longestTime = 20000;

    /// `store` outlives this.
    explicit Autosaver(AutosaveStore* store, QObject* parent = nullptr);
    ~Autosaver() override;

    /// Watches a document until it is gone or released.
    void watch(MixerDocument* document);
    /// Forgets a document and its copies.
    void release(MixerDocument* document);
    /// Makes a copy now when there were changes since the last. False when that failed; it is tried
    /// again after the time of rest.
    bool keepNow(MixerDocument* document);
    /// For tests that do not want to wait.
    void setRestTime(int milliseconds) { m_restTime = milliseconds; }

signals:
    /// A copy could not be made; said once for each cause.
    void failed(const QString& error);

private:
    struct Watched;

    void changed(MixerDocument* document);
    void modifiedChanged(MixerDocument* document);

    AutosaveStore* m_store;
    int m_restTime = restTime;
    QHash<MixerDocument*, Watched*> m_watched;
    QString m_lastError;
};
