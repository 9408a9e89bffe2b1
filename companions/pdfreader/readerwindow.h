// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documentworker.h"
#include "filewatch.h"
#include "readersettings.h"
#include "searchhits.h"

#include <QMainWindow>
#include <QPointer>

class QLabel;
class QProgressDialog;
class QSplitter;
class QStackedWidget;
class QTabWidget;

namespace reader {

class NoticeBar;
class OutlinePane;
class PageView;
class PasswordDialog;
class ReaderActions;
class SearchBar;
class ThumbnailPane;

// The window of one document: connects the parts, none of which knows another one.
class ReaderWindow : public QMainWindow
{
    Q_OBJECT
public:
    ReaderWindow();
    ~ReaderWindow() override;

    void open(const QString& file);
    void printTo(const PrintOrder& order); // what the print dialog ends with

    DocumentWorker& worker() { return m_worker; }
    PageView& view() { return *m_view; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // readerwindow.cpp: the parts, their places and connections
    void buildParts();
    void connectActions();
    void connectParts();
    void rememberSettings();
    void setFullScreen(bool on);
    void openAddress(const QString& url);

    // readerwindow_document.cpp: opening, faults, passwords, searching, printing
    void chooseFile();
    void reload();
    void startOpening(const QString& password);
    void showDocument(int opening, const DocumentInfo& info);
    void askPassword(int opening);
    void showFailure(const QString& reason);
    void fileChanged();
    void startSearch(const QString& wanted);
    void takeHits(int search, const QVector<SearchHit>& hits, int pagesDone);
    void endSearch(int search, bool complete);
    void stepSearch(bool forward);
    void updateSearchState(bool complete = true);
    void choosePrinting();

    SearchHits m_hits;
    DocumentWorker m_worker;
    FileWatch m_watch;
    ReaderActions* m_actions;
    PageView* m_view = nullptr;
    ThumbnailPane* m_thumbnails = nullptr;
    OutlinePane* m_outline = nullptr;
    SearchBar* m_searchBar = nullptr;
    NoticeBar* m_notice = nullptr;
    QWidget* m_message = nullptr;
    QLabel *m_messageTitle = nullptr, *m_messageText = nullptr;
    QStackedWidget* m_stack = nullptr;
    QTabWidget* m_side = nullptr;
    QSplitter* m_splitter = nullptr;
    QPointer<PasswordDialog> m_passwordDialog;
    QPointer<QProgressDialog> m_printProgress;

    QString m_file, m_folder;
    QString m_password; // for another loading of the same file
    DocumentInfo m_info;
    int m_opening = 0, m_triesLeft = 0, m_returnTo = 0;
    bool m_wasMaximized = false;
    int m_search = 0, m_searchFrom = 0, m_searchedPages = 0;
};

} // namespace reader
