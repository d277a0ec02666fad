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
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString message(const char* source)
{
    return QCoreApplication::translate("AutosaveStore", source);
}

/// A copy's name is the work's key, a rising number of fixed width, and what it is.
const int numberWidth = 8;

/// Bytes of the note on where a work came from.
const qint64 largestOrigin = 1 << 20;

QString suffixOf(Work::Kind kind)
{
    return kind == Work::Scene ? QStringLiteral("scene") : QStringLiteral("network");
}

QString copyName(const WorkOrigin& origin, int number)
{
    return QStringLiteral("%1.%2.%3")
        .arg(origin.key)
        .arg(number, numberWidth, 10, QLatin1Char('0'))
        .arg(suffixOf(origin.kind));
}

QString originName(const QString& key)
{
    return key + QStringLiteral(".origin.json");
}

QString lockName()
{
    return QStringLiteral("lock");
}

/// What a session's lock file holds. A folder may be named for the copies that others use, too.
const char marker[] = "Copies of unsaved work, kept by vireo-mixer.\n";

bool isSessionName(const QString& name)
{
    static const QRegularExpression pattern(
        QStringLiteral("^session-[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}$"));
    return pattern.match(name).hasMatch();
}

/// Programs that start at the same moment never get the same name.
QString newSessionName()
{
    return QStringLiteral("session-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
}

bool isCopyName(const QString& name)
{
    static const QRegularExpression pattern(
        QStringLiteral("^[A-Za-z0-9-]+\\.[0-9]{8}\\.(network|scene)$"));
    return pattern.match(name).hasMatch();
}

/// Copies, origins, and what writing one leaves when the program is killed.
bool isOwnName(const QString& name)
{
    static const QRegularExpression pattern(QStringLiteral(
        "^[A-Za-z0-9-]+\\.([0-9]{8}\\.(network|scene)|origin\\.json)(\\.[A-Za-z0-9]{6})?$"));
    return pattern.match(name).hasMatch();
}

QString keyOf(const QString& copy)
{
    return copy.section(QLatin1Char('.'), 0, 0);
}

int numberOf(const QString& copy)
{
    return copy.section(QLatin1Char('.'), 1, 1).toInt();
}

Work::Kind kindOf(const QString& copy)
{
    return copy.endsWith(suffixOf(Work::Scene)) ? Work::Scene : Work::Network;
}

QStringList realFilesIn(const QString& folder)
{
    return QDir(folder).entryList(
        QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Name | QDir::Reversed);
}

/// The copies of one work, or of all for an empty key, the newest first.
QStringList copiesIn(const QString& folder, const QString& key)
{
    QStringList copies;
    for (const QString& name : realFilesIn(folder))
        if (isCopyName(name) && (key.isEmpty() || keyOf(name) == key))
            copies.append(name);
    return copies;
}

void removeCopies(const QString& folder, const QString& key)
{
    for (const QString& copy : copiesIn(folder, key))
        QFile::remove(folder + QLatin1Char('/') + copy);
    QFile::remove(folder + QLatin1Char('/') + originName(key));
}

} // namespace

