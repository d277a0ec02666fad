// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Work.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>
#include <memory>
#include <vector>

/// What is told of a work when a copy is kept.
struct WorkOrigin {
    Work::Kind kind;
    QString key;
    QString title; ///< as the window showed it
    QString path;  ///< its file; empty when it was never saved
};

/// Something that a program was working on when it ended without saying so.
struct RestorableWork : WorkOrigin {
    QString session;   ///< folder of the program that ended
    QDateTime time;    ///< of the newest copy
    QStringList files; ///< the copies, the newest first
};

/// Copies of what is being worked on, kept for the case that the program ends without
/// warning.
///
/// Each program has a folder of its own below the store's, held by a lock that ends with the
/// program however it ends. Folders whose lock is free belong to programs that are gone; taking
/// one over makes it this program's, so that two programs never offer or delete the same copies.
///
/// The store's folder may hold anything else: only real folders with names of the store's that hold
/// its marker are looked at, only files with names of the store's are removed there, and a folder
/// goes when it is empty then.
class AutosaveStore
{
public:
    /// Copies that are kept of each work.
    static const int keptCopies = 5;

    /// Uses `folder`; when empty, that of defaultFolder(). Nothing is written before there is
    /// something to keep.
    explicit AutosaveStore(const QString& folder = QString());
    /// Removes this program's copies: it ended in good order.
    ~AutosaveStore();

    /// The folder that the environment variable VIREO_AUTOSAVE_DIR names, else "autosave" in the
    /// user's folder for this program's data.
    static QString defaultFolder();

    /// Keeps one more copy of a work, and forgets the oldest beyond the number that is kept. Its
    /// key is made of letters, digits and "-". On failure false, with the reason in `error`.
    bool keep(const WorkOrigin& origin, const QByteArray& text, QString* error);
    /// Removes all copies of a work: it was saved or closed on purpose.
    void forget(const QString& key);

    /// Takes over what programs left that are gone, and tells what there is, the newest first.
    QVector<RestorableWork> takeOver();
    /// Removes what was taken over and left.
    void discard(const RestorableWork& work);

    QString getFolder() const { return m_folder; }

private:
    AutosaveStore(const AutosaveStore&) = delete;
    AutosaveStore& operator=(const AutosaveStore&) = delete;

    class Lock;
    struct Session {
        QString folder;
        std::unique_ptr<Lock> lock;
    };

    bool openSession(QString* error);
    static void removeSession(Session* session);
    static QVector<RestorableWork> worksOf(const QString& session);

    QString m_folder;
    Session m_own;
    std::vector<Session> m_taken;
};
