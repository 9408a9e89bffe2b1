// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/previewpicture.h"

#include <QPointer>
#include <QVector>
#include <QWidget>
#include <memory>

class PreviewWidget;
class QGraphicsScene;
class QGraphicsView;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QSplitter;

// The pages of one preview scan, in page order. Previews that share a group act as one viewer: one window is
// seen at a time, "next" and "previous" go through the others, closing it closes all.
class PreviewGroup
{
public:
    void add(PreviewWidget* page) { m_pages.append(page); }
    QVector<PreviewWidget*> pages() const; // those that still exist

private:
    QVector<QPointer<PreviewWidget>> m_pages;
};

// A window that shows one processed page of a preview scan. Not modal; deletes itself when it is closed.
// GUI thread only.
class PreviewWidget : public QWidget
{
    Q_OBJECT
public:
    explicit PreviewWidget(std::shared_ptr<PreviewGroup> group = nullptr, QWidget* parent = nullptr);

    // Reads the page completely (the caller may delete the file at once) and shows it. A file that cannot be
    // shown gives a window with the reason. In a group only the first page's window appears by itself.
    void setPreviewFilePthAndShow(const QString& path);
    // The same with a page that has been read already.
    void setPreviewAndShow(const PreviewPicture& picture, const QString& name);
    // Text beside the page; before the page is shown.
    void setText(const QString& text, const QString& description);

    double zoom() const; // screen pixels per picture pixel of the file, 1.0 = 100 %

public slots:
    void zoomIn();
    void zoomOut();
    void zoomToFit();
    void zoomToOriginal();
    void nextPage();
    void previousPage();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeButtons();
    QPushButton* makeButton(const QString& text, const QString& tip, const QList<QKeySequence>& keys,
                            void (PreviewWidget::*slot)());
    void showPicture();
    void setZoom(double zoom);
    void updateStatus();
    void stepTo(int offset);

    std::shared_ptr<PreviewGroup> m_group;
    PreviewPicture m_picture;
    QString m_fileName;
    QGraphicsScene* m_scene;
    QSplitter* m_content; // the page, or why it cannot be shown, and the text
    QGraphicsView* m_view;
    QLabel* m_fault;
    QPlainTextEdit* m_text;
    QLabel* m_status;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
    QList<QPushButton*> m_zoomButtons;
    bool m_fit = true;
    bool m_closing = false;
};
