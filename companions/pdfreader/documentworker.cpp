// SPDX-License-Identifier: GPL-3.0-or-later
#include "documentworker.h"

#include "errorlog.h"
#include "textsearch.h"

#include <functional>

namespace reader {
namespace {

constexpr int kTextCacheKiB = 32 << 10; // the text of about a thousand full pages

bool gaveUp(const QVariant& query)
{
    return (*static_cast<std::function<bool()>*>(query.value<void*>()))();
}

} // namespace

DocumentWorker::DocumentWorker(QObject* parent) : QThread(parent), m_texts(kTextCacheKiB)
{
    qRegisterMetaType<DocumentInfo>();
    qRegisterMetaType<TileKey>();
    qRegisterMetaType<PageTextPtr>();
    qRegisterMetaType<QVector<SearchHit>>();
    gatherErrors();
    start();
}

DocumentWorker::~DocumentWorker()
{
    {
        const QMutexLocker lock(&m_mutex);
        m_wishes = {};
        m_wishes.quit = true;
        m_wake.wakeAll();
    }
    wait();
}

int DocumentWorker::open(const QString& file, const QString& password)
{
    const QMutexLocker lock(&m_mutex);
    m_wishes = {};
    m_wishes.cancelPrint = true;
    m_wishes.file = file;
    m_wishes.password = password;
    m_wishes.open = true;
    m_wake.wakeAll();
    return ++m_opening;
}

void DocumentWorker::render(const QVector<TileKey>& seen, const QVector<TileKey>& ahead)
{
    const QMutexLocker lock(&m_mutex);
    m_wishes.seen = seen;
    m_wishes.ahead = ahead;
    m_wake.wakeAll();
}

void DocumentWorker::readTexts(const QVector<int>& pages)
{
    const QMutexLocker lock(&m_mutex);
    m_wishes.texts = pages;
    m_wake.wakeAll();
}

void DocumentWorker::drawThumbnails(const QVector<int>& pages, QSize box)
{
    const QMutexLocker lock(&m_mutex);
    m_wishes.thumbnails = pages;
    m_wishes.thumbnailBox = box;
    m_wake.wakeAll();
}

int DocumentWorker::search(const QString& wanted, int firstPage)
{
    const QMutexLocker lock(&m_mutex);
    m_wishes.search.reset();
    ++m_search;
    if (!wanted.isEmpty())
        m_wishes.search = Search{m_search, wanted, firstPage};
    m_wake.wakeAll();
    return m_search;
}

void DocumentWorker::print(const PrintOrder& order)
{
    const QMutexLocker lock(&m_mutex);
    m_wishes.print = order;
    m_wishes.cancelPrint = false;
    m_wake.wakeAll();
}

void DocumentWorker::cancelPrint()
{
    const QMutexLocker lock(&m_mutex);
    m_wishes.cancelPrint = true;
    m_wake.wakeAll();
}

void DocumentWorker::run()
{
    while (waitForWork())
        doOne();
    m_print.reset();
}

bool DocumentWorker::waitForWork()
{
    const QMutexLocker lock(&m_mutex);
    const auto idle = [this] {
        const Wishes& w = m_wishes;
        return !w.open && !w.quit && w.seen.isEmpty() && w.ahead.isEmpty() && w.texts.isEmpty() &&
               w.thumbnails.isEmpty() && !w.search && !w.print && !m_print;
    };
    while (idle())
        m_wake.wait(&m_mutex);
    return !m_wishes.quit;
}

bool DocumentWorker::doOne()
{
    m_mutex.lock();
    if (m_wishes.open) {
        m_wishes.open = false;
        const QString file = m_wishes.file, password = m_wishes.password;
        const int opening = m_opening;
        m_mutex.unlock();
        openDocument(opening, file, password);
        return true;
    }
    m_mutex.unlock();
    return renderNext(&Wishes::seen) || readNextText() || printNextPage() || renderNext(&Wishes::ahead) ||
           drawNextThumbnail() || searchNextPage();
}

void DocumentWorker::openDocument(int opening, const QString& file, const QString& password)
{
    if (m_print)
        emit printEnded({});
    m_print.reset();
    m_texts.clear();
    switch (m_document.open(file, password)) {
    case OpenResult::Opened:
        emit opened(opening, m_document.info());
        break;
    case OpenResult::PasswordNeeded:
        emit passwordNeeded(opening);
        break;
    case OpenResult::Failed:
        emit failed(opening, m_document.problem());
        break;
    }
}

bool DocumentWorker::renderNext(QVector<TileKey> Wishes::*list)
{
    TileKey key;
    {
        const QMutexLocker lock(&m_mutex);
        if ((m_wishes.*list).isEmpty())
            return false;
        key = (m_wishes.*list).first(); // stays in the list: stillWanted() looks there
    }
    renderTile(key);
    const QMutexLocker lock(&m_mutex);
    m_wishes.seen.removeOne(key);
    m_wishes.ahead.removeOne(key);
    return true;
}

// A page that nobody will see is given up, and one that may be seen next gives way to what is seen.
bool DocumentWorker::stillWanted(const TileKey& key)
{
    const QMutexLocker lock(&m_mutex);
    return !m_wishes.quit && !m_wishes.open &&
           (m_wishes.seen.contains(key) || (m_wishes.seen.isEmpty() && m_wishes.ahead.contains(key)));
}

void DocumentWorker::renderTile(const TileKey& key)
{
    takeErrors();
    const auto page = m_document.page(key.page);
    if (!page) {
        emit rendered(key, {}, Document::tr("第 %1 页已损坏，无法显示。").arg(key.page + 1));
        return;
    }
    bool left = false;
    std::function<bool()> query = [&] { return left = left || !stillWanted(key); };
    const QSizeF points = page->pageSizeF();
    const QImage image = page->renderToImage(
        key.size.width() * 72.0 / points.width(), key.size.height() * 72.0 / points.height(), key.area.x(),
        key.area.y(), key.area.width(), key.area.height(), Poppler::Page::Rotate0, nullptr, nullptr, gaveUp,
        QVariant::fromValue(static_cast<void*>(&query)));
    if (left)
        return;
    QString fault;
    const QStringList errors = takeErrors();
    if (image.isNull())
        fault = Document::tr("第 %1 页无法显示。").arg(key.page + 1);
    else if (tellOfDamage(errors))
        fault = Document::tr("第 %1 页有损坏，可能显示不完整。").arg(key.page + 1);
    emit rendered(key, image, fault);
}

PageTextPtr DocumentWorker::textOf(int page)
{
    if (const PageTextPtr* known = m_texts.object(page))
        return *known;
    const auto read = m_document.page(page);
    const PageTextPtr text = read ? PageText::read(*read) : std::make_shared<const PageText>();
    m_texts.insert(page, new PageTextPtr(text), text->bytes() / 1024 + 1);
    return text;
}

bool DocumentWorker::readNextText()
{
    int page = 0;
    {
        const QMutexLocker lock(&m_mutex);
        if (m_wishes.texts.isEmpty())
            return false;
        page = m_wishes.texts.takeFirst();
    }
    emit textRead(page, textOf(page));
    return true;
}

bool DocumentWorker::drawNextThumbnail()
{
    int index = 0;
    QSize box;
    {
        const QMutexLocker lock(&m_mutex);
        if (m_wishes.thumbnails.isEmpty())
            return false;
        index = m_wishes.thumbnails.takeFirst();
        box = m_wishes.thumbnailBox;
    }
    QImage image;
    if (const auto page = m_document.page(index)) {
        const QSizeF points = page->pageSizeF();
        const QSize size = points.scaled(box, Qt::KeepAspectRatio).toSize().expandedTo({1, 1});
        image =
            page->renderToImage(size.width() * 72.0 / points.width(), size.height() * 72.0 / points.height(),
                                0, 0, size.width(), size.height());
    }
    emit thumbnailDrawn(index, image);
    return true;
}

bool DocumentWorker::searchNextPage()
{
    Search search;
    {
        const QMutexLocker lock(&m_mutex);
        if (!m_wishes.search)
            return false;
        search = *m_wishes.search;
    }
    const int pages = m_document.info().pages.size();
    if (search.done < pages && search.hits < kMostHits)
        reportHits(search, (search.firstPage + search.done) % pages);
    const QMutexLocker lock(&m_mutex);
    if (!m_wishes.search || m_wishes.search->number != search.number || m_wishes.search->done < pages)
        return true;
    const bool complete = m_wishes.search->hits < kMostHits;
    m_wishes.search.reset();
    emit searchEnded(search.number, complete);
    return true;
}

void DocumentWorker::reportHits(Search search, int page)
{
    const PageTextPtr text = textOf(page);
    QVector<SearchHit> hits;
    for (const TextRange& range : findAll(text->text(), search.wanted)) {
        if (search.hits + hits.size() == kMostHits)
            break;
        hits << SearchHit{page, text->areas(range)};
    }
    emit searched(search.number, hits, search.done + 1);
    const QMutexLocker lock(&m_mutex);
    if (!m_wishes.search || m_wishes.search->number != search.number)
        return;
    m_wishes.search->hits += hits.size();
    m_wishes.search->done =
        m_wishes.search->hits < kMostHits ? search.done + 1 : int(m_document.info().pages.size());
}

bool DocumentWorker::printNextPage()
{
    bool cancelled = false;
    {
        const QMutexLocker lock(&m_mutex);
        cancelled = m_wishes.cancelPrint;
        if (m_wishes.print && !m_print)
            m_print = std::make_unique<PrintRun>(*m_wishes.print);
        m_wishes.print.reset();
        m_wishes.cancelPrint = false;
    }
    if (!m_print)
        return false;
    if (!cancelled && m_print->step(m_document)) {
        emit printProgress(m_print->done(), m_print->total());
        return true;
    }
    const QString problem = m_print->problem();
    m_print.reset();
    emit printEnded(cancelled ? QString() : problem);
    return true;
}

} // namespace reader
