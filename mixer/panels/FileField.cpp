// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FileField.h"

#include "LineIcon.h"

#include <QCoreApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QThreadPool>
#include <QToolButton>
#include <QUrl>

namespace {

const int pictureSize = 22;
/// Pictures with more are not looked at: reading one takes memory and seconds.
const qint64 mostPixels = 16384LL * 16384LL;

QString resolved(const QString& file, const QString& folder)
{
    if (QFileInfo::exists(file) || folder.isEmpty())
        return file;
    return QDir(folder).filePath(file);
}

/// A small picture of the file; null when it has none that can be read without surprises.
QImage readSmall(const QString& path, int size)
{
    // Opening a pipe would wait for somebody to write, and the program's end for that.
    if (!QFileInfo(path).isFile())
        return QImage();
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize full = reader.size();
    // One that does not tell its size may have any.
    if (!full.isValid() || qint64(full.width()) * full.height() > mostPixels)
        return QImage();
    reader.setScaledSize(full.scaled(size, size, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    return reader.read();
}

} // namespace

QString imageFilter()
{
    QStringList patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        patterns.append(QStringLiteral("*.") + QString::fromLatin1(format));
    // The renderer reads these, whether we can show them or not.
    patterns << QStringLiteral("*.exr") << QStringLiteral("*.hdr") << QStringLiteral("*.tga")
             << QStringLiteral("*.tif") << QStringLiteral("*.tiff");
    patterns.removeDuplicates();
    return QCoreApplication::translate("FileField", "Images (%1);;All files (*)")
        .arg(patterns.join(QLatin1Char(' ')));
}

FileField::FileField(QWidget* parent)
    : QWidget(parent)
    , m_picture(new QLabel)
    , m_edit(new QLineEdit)
    , m_button(new QToolButton)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_picture);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_button);
    m_picture->setFixedSize(pictureSize, pictureSize);
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->hide();
    m_edit->setPlaceholderText(tr("no file"));
    m_edit->setAcceptDrops(false); // the whole field takes files
    m_button->setIcon(LineIcon::make(LineIcon::Folder));
    m_button->setToolTip(tr("Choose a file"));
    m_button->setAccessibleName(tr("Choose a file"));
    m_button->setAutoRaise(true);
    // One Tab stop a value: the menu of its row has the rest.
    m_button->setFocusPolicy(Qt::NoFocus);
    setFocusProxy(m_edit);
    setAcceptDrops(true);
    connect(m_button, &QToolButton::clicked, this, &FileField::choose);
    connect(m_edit, &QLineEdit::editingFinished, this, [this] {
        if (m_edit->isModified() && m_edit->text() != m_file)
            emit chosen(m_edit->text());
        m_edit->setModified(false);
    });
}

void FileField::showFile(const QString& file, const QString& folder)
{
    if (file == m_file && folder == m_folder && m_edit->text() == file)
        return;
    m_file = file;
    m_folder = folder;
    if (!m_edit->hasFocus() || !m_edit->isModified())
        m_edit->setText(file);
    setToolTip(file);
    loadPicture();
}

void FileField::setShowsPicture(bool shows)
{
    m_showsPicture = shows;
    m_picture->setVisible(shows);
}

void FileField::choose()
{
    QString start = resolved(m_file, m_folder);
    if (start.isEmpty())
        start = m_folder;
    const QString title = tr("Choose a File");
    const QString file = m_choosesFolder ? QFileDialog::getExistingDirectory(this, title, start)
        : m_savesFile ? QFileDialog::getSaveFileName(this, title, start, m_filter)
                      : QFileDialog::getOpenFileName(this, title, start, m_filter);
    if (!file.isEmpty())
        emit chosen(file);
}

QString FileField::draggedFile(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 ? urls.first().toLocalFile() : QString();
}

void FileField::dragEnterEvent(QDragEnterEvent* event)
{
    if (isEnabled() && !draggedFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void FileField::dropEvent(QDropEvent* event)
{
    const QString file = draggedFile(event->mimeData());
    if (file.isEmpty())
        return;
    event->acceptProposedAction();
    emit chosen(file);
}

void FileField::loadPicture()
{
    if (!m_showsPicture)
        return;
    if (m_file.isEmpty()) {
        m_picture->clear();
        return;
    }
    const QString path = resolved(m_file, m_folder);
    const int size = qRound(pictureSize * devicePixelRatioF());
    const QPointer<FileField> self(this);
    // A large picture takes its time.
    QThreadPool::globalInstance()->start([self, path, size] {
        const QImage picture = readSmall(path, size);
        QMetaObject::invokeMethod(
            qApp,
            [self, path, picture] {
                if (self)
                    self->showPicture(path, picture);
            },
            Qt::QueuedConnection);
    });
}

void FileField::showPicture(const QString& path, const QImage& picture)
{
    if (path != resolved(m_file, m_folder))
        return;
    if (picture.isNull()) {
        m_picture->setPixmap(LineIcon::make(LineIcon::Warning).pixmap(16));
        m_picture->setToolTip(QFileInfo::exists(path) ? tr("This picture cannot be shown")
                                                      : tr("There is no such file"));
        return;
    }
    QPixmap pixmap = QPixmap::fromImage(picture);
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    m_picture->setPixmap(pixmap);
    m_picture->setToolTip(path);
}
