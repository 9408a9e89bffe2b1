// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pagetext.h"
#include "printing.h"
#include "rendercache.h"

#include <QCache>
#include <QMutex>
#include <QThread>
#include <QWaitCondition>
#include <optional>

namespace reader {

struct SearchHit
{
    int page = 0;
    QVector<QRectF> areas; // points; one for each line that the found text touches
};

// The thread that owns the document; nothing else touches it. The operations below are called by the GUI
// thread, only leave a wish and return at once; results come as signals. What is seen goes first, then text,
// printing, pages that may be seen next, thumbnails and the search, one page at a time. Results for a
// document that has been left in the meantime come before the new one's opened(), failed() or
// passwordNeeded(), whose number tells which opening they answer.
class DocumentWorker : public QThread
{
    Q_OBJECT
public:
    explicit DocumentWorker(QObject* parent = nullptr);
    ~DocumentWorker() override; // waits until the page in work is done or given up

    int open(const QString& file, const QString& password = {}); // returns the opening's number, from 1
    void render(const QVector<TileKey>& seen, const QVector<TileKey>& ahead); // replaces the wishes before
    void readTexts(const QVector<int>& pages);                                // likewise
    void drawThumbnails(const QVector<int>& pages, QSize box); // likewise; box: pixels of the screen
    int search(const QString& wanted,
               int firstPage); // returns the search's number; an empty text only ends the last one
    void print(const PrintOrder& order);
    void cancelPrint();

    static constexpr int kMostHits = 10000; // of one search

signals:
    void opened(int opening, const reader::DocumentInfo& info);
    void passwordNeeded(int opening);
    void failed(int opening, const QString& problem);
    void rendered(const reader::TileKey& key, const QImage& image, const QString& fault);
    void textRead(int page, const reader::PageTextPtr& text);
    void thumbnailDrawn(int page, const QImage& image); // null: damaged
    void searched(int search, const QVector<reader::SearchHit>& hits, int pagesDone);
    void searchEnded(int search, bool complete); // not complete: stopped at kMostHits
    void printProgress(int done, int total);
    void printEnded(const QString& problem); // empty: all is printed

protected:
    void run() override;

private:
    struct Search
    {
        int number = 0;
        QString wanted;
        int firstPage = 0, done = 0, hits = 0;
    };
    struct Wishes
    {
        QString file, password;
        bool open = false, quit = false;
        QVector<TileKey> seen, ahead;
        QVector<int> texts, thumbnails;
        QSize thumbnailBox;
        std::optional<Search> search;
        std::optional<PrintOrder> print;
        bool cancelPrint = false;
    };

    bool waitForWork();
    bool doOne();
    void openDocument(int opening, const QString& file, const QString& password);
    bool renderNext(QVector<TileKey> Wishes::*list);
    void renderTile(const TileKey& key);
    bool stillWanted(const TileKey& key);
    bool readNextText();
    bool drawNextThumbnail();
    bool searchNextPage();
    void reportHits(Search search, int page);
    bool printNextPage();
    PageTextPtr textOf(int page);

    QMutex m_mutex; // guards the wishes and the numbers
    QWaitCondition m_wake;
    Wishes m_wishes;
    int m_opening = 0, m_search = 0;

    // The worker's own.
    Document m_document;
    QCache<int, PageTextPtr> m_texts; // cost: KiB
    std::unique_ptr<PrintRun> m_print;
};

} // namespace reader

Q_DECLARE_METATYPE(reader::SearchHit)
