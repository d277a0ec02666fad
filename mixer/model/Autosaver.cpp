// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Autosaver.h"

#include "AutosaveStore.h"
#include "Work.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QTimer>

#include <chrono>

namespace {

/// Large scenes take seconds, in which the window stands still: for so many times as long there is
/// no other copy. Nobody notices what takes less than these milliseconds.
const int restsOfCost = 10;
const qint64 unnoticedCost = 100;

} // namespace

struct Autosaver::Watched {
    QString key;
    /// Milliseconds that the last copy took.
    qint64 cost = 0;
    QTimer timer;
    /// Since the first change that has no copy; invalid when all have.
    QElapsedTimer waiting;
    QByteArray lastDigest;
};

Autosaver::Autosaver(AutosaveStore* store, QObject* parent)
    : QObject(parent)
    , m_store(store)
{
}

Autosaver::~Autosaver()
{
    qDeleteAll(m_watched);
}

void Autosaver::watch(Work* work)
{
    if (m_watched.contains(work))
        return;
    auto* watched = new Watched;
    watched->key = work->getKey();
    watched->timer.setSingleShot(true);
    m_watched.insert(work, watched);
    connect(&watched->timer, &QTimer::timeout, this, [this, work] { keepNow(work); });
    connect(work, &Work::changed, this, [this, work] { changed(work); });
    connect(work, &Work::modifiedChanged, this, [this, work] { modifiedChanged(work); });
    connect(work, &QObject::destroyed, this, [this, work] { release(work); });
    // A network that was restored, or is in no file, needs a copy from the start.
    if (work->isModified())
        changed(work);
}

void Autosaver::release(Work* work)
{
    Watched* watched = m_watched.take(work);
    if (!watched)
        return;
    disconnect(work, nullptr, this, nullptr);
    m_store->forget(watched->key);
    delete watched;
}

void Autosaver::changed(Work* work)
{
    Watched* watched = m_watched.value(work);
    if (!watched->waiting.isValid())
        watched->waiting.start();
    const qint64 restForCost = watched->cost > unnoticedCost ? restsOfCost * watched->cost : 0;
    const qint64 rest = qMax(qint64(m_restTime), restForCost);
    const qint64 longest = qMax(qint64(longestTime), 2 * rest);
    if (!watched->timer.isActive() || watched->waiting.elapsed() < longest)
        watched->timer.start(std::chrono::milliseconds(rest));
}

void Autosaver::modifiedChanged(Work* work)
{
    Watched* watched = m_watched.value(work);
    if (work->isModified())
        return;
    watched->timer.stop();
    watched->waiting.invalidate();
    watched->lastDigest.clear();
    m_store->forget(watched->key);
}

bool Autosaver::keepNow(Work* work)
{
    Watched* watched = m_watched.value(work);
    if (!watched || !watched->waiting.isValid())
        return true;
    watched->timer.stop();
    QElapsedTimer clock;
    clock.start();
    // Scenes know by their text whether they are modified.
    const QByteArray text = work->getText();
    if (!work->isModified()) {
        watched->waiting.invalidate();
        watched->lastDigest.clear();
        m_store->forget(watched->key);
        return true;
    }
    const QByteArray digest = QCryptographicHash::hash(text, QCryptographicHash::Sha1);
    if (digest == watched->lastDigest) {
        watched->waiting.invalidate();
        return true;
    }
    QString error;
    if (m_store->keep(
            { work->getKind(), watched->key, work->getTitle(), work->getPath() }, text, &error)) {
        watched->waiting.invalidate();
        watched->lastDigest = digest;
        watched->cost = clock.elapsed();
        m_lastError.clear();
        return true;
    }
    // A full disk may be made free: the copy is tried again, also when nobody changes anything.
    watched->timer.start(m_restTime);
    if (error != m_lastError) {
        m_lastError = error;
        emit failed(error);
    }
    return false;
}
