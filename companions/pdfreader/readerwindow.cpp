// SPDX-License-Identifier: GPL-3.0-or-later
#include "readerwindow.h"

#include "noticebar.h"
#include "outlinepane.h"
#include "pageview.h"
#include "readeractions.h"
#include "searchbar.h"
#include "thumbnails.h"

#include <QCloseEvent>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

namespace reader {

ReaderWindow::ReaderWindow() : m_actions(new ReaderActions(this))
{
    setAcceptDrops(true);
    buildParts();
    connectActions();
    connectParts();
    const ReaderSettings settings = ReaderSettings::load();
    m_folder = settings.folder;
    resize(QGuiApplication::primaryScreen()->availableSize().boundedTo({1100, 850}));
    restoreGeometry(settings.geometry);
    m_splitter->restoreState(settings.splitter);
    m_actions->sidePane->setChecked(settings.sidePane);
    m_view->setZoom(settings.zoom);
    setWindowTitle(tr("PDF 阅读器"));
    m_messageTitle->setText(tr("没有打开文件"));
    m_messageText->setText(tr("按 Ctrl+O 打开 PDF 文件，或把文件拖到这里。"));
}

// The parts refer to members, so they go first.
ReaderWindow::~ReaderWindow()
{
    delete takeCentralWidget();
}

void ReaderWindow::buildParts()
{
    m_view = new PageView(m_worker, m_hits);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_view->addActions({m_actions->copy, m_actions->selectAll, m_actions->find});
    m_message = new QWidget;
    m_messageTitle = new QLabel(m_message);
    m_messageText = new QLabel(m_message);
    QFont large = m_messageTitle->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    m_messageTitle->setFont(large);
    auto* lines = new QVBoxLayout(m_message);
    lines->addStretch(1);
    for (QLabel* label : {m_messageTitle, m_messageText}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignCenter);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        lines->addWidget(label);
    }
    lines->addStretch(2);
    m_stack = new QStackedWidget;
    m_stack->addWidget(m_message);
    m_stack->addWidget(m_view);
    m_searchBar = new SearchBar;
    m_searchBar->hide();
    m_notice = new NoticeBar;
    m_notice->hide();
    auto* right = new QWidget;
    auto* column = new QVBoxLayout(right);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_notice);
    column->addWidget(m_searchBar);
    column->addWidget(m_stack, 1);
    m_thumbnails = new ThumbnailPane(m_worker);
    m_outline = new OutlinePane;
    m_side = new QTabWidget;
    m_side->setDocumentMode(true);
    m_side->addTab(m_thumbnails, tr("缩略图"));
    m_side->hide();
    m_outline->setParent(this); // a tab only while there is an outline
    m_outline->hide();
    m_splitter = new QSplitter;
    m_splitter->addWidget(m_side);
    m_splitter->addWidget(right);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setCollapsible(1, false);
    m_splitter->setSizes({240, 860});
    setCentralWidget(m_splitter);
}

void ReaderWindow::connectActions()
{
    const ReaderActions& a = *m_actions;
    const auto on = [this](QAction* action, auto what) { connect(action, &QAction::triggered, this, what); };
    on(a.open, [this] { chooseFile(); });
    on(a.reload, [this] { reload(); });
    on(a.print, [this] { choosePrinting(); });
    on(a.close, [this] { close(); });
    on(a.copy, [this] { m_view->copy(); });
    on(a.selectAll, [this] { m_view->selectAllOnPage(); });
    on(a.find, [this] { m_searchBar->open(); });
    on(a.findNext, [this] { stepSearch(true); });
    on(a.findPrevious, [this] { stepSearch(false); });
    on(a.zoomIn, [this] { m_view->stepZoom(true); });
    on(a.zoomOut, [this] { m_view->stepZoom(false); });
    on(a.actualSize, [this] { m_view->setZoom({ZoomMode::Factor, 1}); });
    on(a.fitWidth, [this] { m_view->setZoom({ZoomMode::Width, 1}); });
    on(a.fitPage, [this] { m_view->setZoom({ZoomMode::Page, 1}); });
    on(a.firstPage, [this] { m_view->goTo(0); });
    on(a.lastPage, [this] { m_view->goTo(m_view->pageCount() - 1); });
    on(a.previousPage, [this] { m_view->turnPage(-1); });
    on(a.nextPage, [this] { m_view->turnPage(1); });
    on(a.fullScreen, [this] { setFullScreen(!isFullScreen()); });
    connect(a.sidePane, &QAction::toggled, this,
            [this](bool shown) { m_side->setVisible(shown && !m_info.pages.isEmpty()); });
    connect(m_actions, &ReaderActions::pageEntered, this, [this](int page) {
        m_view->goTo(page);
        m_view->setFocus();
    });
    connect(m_actions, &ReaderActions::zoomEntered, this, [this](double factor) {
        m_view->setZoom({ZoomMode::Factor, factor});
        m_view->setFocus();
    });
}

