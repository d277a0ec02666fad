// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>
#include <memory>
#include <vector>

/// A network that a program was working on when it ended without saying so.
struct RestorableNetwork {
    QString session;   ///< folder of the program that ended
    QString key;       ///< of the document in that program
    QString title;     ///< as the window showed it
    QString path;      ///< file of the network; empty when it was never saved
    QDateTime time;    ///< of the newest copy
    QStringList files; ///< the copies, the newest first
};

/// Copies of networks that are being worked on, kept for the case that the program ends without
/// warning.
///
/// Each program has a folder of its own below the store's, held by a lock that ends with the
/// program however it ends. Folders whose lock is free belong to programs that are gone; taking
/// one over makes it this program's, so that two programs never offer or delete the same copies.
class AutosaveStore
{
public:
    /// Copies that are kept of each document.
    static const int keptCopies = 5;

    /// Uses `folder`; when empty, that of defaultFolder(). Nothing is written before there is
    /// something to keep.
    explicit AutosaveStore(const QString& folder = QString());
    /// Removes this program's copies: it ended in good order.
    ~AutosaveStore();

    /// The folder that the environment variable VIREO_AUTOSAVE_DIR names, else "autosave" in the
    /// user's folder for this program's data.
    static QString defaultFolder();

    /// Keeps one more copy of a document, and forgets the oldest beyond the number that is kept.
    /// `key` is made of letters, digits and "-". On failure false, with the reason in `error`.
    bool keep(const QString& key, const QString& title, const QString& path, const QByteArray& text,
        QString* error);
    /// Removes all copies of a document: it was saved or closed on purpose.
    void forget(const QString& key);

    /// Takes over what programs left that are gone, and tells what there is, the newest first.
    QVector<RestorableNetwork> takeOver();
    /// Removes what was taken over and left.
    void discard(const RestorableNetwork& network);

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
    static QVector<RestorableNetwork> networksOf(const QString& session);

    QString m_folder;
    Session m_own;
    std::vector<Session> m_taken;
};
