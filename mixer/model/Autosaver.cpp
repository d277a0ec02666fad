// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Autosaver.h"

#include "AutosaveStore.h"
#include "MixerDocument.h"

#include <QElapsedTimer>
#include <QTimer>

struct Autosaver::Watched {
    QString key;
    QTimer timer;
    /// Since the first change that has no copy; invalid when all have.
    QElapsedTimer waiting;
    QByteArray lastText;
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

void Autosaver::watch(MixerDocument* document)
{
    if (m_watched.contains(document))
        return;
    auto* watched = new Watched;
    watched->key = document->getKey();
    watched->timer.setSingleShot(true);
    m_watched.insert(document, watched);
    connect(&watched->timer, &QTimer::timeout, this, [this, document] { keepNow(document); });
    connect(document, &MixerDocument::changed, this, [this, document] { changed(document); });
    connect(document, &MixerDocument::modifiedChanged, this,
        [this, document] { modifiedChanged(document); });
    connect(document, &QObject::destroyed, this, [this, document] { release(document); });
    // A network that was restored, or is in no file, needs a copy from the start.
    if (document->isModified())
        changed(document);
}

void Autosaver::release(MixerDocument* document)
{
    Watched* watched = m_watched.take(document);
    if (!watched)
        return;
    disconnect(document, nullptr, this, nullptr);
    m_store->forget(watched->key);
    delete watched;
}

void Autosaver::changed(MixerDocument* document)
{
    Watched* watched = m_watched.value(document);
    if (!watched->waiting.isValid())
        watched->waiting.start();
    if (!watched->timer.isActive() || watched->waiting.elapsed() < longestTime)
        watched->timer.start(m_restTime);
}

void Autosaver::modifiedChanged(MixerDocument* document)
{
    Watched* watched = m_watched.value(document);
    if (document->isModified())
        return;
    watched->timer.stop();
    watched->waiting.invalidate();
    watched->lastText.clear();
    m_store->forget(watched->key);
}

bool Autosaver::keepNow(MixerDocument* document)
{
    Watched* watched = m_watched.value(document);
    if (!watched || !watched->waiting.isValid())
        return true;
    watched->timer.stop();
    const QByteArray text = document->getText();
    if (!document->isModified() || text == watched->lastText) {
        watched->waiting.invalidate();
        return true;
    }
    QString error;
    if (m_store->keep(watched->key, document->getTitle(), document->getPath(), text, &error)) {
        watched->waiting.invalidate();
        watched->lastText = text;
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
