// SPDX-License-Identifier: GPL-3.0-or-later
#include "readeractions.h"

#include "pagelayout.h"

#include <QLineEdit>
#include <QMenuBar>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QToolBar>
#include <cmath>

namespace reader {

ReaderActions::ReaderActions(QMainWindow* window)
    : QObject(window), m_window(window), m_page(new QSpinBox(window)), m_pages(new QLabel(window)),
      m_zoom(new QComboBox(window))
{
    const auto keys = [](QKeySequence::StandardKey key) { return QKeySequence::keyBindings(key); };
    open = add(tr("打开(&O)…"), keys(QKeySequence::Open), false);
    reload = add(tr("重新载入(&R)"), {Qt::Key_F5, Qt::CTRL + Qt::Key_R});
    print = add(tr("打印(&P)…"), keys(QKeySequence::Print));
    close = add(tr("关闭(&C)"), {Qt::CTRL + Qt::Key_W, Qt::CTRL + Qt::Key_Q}, false);
    copy = add(tr("复制(&C)"), keys(QKeySequence::Copy));
    selectAll = add(tr("全选本页(&A)"), keys(QKeySequence::SelectAll));
    find = add(tr("查找(&F)…"), keys(QKeySequence::Find));
    findNext = add(tr("下一处(&N)"), {Qt::Key_F3, Qt::CTRL + Qt::Key_G});
    findPrevious = add(tr("上一处(&V)"), {Qt::SHIFT + Qt::Key_F3, Qt::CTRL + Qt::SHIFT + Qt::Key_G});
    zoomIn = add(tr("放大(&I)"), {Qt::CTRL + Qt::Key_Plus, Qt::CTRL + Qt::Key_Equal});
    zoomOut = add(tr("缩小(&U)"), {Qt::CTRL + Qt::Key_Minus});
    actualSize = add(tr("实际大小(&1)"), {Qt::CTRL + Qt::Key_1});
    fitWidth = add(tr("适合宽度(&W)"), {Qt::CTRL + Qt::Key_2});
    fitPage = add(tr("适合页面(&G)"), {Qt::CTRL + Qt::Key_0});
    sidePane = add(tr("侧栏(&S)"), {Qt::Key_F9}, false);
    fullScreen = add(tr("全屏(&L)"), {Qt::Key_F11}, false);
    firstPage = add(tr("首页(&H)"), {Qt::CTRL + Qt::Key_Home});
    previousPage = add(tr("上一页(&B)"), {Qt::CTRL + Qt::Key_PageUp});
    nextPage = add(tr("下一页(&D)"), {Qt::CTRL + Qt::Key_PageDown});
    lastPage = add(tr("末页(&E)"), {Qt::CTRL + Qt::Key_End});
    pageField = add(tr("转到页(&T)…"), {Qt::CTRL + Qt::Key_L});
    for (QAction* choice : {fitWidth, fitPage, sidePane, fullScreen})
        choice->setCheckable(true);
    addMenus();
    addToolBar();
    setDocument(false, false, false);
}

QAction* ReaderActions::add(const QString& text, const QList<QKeySequence>& keys, bool needsDocument)
{
    auto* action = new QAction(text, m_window);
    action->setShortcuts(keys);
    m_window->addAction(action); // keys count while the menu bar is hidden, too
    if (needsDocument)
        m_needDocument << action;
    return action;
}

void ReaderActions::addMenus()
{
    const auto menu = [this](const QString& title, const QList<QAction*>& actions) {
        QMenu* made = m_window->menuBar()->addMenu(title);
        for (QAction* action : actions)
            if (action == nullptr)
                made->addSeparator();
            else
                made->addAction(action);
    };
    menu(tr("文件(&F)"), {open, reload, nullptr, print, nullptr, close});
    menu(tr("编辑(&E)"), {copy, selectAll, nullptr, find, findNext, findPrevious});
    menu(tr("视图(&V)"),
         {zoomIn, zoomOut, actualSize, nullptr, fitWidth, fitPage, nullptr, sidePane, fullScreen});
    menu(tr("转到(&G)"), {firstPage, previousPage, nextPage, lastPage, nullptr, pageField});
}

// Words instead of icons: a system without an icon theme has them, too.
void ReaderActions::addToolBar()
{
    QToolBar* bar = m_window->addToolBar(tr("工具栏"));
    bar->setObjectName("toolBar");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_page->setAccessibleName(tr("页码"));
    m_page->setKeyboardTracking(false);
    m_page->setButtonSymbols(QAbstractSpinBox::NoButtons);
    m_page->setAlignment(Qt::AlignRight);
    m_page->setMinimumWidth(m_page->fontMetrics().horizontalAdvance("000000"));
    m_zoom->setAccessibleName(tr("缩放"));
    m_zoom->setEditable(true);
    m_zoom->setInsertPolicy(QComboBox::NoInsert);
    for (const int percent : {25, 50, 75, 100, 125, 150, 200, 300, 400})
        m_zoom->addItem(QStringLiteral("%1%").arg(percent));
    for (QAction* action : {open, print, sidePane})
        bar->addAction(action);
    bar->addSeparator();
    bar->addAction(previousPage);
    bar->addWidget(m_page);
    bar->addWidget(m_pages);
    bar->addAction(nextPage);
    bar->addSeparator();
    bar->addAction(zoomOut);
    bar->addWidget(m_zoom);
    for (QAction* action : {zoomIn, fitWidth, fitPage})
        bar->addAction(action);
    bar->addSeparator();
    bar->addAction(find);
    for (QAction* action : bar->actions()) // a tool bar's word has no key of its own
        action->setIconText(action->text().remove(QRegularExpression("\\(&.\\)|&|…|\\.\\.\\.")));

    connect(m_page, QOverload<int>::of(&QSpinBox::valueChanged), this,
            [this](int page) { emit pageEntered(page - 1); });
    connect(m_zoom, QOverload<int>::of(&QComboBox::activated), this, &ReaderActions::enterZoom);
    connect(m_zoom->lineEdit(), &QLineEdit::returnPressed, this, &ReaderActions::enterZoom);
    connect(pageField, &QAction::triggered, this, [this] {
        m_page->setFocus(Qt::ShortcutFocusReason);
        m_page->selectAll();
    });
}

void ReaderActions::enterZoom()
{
    bool isNumber = false;
    const double percent = m_zoom->currentText().remove('%').trimmed().toDouble(&isNumber);
    if (isNumber && percent > 0)
        emit zoomEntered(percent / 100);
}

void ReaderActions::setDocument(bool isOpen, bool mayCopy, bool mayPrint)
{
    for (QAction* action : m_needDocument)
        action->setEnabled(isOpen);
    copy->setEnabled(false); // until something is selected
    selectAll->setEnabled(isOpen && mayCopy);
    print->setEnabled(isOpen && mayPrint);
    m_page->setEnabled(isOpen);
    m_zoom->setEnabled(isOpen);
    m_page->setSpecialValueText(isOpen ? "" : " ");
    if (isOpen)
        return;
    const QSignalBlocker quiet(m_page);
    m_page->setRange(0, 0);
    m_pages->clear();
    m_zoom->clearEditText();
}

void ReaderActions::setPage(int page, int pages)
{
    const QSignalBlocker quiet(m_page);
    m_page->setRange(1, std::max(1, pages));
    m_page->setValue(page + 1);
    m_pages->setText(tr(" / %1 页 ").arg(pages));
    firstPage->setEnabled(page > 0);
    previousPage->setEnabled(page > 0);
    nextPage->setEnabled(page + 1 < pages);
    lastPage->setEnabled(page + 1 < pages);
}

void ReaderActions::setZoom(double factor, bool fitsWidth, bool fitsPage)
{
    if (!m_zoom->isEnabled())
        return;
    m_zoom->setEditText(QStringLiteral("%1%").arg(std::lround(factor * 100)));
    fitWidth->setChecked(fitsWidth);
    fitPage->setChecked(fitsPage);
    zoomIn->setEnabled(factor < kMostZoom);
    zoomOut->setEnabled(factor > kLeastZoom);
}

} // namespace reader