void ReaderWindow::connectParts()
{
    connect(m_view, &PageView::pageChanged, this, [this](int page) {
        m_actions->setPage(page, m_view->pageCount());
        m_thumbnails->setCurrentPage(page);
    });
    const auto showZoom = [this] {
        const ZoomMode mode = m_view->zoom().mode;
        m_actions->setZoom(m_view->zoomFactor(), mode == ZoomMode::Width, mode == ZoomMode::Page);
    };
    connect(m_view, &PageView::zoomChanged, this, showZoom);
    connect(m_view, &PageView::selectionChanged, this,
            [this] { m_actions->copy->setEnabled(m_view->hasSelection() && m_info.mayCopy); });
    connect(m_view, &PageView::addressClicked, this, &ReaderWindow::openAddress);
    connect(m_view, &PageView::linkHovered, m_view->viewport(), &QWidget::setToolTip);
    connect(m_thumbnails, &ThumbnailPane::pageChosen, m_view, [this](int page) { m_view->goTo(page); });
    connect(m_outline, &OutlinePane::placeChosen, m_view, &PageView::goTo);
    connect(m_searchBar, &SearchBar::wantedChanged, this, &ReaderWindow::startSearch);
    connect(m_searchBar, &SearchBar::stepped, this, &ReaderWindow::stepSearch);
    connect(m_searchBar, &SearchBar::closed, m_view, QOverload<>::of(&QWidget::setFocus));
    connect(m_notice, &NoticeBar::actionChosen, this, &ReaderWindow::reload);
    connect(&m_watch, &FileWatch::changed, this, &ReaderWindow::fileChanged);
    connect(&m_watch, &FileWatch::removed, this,
            [this] { m_notice->tell(tr("文件已被移走或删除；窗口中仍是原来的内容。")); });
    connect(&m_worker, &DocumentWorker::opened, this, &ReaderWindow::showDocument);
    connect(&m_worker, &DocumentWorker::passwordNeeded, this, &ReaderWindow::askPassword);
    connect(&m_worker, &DocumentWorker::failed, this, [this](int opening, const QString& problem) {
        if (opening == m_opening)
            showFailure(problem);
    });
    connect(&m_worker, &DocumentWorker::searched, this, &ReaderWindow::takeHits);
    connect(&m_worker, &DocumentWorker::searchEnded, this, &ReaderWindow::endSearch);
}

void ReaderWindow::setFullScreen(bool on)
{
    if (on) {
        m_wasMaximized = isMaximized();
        showFullScreen();
    } else {
        m_wasMaximized ? showMaximized() : showNormal();
    }
    m_actions->fullScreen->setChecked(on);
    menuBar()->setVisible(!on);
    for (auto* bar : findChildren<QToolBar*>())
        bar->setVisible(!on);
    m_side->setVisible(!on && m_actions->sidePane->isChecked() && !m_info.pages.isEmpty());
}

// A document's address starts no program but the ones for the web and for mail.
void ReaderWindow::openAddress(const QString& text)
{
    const QUrl url(text, QUrl::TolerantMode);
    if (QStringList{"http", "https", "mailto"}.contains(url.scheme().toLower()))
        QDesktopServices::openUrl(url);
    else
        m_notice->tell(tr("不打开这个地址：%1").arg(text));
}

void ReaderWindow::rememberSettings()
{
    ReaderSettings settings;
    if (isFullScreen())
        setFullScreen(false);
    settings.geometry = saveGeometry();
    settings.splitter = m_splitter->saveState();
    settings.sidePane = m_actions->sidePane->isChecked();
    settings.zoom = m_view->zoom();
    settings.folder = m_folder;
    settings.save();
}

void ReaderWindow::closeEvent(QCloseEvent* event)
{
    rememberSettings();
    QMainWindow::closeEvent(event);
}

void ReaderWindow::dragEnterEvent(QDragEnterEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && urls.first().isLocalFile())
        event->acceptProposedAction();
}

void ReaderWindow::dropEvent(QDropEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && urls.first().isLocalFile())
        open(urls.first().toLocalFile());
}

void ReaderWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    if (m_searchBar->isVisible())
        m_searchBar->close();
    else if (isFullScreen())
        setFullScreen(false);
}

} // namespace reader
