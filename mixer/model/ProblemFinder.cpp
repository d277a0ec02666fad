// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ProblemFinder.h"

#include "BrickAppearance.h"
#include "NetworkText.h"
#include "NetworkWalk.h"
#include "dzbrickparam.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzforeachlink.h"
#include "dzimageproperty.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"
#include "dzstringproperty.h"
#include "dzunknownbrick.h"
#include "idzbrickuser.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <cmath>

namespace {

QString message(const char* source)
{
    return QCoreApplication::translate("ProblemFinder", source);
}

/// One search.
class Search
{
public:
    Search(const IDzBrickUser* user, const QString& folder)
        : m_user(user)
        , m_folder(folder)
    {
    }

    QVector<Problem> run()
    {
        const QVector<DzShaderBrick*> bricks = bricksOf(m_user);
        findRoots(bricks);
        if (!m_roots.isEmpty())
            m_reachable = reachableFrom({ m_roots.last() });
        if (m_roots.size() > 1)
            m_reachableFromAny = reachableFrom(m_roots);
        findWritten();
        for (DzShaderBrick* brick : bricks) {
            checkReach(brick);
            checkEffect(brick);
            checkClass(brick);
            for (int i = 0; i < brick->getNumParameters(); ++i)
                checkParameter(brick, brick->getParameter(i));
            forEachProperty(brick, [&](DzProperty* property) { checkProperty(brick, property); });
        }
        return m_problems;
    }

private:
    Problem& add(Problem::Kind kind, DzShaderBrick* brick, const QString& text)
    {
        m_problems.append(Problem { kind, brick, text });
        return m_problems.last();
    }

    /// A problem of a value that something can be done about at once.
    static void setRemedy(
        Problem* problem, DzProperty* property, const char* rule, lux::Remedy::Action action)
    {
        lux::Remedy remedy;
        remedy.action = action;
        remedy.parameter = property->getName();
        problem->property = property;
        problem->rule = QString::fromLatin1(rule);
        problem->remedies = { remedy };
    }

    void findRoots(const QVector<DzShaderBrick*>& bricks)
    {
        for (DzShaderBrick* brick : bricks)
            if (isRoot(brick))
                m_roots.append(brick);
        if (m_roots.isEmpty() && !bricks.isEmpty())
            add(Problem::NoRoot, nullptr,
                message("The network has no root brick, so it writes nothing; add one and link the "
                        "material to it."));
        for (int i = 0; i + 1 < m_roots.size(); ++i)
            add(Problem::SeveralRoots, m_roots.at(i),
                message("This root is not written: \"%1\", the last root, is. Delete the one that "
                        "you do not want.")
                    .arg(writtenRoot()));
    }

    QString writtenRoot() const { return BrickAppearance::titleText(m_roots.last()); }

    typedef QSet<const DzShaderBrick*> BrickSet;
    static BrickSet reachableFrom(const QVector<DzShaderBrick*>& roots)
    {
        BrickSet reachable;
        for (const DzShaderBrick* brick : withUpstream(roots))
            reachable.insert(brick);
        return reachable;
    }

    void checkReach(DzShaderBrick* brick)
    {
        // Without a root nothing is reachable, which is said once, and so it is of further roots.
        if (m_roots.isEmpty() || isRoot(brick) || m_reachable.contains(brick))
            return;
        // Whoever put in a root too many has not lost the network before it.
        add(Problem::UnreachableBrick, brick,
            m_reachableFromAny.contains(brick)
                ? message(
                    "It leads only to a root that is not written; link it to \"%1\" or delete "
                    "that root.")
                      .arg(writtenRoot())
                : message("It does not lead to the root, so it is not written; link it or delete "
                          "it."));
    }

    /// A brick decides itself which of its inputs it writes, and may decide otherwise for values
    /// than for placeholders: what takes part in neither text has no effect.
    void findWritten()
    {
        for (const bool literalValues : { true, false }) {
            NetworkTextForm form;
            form.literalValues = literalValues;
            const NetworkText text = textOf(m_user, form);
            m_hasText = m_hasText || text.error.isEmpty();
            for (const TextStatement& statement : text.statements)
                m_written.insert(statement.brick);
        }
        // What shares an input writes nothing until all links but one are removed, which is said
        // where the input is.
        QVector<DzShaderBrick*> sharing;
        for (const DzShaderBrick* brick : qAsConst(m_written))
            if (brick)
                forEachInputLink(brick, [&](const DzBrickParam* input, const DzBrickParam* output) {
                    if (input->getNumConnections() > 1)
                        sharing.append(output->getTopBrickOwner());
                });
        m_written.unite(reachableFrom(sharing));
    }

    void checkEffect(DzShaderBrick* brick)
    {
        if (!m_hasText || isRoot(brick) || !m_reachable.contains(brick) || m_written.contains(brick)
            || qobject_cast<DzUnknownBrick*>(brick))
            return;
        const DzBrickParam* idle = idleInputFedBy(brick);
        add(Problem::WithoutEffect, brick,
            idle ? message("It has no effect: %1 never writes what is linked to \"%2\". Link it to "
                           "another input or delete it.")
                       .arg(BrickAppearance::titleText(idle->getTopBrickOwner()), idle->getLabel())
                 : message("It has no effect, as the bricks that it feeds have none."));
    }

