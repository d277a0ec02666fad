// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Document.h"

#include <QHash>
#include <QStringList>

#include <memory>

namespace lux {

struct SceneOptions {
    ReadOptions reading;
    /// False makes every Include an error, for texts that may come from anywhere.
    bool followsIncludes = true;
};

/// A file with all the files that it includes, each read once.
class SceneText
{
public:
    /// As deep as the renderer follows.
    static constexpr int maximumDepth = 32;
    /// As many statements are put in order and as many includes followed; more are an error at the
    /// Include that brings them. A few files that include each other twice are a million includes.
    static constexpr int maximumStatements = 20 * 1000 * 1000;
    static constexpr int maximumIncludes = 10 * 1000;

    /// What names of such files end in, without dots: a scene, its materials, its objects.
    static QStringList suffixes();

    /// A statement of one of the documents.
    struct Step {
        int document;
        int statement;
    };

    /// Reads a file and what it includes, by names relative to the including file's folder. On
    /// failure false with file, cause and what to do in `error`; includes that cannot be read are
    /// errors of the document that names them.
    bool readFile(const QString& path, const SceneOptions& options, QString* error);
    /// The same of a text that was not read from a file; `folder` is where its includes are.
    void readText(const QByteArray& text, const QString& folder, const SceneOptions& options);

    /// The first is the file itself.
    int documentCount() const { return static_cast<int>(m_documents.size()); }
    const Document& document(int place) const { return *m_documents[static_cast<size_t>(place)]; }
    /// Its path; empty for a text that was not read from a file.
    QString path(int document) const { return m_paths.at(document); }

    /// All statements in the renderer's order. In place of an Include that was followed are the
    /// statements of its file.
    const std::vector<Step>& steps() const { return m_steps; }
    Statement statement(Step step) const
    {
        return document(step.document).statement(step.statement);
    }

private:
    int addDocument(std::unique_ptr<Document> document, const QString& path);
    void walk(int document, const QString& folder, QList<int>* open);
    void followInclude(const Statement& include, int from, const QString& folder, QList<int>* open);
    /// The document of a file, read now if it was not before; -1 if it cannot be.
    int documentOf(const QString& path, QString* error);
    void fail(int document, const Statement& include, const QString& cause);

    SceneOptions m_options;
    std::vector<std::unique_ptr<Document>> m_documents;
    QStringList m_paths;
    QHash<QString, int> m_byPath; // only asked, never walked
    std::vector<Step> m_steps;
    int m_includes = 0;
};

} // namespace lux
