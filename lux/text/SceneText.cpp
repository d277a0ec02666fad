// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneText.h"

#include <QDir>
#include <QFileInfo>

namespace lux {

QStringList SceneText::suffixes()
{
    return { QStringLiteral("lxs"), QStringLiteral("lxm"), QStringLiteral("lxo") };
}

bool SceneText::readFile(const QString& path, const SceneOptions& options, QString* error)
{
    *this = SceneText();
    m_options = options;
    auto document = std::make_unique<Document>();
    if (!Document::readFile(path, options.reading, document.get(), error))
        return false;
    const int first = addDocument(std::move(document), path);
    m_byPath.insert(QFileInfo(path).canonicalFilePath(), first);
    QList<int> open { first };
    walk(first, QFileInfo(path).absolutePath(), &open);
    return true;
}

void SceneText::readText(const QByteArray& text, const QString& folder, const SceneOptions& options)
{
    *this = SceneText();
    m_options = options;
    const int first = addDocument(std::make_unique<Document>(text, options.reading), QString());
    QList<int> open { first };
    walk(first, folder, &open);
}

int SceneText::addDocument(std::unique_ptr<Document> document, const QString& path)
{
    m_documents.push_back(std::move(document));
    m_paths.append(path);
    return documentCount() - 1;
}

void SceneText::walk(int document, const QString& folder, QList<int>* open)
{
    const int count = m_documents[static_cast<size_t>(document)]->statementCount();
    for (int i = 0; i < count; ++i) {
        const Statement statement = m_documents[static_cast<size_t>(document)]->statement(i);
        if (statement.keyword() == Keyword::Include && statement.isWhole())
            followInclude(statement, document, folder, open);
        else
            m_steps.push_back({ document, i });
    }
}

void SceneText::followInclude(
    const Statement& include, int from, const QString& folder, QList<int>* open)
{
    const std::string given = include.headText(0);
    const QString name = QString::fromUtf8(given.data(), static_cast<int>(given.size()));
    if (!m_options.followsIncludes) {
        fail(from, include,
            QStringLiteral(
                "The file \"%1\" is not read here; paste its text in place of this line.")
                .arg(name));
        return;
    }
    if (open->size() >= maximumDepth) {
        fail(from, include,
            QStringLiteral("The file \"%1\" is not read: files include each other more than %2 "
                           "deep; include it further up.")
                .arg(name, QString::number(maximumDepth)));
        return;
    }
    const QString path = QDir(folder).absoluteFilePath(name);
    QString error;
    const int document = documentOf(path, &error);
    if (document < 0) {
        fail(from, include, error);
        return;
    }
    if (open->contains(document)) {
        fail(from, include,
            QStringLiteral("The file \"%1\" includes itself; remove this line.").arg(name));
        return;
    }
    const auto added = m_documents[static_cast<size_t>(document)]->statementCount();
    if (++m_includes > maximumIncludes
        || m_steps.size() + static_cast<size_t>(added) > static_cast<size_t>(maximumStatements)) {
        fail(from, include,
            QStringLiteral("The file \"%1\" is not read: it and others are "
                           "included too often; include each once.")
                .arg(name));
        return;
    }
    open->append(document);
    walk(document, QFileInfo(path).absolutePath(), open);
    open->removeLast();
}

int SceneText::documentOf(const QString& path, QString* error)
{
    const QFileInfo info(path);
    // A pipe would let the reader wait for ever.
    if (info.exists() && !info.isFile()) {
        *error = QStringLiteral("cannot read %1: it is no file; name a file").arg(path);
        return -1;
    }
    const QString key = info.exists() ? info.canonicalFilePath() : path;
    const auto known = m_byPath.constFind(key);
    if (known != m_byPath.constEnd())
        return known.value();
    auto document = std::make_unique<Document>();
    if (!Document::readFile(path, m_options.reading, document.get(), error))
        return -1;
    const int place = addDocument(std::move(document), path);
    m_byPath.insert(key, place);
    return place;
}

void SceneText::fail(int document, const Statement& include, const QString& cause)
{
    m_documents[static_cast<size_t>(document)]->addError(
        { ErrorKind::Include, include.span(), cause });
}

} // namespace lux
