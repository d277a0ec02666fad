// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// How text that a renderer reads somewhere else names image files. Fresh, it names each as it is
/// stored.
struct ImageFileNames {
    /// Folder from which relative names are meant; empty leaves every name as it is stored.
    QString imageFolder;
    /// Folder of the text, which then names the files from there; empty for absolute names.
    QString textFolder;

    /// Where a file of this stored name is looked for; relative only without `imageFolder`.
    QString placeOf(const QString& stored) const;
    /// What the text says for it.
    QString nameOf(const QString& stored) const;
};
