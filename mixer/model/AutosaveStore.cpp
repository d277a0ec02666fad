// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "AutosaveStore.h"

#include "dzfilewriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

QString message(const char* source)
{
    return QCoreApplication::translate("AutosaveStore", source);
}

/// A copy's name is the document's key, a rising number of fixed width, and what it is.
const int numberWidth = 8;

QString copyName(const QString& key, int number)
{
    return QStringLiteral("%1.%2.network").arg(key).arg(number, numberWidth, 10, QLatin1Char('0'));
}

QString originName(const QString& key)
{
    return key + QStringLiteral(".origin.json");
}

QString lockName()
{
    return QStringLiteral("lock");
}

/// The copies of one document, or of all for an empty key, the newest first.
QStringList copiesIn(const QString& folder, const QString& key)
{
    const QString pattern
        = (key.isEmpty() ? QStringLiteral("*") : key) + QStringLiteral(".*.network");
    return QDir(folder).entryList({ pattern }, QDir::Files, QDir::Name | QDir::Reversed);
}

QString keyOf(const QString& copy)
{
    return copy.section(QLatin1Char('.'), 0, 0);
}

int numberOf(const QString& copy)
{
    return copy.section(QLatin1Char('.'), 1, 1).toInt();
}

/// Programs that start at the same moment never get the same name.
QString newSessionName()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

} // namespace

/// A lock on a file that the system takes off when the process ends, however it ends. A lock that
/// notes the process number would hold on when the number is given again.
class AutosaveStore::Lock
{
public:
    /// Null when somebody else holds it, or when there is no writing here.
    static std::unique_ptr<Lock> take(const QString& path)
    {
        const int file
            = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (file < 0)
            return nullptr;
        if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
            ::close(file);
            return nullptr;
        }
        return std::unique_ptr<Lock>(new Lock(file));
    }
    ~Lock() { ::close(m_file); }

private:
    explicit Lock(int file)
        : m_file(file)
    {
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    int m_file;
};

AutosaveStore::AutosaveStore(const QString& folder)
    : m_folder(folder.isEmpty() ? defaultFolder() : folder)
{
}

AutosaveStore::~AutosaveStore()
{
    removeSession(&m_own);
    // What was taken over and not discarded stays for the next program: its user did not choose.
}

QString AutosaveStore::defaultFolder()
{
    const QString named = QString::fromLocal8Bit(qgetenv("VIREO_AUTOSAVE_DIR"));
    if (!named.isEmpty())
        return named;
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)
        + QStringLiteral("/autosave");
}

bool AutosaveStore::openSession(QString* error)
{
    if (m_own.lock)
        return true;
    const QString folder = m_folder + QLatin1Char('/') + newSessionName();
    if (QDir().mkpath(folder)) {
        // Others may read neither names nor content.
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        m_own.lock = Lock::take(folder + QLatin1Char('/') + lockName());
    }
    if (!m_own.lock) {
        if (error)
            *error = message("cannot keep copies in %1: %2; name a folder that can be written to "
                             "VIREO_AUTOSAVE_DIR")
                         .arg(m_folder, QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    m_own.folder = folder;
    return true;
}

void AutosaveStore::removeSession(Session* session)
{
    if (!session->lock)
        return;
    QDir(session->folder).removeRecursively();
    session->lock.reset();
}

bool AutosaveStore::keep(const QString& key, const QString& title, const QString& path,
    const QByteArray& text, QString* error)
{
    if (!openSession(error))
        return false;
    const QDir folder(m_own.folder);
    QJsonObject origin;
    origin[QStringLiteral("title")] = title;
    origin[QStringLiteral("path")] = path;
    if (!dzWriteFile(folder.filePath(originName(key)), QJsonDocument(origin).toJson(), error))
        return false;
    const QStringList copies = copiesIn(m_own.folder, key);
    const int number = copies.isEmpty() ? 1 : numberOf(copies.first()) + 1;
    if (!dzWriteFile(folder.filePath(copyName(key, number)), text, error))
        return false;
    for (const QString& old : copies.mid(keptCopies - 1))
        QFile::remove(folder.filePath(old));
    return true;
}

void AutosaveStore::forget(const QString& key)
{
    if (!m_own.lock)
        return;
    const QDir folder(m_own.folder);
    for (const QString& copy : copiesIn(m_own.folder, key))
        QFile::remove(folder.filePath(copy));
    QFile::remove(folder.filePath(originName(key)));
}

QVector<RestorableNetwork> AutosaveStore::networksOf(const QString& session)
{
    const QDir folder(session);
    QMap<QString, RestorableNetwork> networks;
    for (const QString& copy : copiesIn(session, QString())) {
        RestorableNetwork& network = networks[keyOf(copy)];
        network.files.append(folder.filePath(copy));
    }
    QVector<RestorableNetwork> result;
    for (auto network = networks.begin(); network != networks.end(); ++network) {
        network->session = session;
        network->key = network.key();
        network->time = QFileInfo(network->files.first()).lastModified();
        QFile file(folder.filePath(originName(network.key())));
        if (file.open(QIODevice::ReadOnly)) {
            const QJsonObject origin = QJsonDocument::fromJson(file.readAll()).object();
            network->title = origin[QStringLiteral("title")].toString();
            network->path = origin[QStringLiteral("path")].toString();
        }
        result.append(*network);
    }
    return result;
}

QVector<RestorableNetwork> AutosaveStore::takeOver()
{
    const QDir folder(m_folder);
    for (const QString& name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        Session session;
        session.folder = folder.filePath(name);
        if (!QFileInfo::exists(session.folder + QLatin1Char('/') + lockName()))
            continue;
        session.lock = Lock::take(session.folder + QLatin1Char('/') + lockName());
        if (session.lock)
            m_taken.push_back(std::move(session));
    }
    QVector<RestorableNetwork> networks;
    for (Session& session : m_taken) {
        const QVector<RestorableNetwork> found = networksOf(session.folder);
        if (found.isEmpty())
            removeSession(&session);
        networks += found;
    }
    std::stable_sort(networks.begin(), networks.end(),
        [](const RestorableNetwork& a, const RestorableNetwork& b) { return a.time > b.time; });
    return networks;
}

void AutosaveStore::discard(const RestorableNetwork& network)
{
    for (Session& session : m_taken) {
        if (!session.lock || session.folder != network.session)
            continue;
        const QDir folder(session.folder);
        for (const QString& copy : copiesIn(session.folder, network.key))
            QFile::remove(folder.filePath(copy));
        QFile::remove(folder.filePath(originName(network.key)));
        if (copiesIn(session.folder, QString()).isEmpty())
            removeSession(&session);
    }
}
