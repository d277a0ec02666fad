// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QObject>
#include <memory>

class AutosaveStore;
class Work;

/// Keeps a copy of each work a moment after its last change, and at times while changes go on.
/// What is saved or goes has no copies.
class Autosaver : public QObject
{
    Q_OBJECT

public:
    /// Milliseconds of rest after which a copy is made, and the longest time without one while
    /// changes go on. Both grow with the time that a copy takes.
    static const int restTime = 3000;
    static const int longestTime = 20000;

    /// `store` outlives this.
    explicit Autosaver(AutosaveStore* store, QObject* parent = nullptr);
    ~Autosaver() override;

    /// Watches a work until it is gone or released.
    void watch(Work* work);
    /// Forgets a work and its copies.
    void release(Work* work);
    /// Makes a copy now when there were changes since the last. False when that failed; it is tried
    /// again after the time of rest.
    bool keepNow(Work* work);
    /// For tests that do not want to wait.
    void setRestTime(int milliseconds) { m_restTime = milliseconds; }

signals:
    /// A copy could not be made; said once for each cause.
    void failed(const QString& error);

private:
    struct Watched;

    void changed(Work* work);
    void modifiedChanged(Work* work);

    AutosaveStore* m_store;
    int m_restTime = restTime;
    QHash<Work*, Watched*> m_watched;
    QString m_lastError;
};
