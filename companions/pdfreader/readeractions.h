// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QMainWindow>
#include <QSpinBox>

namespace reader {

// The window's actions with their keys, its menus and its tool bar. What they do is connected by the window.
class ReaderActions : public QObject
{
    Q_OBJECT
public:
    explicit ReaderActions(QMainWindow* window);

    // Which actions have something to work on.
    void setDocument(bool open, bool mayCopy, bool mayPrint);
    void setPage(int page, int pages); // from 0
    void setZoom(double factor, bool fitsWidth, bool fitsPage);

    QAction *open, *reload, *print, *close;
    QAction *copy, *selectAll, *find, *findNext, *findPrevious;
    QAction *zoomIn, *zoomOut, *actualSize, *fitWidth, *fitPage, *sidePane, *fullScreen;
    QAction *firstPage, *previousPage, *nextPage, *lastPage, *pageField;

signals:
    void pageEntered(int page); // from 0
    void zoomEntered(double factor);

private:
    QAction* add(const QString& text, const QList<QKeySequence>& keys, bool needsDocument = true);
    void addMenus();
    void addToolBar();
    void enterZoom();

    QMainWindow* m_window;
    QList<QAction*> m_needDocument;
    QSpinBox* m_page;
    QLabel* m_pages;
    QComboBox* m_zoom;
};

} // namespace reader
