// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "NetworkText.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

class MixerDocument;
class PlaceholderModel;
class NetworkTextHighlighter;
class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QTableView;

/// The renderer's text of the network, as it is now. Selecting bricks lights their lines; clicking
/// a line shows its brick. Below it, the placeholders with what stands behind them.
class NetworkTextPanel : public QWidget
{
    Q_OBJECT

public:
    explicit NetworkTextPanel(QWidget* parent = nullptr);

    /// Shows this document's text; null for none. Not owned.
    void setDocument(MixerDocument* document);
    bool isLiteral() const;
    void setLiteral(bool literal);
    /// Whether image maps are written as the names of their files.
    bool isMapFiles() const;
    QString getText() const;
    /// Brings the text up to date now rather than with the next frame.
    void updateNow();

public slots:
    void copyText();
    void saveText();

signals:
    void brickActivated(DzShaderBrick* brick);
    void message(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void scheduleUpdate();
    void scheduleLight();
    void updateText();
    void showNote();
    void showText(const QString& text);
    void showLight();
    void activateLine(const QPoint& position);

    QPointer<MixerDocument> m_document;
    NetworkText m_code;
    QTimer m_update;
    QTimer m_light;
    QCheckBox* m_placeholders;
    QCheckBox* m_mapFiles;
    QPlainTextEdit* m_text;
    NetworkTextHighlighter* m_highlighter;
    QLabel* m_note;
    QTableView* m_table;
    PlaceholderModel* m_model;
    bool m_stale = false;
};