    /// An input that the brick feeds on a brick that is written; null when there is none.
    const DzBrickParam* idleInputFedBy(const DzShaderBrick* brick) const
    {
        const DzBrickParam* idle = nullptr;
        forEachOutputLink(brick, [&](const DzBrickParam*, const DzBrickParam* input) {
            if (!idle && m_written.contains(input->getTopBrickOwner()))
                idle = input;
        });
        return idle;
    }

    void checkClass(DzShaderBrick* brick)
    {
        if (qobject_cast<DzUnknownBrick*>(brick))
            add(Problem::UnknownBrick, brick,
                message("No loaded module offers the class %1; it is kept as it is and writes "
                        "nothing.")
                    .arg(brick->getStoredClassName()));
    }

    void checkParameter(DzShaderBrick* brick, const DzBrickParam* param)
    {
        if (!param->isOutput() && param->getNumConnections() > 1)
            add(Problem::SeveralLinks, brick,
                message("\"%1\" has %2 links; remove all but one.")
                    .arg(param->getLabel())
                    .arg(param->getNumConnections()));
        checkText(brick, param->getName(), message("input name"));
    }

    void checkProperty(DzShaderBrick* brick, DzProperty* property)
    {
        if (auto* text = qobject_cast<DzStringProperty*>(property)) {
            checkText(brick, text->getValue(), property->getLabel(), property);
            if (qobject_cast<DzFileProperty*>(property))
                checkFile(brick, text->getValue(), property->getLabel(), property);
        } else if (auto* image = qobject_cast<DzImageProperty*>(property)) {
            checkText(brick, image->getFilename(), property->getLabel(), property);
            checkFile(brick, image->getFilename(), property->getLabel(), property);
        } else if (auto* number = qobject_cast<DzNumericProperty*>(property)) {
            checkNumber(brick, number);
        }
    }

    void checkNumber(DzShaderBrick* brick, DzNumericProperty* property)
    {
        if (!std::isfinite(property->getDoubleValue()))
            add(Problem::NotFinite, brick,
                message("\"%1\" is %2, which the renderer cannot read; set a number.")
                    .arg(property->getLabel(), property->getValueText()))
                .property
                = property;
        if (!property->isMapped())
            return;
        const QString file = property->getMapValue()->getFilename();
        const QString what = message("map of %1").arg(property->getLabel());
        checkText(brick, file, what, property);
        checkFile(brick, file, what, property);
    }

    void checkFile(
        DzShaderBrick* brick, const QString& file, const QString& what, DzProperty* property)
    {
        if (!file.isEmpty() && !exists(file))
            setRemedy(&add(Problem::MissingFile, brick,
                          message("The file \"%1\" (%2) does not exist; choose another.")
                              .arg(file, what)),
                property, "missing-file", lux::Remedy::ChooseFile);
    }

    bool exists(const QString& file)
    {
        const auto known = m_files.constFind(file);
        if (known != m_files.constEnd())
            return *known;
        const bool found = QFileInfo::exists(file)
            || (!m_folder.isEmpty() && QFileInfo::exists(QDir(m_folder).filePath(file)));
        m_files.insert(file, found);
        return found;
    }

    void checkText(DzShaderBrick* brick, const QString& text, const QString& what,
        DzProperty* property = nullptr)
    {
        QString cause;
        if (isWritableText(text, &cause))
            return;
        Problem& problem = add(Problem::UnwritableText, brick, message("%1: %2.").arg(what, cause));
        problem.property = property;
        if (property && text.contains(QLatin1Char('\\')))
            setRemedy(&problem, property, "swallowed-backslash", lux::Remedy::UseSlashes);
    }

    const IDzBrickUser* m_user;
    QString m_folder;
    QVector<DzShaderBrick*> m_roots;
    BrickSet m_reachable;        ///< from the root that is written
    BrickSet m_reachableFromAny; ///< when there are several roots
    BrickSet m_written;          ///< those that take part in the text
    bool m_hasText = false;
    QHash<QString, bool> m_files;
    QVector<Problem> m_problems;
};

} // namespace

QVector<Problem> findProblems(const IDzBrickUser* user, const QString& folder)
{
    return Search(user, folder).run();
}

bool isWritableText(const QString& text, QString* cause)
{
    const auto refuse = [&](const QString& reason) {
        if (cause)
            *cause = reason;
        return false;
    };
    if (text.contains(QLatin1Char('"')))
        return refuse(message("a double quote ends the text for the renderer; take it out"));
    if (text.contains(QLatin1Char('\\')))
        return refuse(message("the renderer reads a backslash as something else; use \"/\""));
    // A character takes up to three bytes per unit: short texts need no conversion.
    if (text.size() > longestWritableText / 3 && text.toUtf8().size() > longestWritableText)
        return refuse(message("the renderer reads at most %1 bytes; make it shorter")
                          .arg(longestWritableText));
    return true;
}