/// A lock on a file that the system takes off when the process ends, however it ends. A lock that
/// notes the process number would hold on when the number is given again. The file marks its folder
/// as the store's.
class AutosaveStore::Lock
{
public:
    /// Makes the lock of a new session; null, with errno, when that cannot be.
    static std::unique_ptr<Lock> make(const QString& folder)
    {
        std::unique_ptr<Lock> lock = open(folder, O_CREAT | O_EXCL);
        const auto size = ssize_t(std::strlen(marker));
        if (lock && ::write(lock->m_file, marker, size_t(size)) != size)
            return nullptr;
        return lock;
    }
    /// Null when somebody else holds it, or when there is no lock of ours.
    static std::unique_ptr<Lock> take(const QString& folder)
    {
        std::unique_ptr<Lock> lock = open(folder, 0);
        struct stat state = {};
        if (!lock || ::fstat(lock->m_file, &state) != 0 || !S_ISREG(state.st_mode))
            return nullptr;
        char content[sizeof marker] = {};
        const ssize_t size = ::read(lock->m_file, content, sizeof content);
        const bool isOurs
            = size == ssize_t(std::strlen(marker)) && std::memcmp(content, marker, size) == 0;
        return isOurs ? std::move(lock) : nullptr;
    }
    ~Lock() { ::close(m_file); }

private:
    explicit Lock(int file)
        : m_file(file)
    {
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    static std::unique_ptr<Lock> open(const QString& folder, int flags)
    {
        const QByteArray path = QFile::encodeName(folder + QLatin1Char('/') + lockName());
        // Somebody's pipe of that name must not hold the program up.
        const int file
            = ::open(path.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | flags, 0600);
        if (file < 0)
            return nullptr;
        std::unique_ptr<Lock> lock(new Lock(file));
        return ::flock(file, LOCK_EX | LOCK_NB) == 0 ? std::move(lock) : nullptr;
    }

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
        m_own.lock = Lock::make(folder);
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
    // What else somebody put there is not ours to remove; the folder stays for it.
    for (const QString& name : realFilesIn(session->folder))
        if (isOwnName(name) || name == lockName())
            QFile::remove(session->folder + QLatin1Char('/') + name);
    QDir().rmdir(session->folder);
    session->lock.reset();
}

bool AutosaveStore::keep(const WorkOrigin& origin, const QByteArray& text, QString* error)
{
    if (!openSession(error))
        return false;
    const QDir folder(m_own.folder);
    QJsonObject about;
    about[QStringLiteral("title")] = origin.title;
    about[QStringLiteral("path")] = origin.path;
    if (!dzWriteFile(folder.filePath(originName(origin.key)), QJsonDocument(about).toJson(), error))
        return false;
    const QStringList copies = copiesIn(m_own.folder, origin.key);
    const int number = copies.isEmpty() ? 1 : numberOf(copies.first()) + 1;
    if (!dzWriteFile(folder.filePath(copyName(origin, number)), text, error))
        return false;
    for (const QString& old : copies.mid(keptCopies - 1))
        QFile::remove(folder.filePath(old));
    return true;
}

void AutosaveStore::forget(const QString& key)
{
    if (m_own.lock)
        removeCopies(m_own.folder, key);
}

QVector<RestorableWork> AutosaveStore::worksOf(const QString& session)
{
    const QDir folder(session);
    QMap<QString, RestorableWork> works;
    for (const QString& copy : copiesIn(session, QString())) {
        RestorableWork& work = works[keyOf(copy)];
        work.kind = kindOf(copy);
        work.files.append(folder.filePath(copy));
    }
    QVector<RestorableWork> result;
    for (auto work = works.begin(); work != works.end(); ++work) {
        work->session = session;
        work->key = work.key();
        work->time = QFileInfo(work->files.first()).lastModified();
        QByteArray text;
        if (dzReadFile(folder.filePath(originName(work.key())), largestOrigin, &text, nullptr)) {
            const QJsonObject about = QJsonDocument::fromJson(text).object();
            work->title = about[QStringLiteral("title")].toString();
            work->path = about[QStringLiteral("path")].toString();
        }
        result.append(*work);
    }
    return result;
}

QVector<RestorableWork> AutosaveStore::takeOver()
{
    const QDir folder(m_folder);
    const QDir::Filters realFolders = QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks;
    for (const QString& name : folder.entryList(realFolders, QDir::Name)) {
        if (!isSessionName(name))
            continue;
        Session session;
        session.folder = folder.filePath(name);
        session.lock = Lock::take(session.folder);
        if (session.lock)
            m_taken.push_back(std::move(session));
    }
    QVector<RestorableWork> works;
    for (Session& session : m_taken) {
        const QVector<RestorableWork> found = worksOf(session.folder);
        if (found.isEmpty())
            removeSession(&session);
        works += found;
    }
    std::stable_sort(works.begin(), works.end(),
        [](const RestorableWork& a, const RestorableWork& b) { return a.time > b.time; });
    return works;
}

void AutosaveStore::discard(const RestorableWork& work)
{
    for (Session& session : m_taken) {
        if (!session.lock || session.folder != work.session)
            continue;
        removeCopies(session.folder, work.key);
        if (copiesIn(session.folder, QString()).isEmpty())
            removeSession(&session);
    }
}
