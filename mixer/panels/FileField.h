// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QMimeData;
class QToolButton;

/// The name of a file or an image: typed, chosen in a dialog or dropped, with a small picture of
/// an image.
class FileField : public QWidget
{
    Q_OBJECT

public:
    explicit FileField(QWidget* parent = nullptr);

    /// Shows a file; relative names are looked for in `folder`.
    void showFile(const QString& file, const QString& folder);
    /// For the dialog, such as "Images (*.png)"; empty for all files.
    void setFilter(const QString& filter) { m_filter = filter; }
    void setShowsPicture(bool shows);
    void setChoosesFolder(bool chooses) { m_choosesFolder = chooses; }
    void setSavesFile(bool saves) { m_savesFile = saves; }
    /// Opens the dialog.
    void choose();
    QLineEdit* getLineEdit() const { return m_edit; }

    /// The one local file that is dragged, empty when it is something else.
    static QString draggedFile(const QMimeData* data);

signals:
    /// A file was chosen, dropped or typed; empty for none.
    void chosen(const QString& file);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void loadPicture();
    void showPicture(const QString& path, const QImage& picture);

    QLabel* m_picture;
    QLineEdit* m_edit;
    QToolButton* m_button;
    QString m_file;
    QString m_folder;
    QString m_filter;
    bool m_showsPicture = false;
    bool m_choosesFolder = false;
    bool m_savesFile = false;
};

/// The filter for image files.
QString imageFilter();
