// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/previewwidget.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QStyleOptionGraphicsItem>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QtMath>

namespace {

constexpr double smallestZoom = 0.05;
constexpr double largestZoom = 8.0;
constexpr double zoomStep = 1.25;

// Paints a page from the smallest of its half-size copies that still has enough pixels: a page that is shrunk
// to the window stays readable and scrolls fast.
class PageItem : public QGraphicsItem
{
public:
    explicit PageItem(const QImage& page)
    {
        m_levels.append(QPixmap::fromImage(page));
        QImage smaller = page.depth() < 8 ? page.convertToFormat(QImage::Format_Grayscale8) : page;
        while (qMin(smaller.width(), smaller.height()) > 200) {
            smaller = smaller.scaled(smaller.size() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            m_levels.append(QPixmap::fromImage(smaller));
        }
    }
    QRectF boundingRect() const override { return QRectF(QPointF(0, 0), m_levels.first().size()); }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) override
    {
        const double dots = painter->device()->devicePixelRatioF();
        const double scale =
            QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter->worldTransform()) * dots;
        int level = 0;
        while (level + 1 < m_levels.size() && scale * (2 << level) <= 1.0)
            ++level;
        painter->setRenderHint(QPainter::SmoothPixmapTransform, scale < 2.0);
        painter->drawPixmap(boundingRect(), m_levels.at(level), m_levels.at(level).rect());
    }

private:
    QVector<QPixmap> m_levels;
};

} // namespace

QVector<PreviewWidget*> PreviewGroup::pages() const
{
    QVector<PreviewWidget*> living;
    for (const QPointer<PreviewWidget>& page : m_pages)
        if (page)
            living.append(page);
    return living;
}

PreviewWidget::PreviewWidget(std::shared_ptr<PreviewGroup> group, QWidget* parent)
    : QWidget(parent, Qt::Window), m_group(std::move(group)), m_scene(new QGraphicsScene(this)),
      m_content(new QSplitter(this)), m_view(new QGraphicsView(m_scene, this)), m_fault(new QLabel(this)),
      m_text(new QPlainTextEdit(this)), m_status(new QLabel(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    if (!m_group)
        m_group = std::make_shared<PreviewGroup>();

    m_view->setObjectName(QStringLiteral("pageView"));
    m_view->setAccessibleName(tr("页面图像"));
    m_view->setToolTip(tr("按住 Ctrl 并转动滚轮可缩放，拖动或用方向键可移动"));
    m_view->setDragMode(QGraphicsView::ScrollHandDrag);
    m_view->setTransformationAnchor(QGraphicsView::AnchorViewCenter);
    m_view->setBackgroundBrush(palette().mid());
    m_view->viewport()->installEventFilter(this);
    m_fault->setObjectName(QStringLiteral("faultLabel"));
    m_fault->setAlignment(Qt::AlignCenter);
    m_fault->setWordWrap(true);
    m_fault->hide();
    m_text->setObjectName(QStringLiteral("documentText"));
    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->hide();
    m_status->setObjectName(QStringLiteral("statusLabel"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(makeButtons());
    for (QWidget* part : std::initializer_list<QWidget*>{m_view, m_fault, m_text})
        m_content->addWidget(part);
    m_content->setChildrenCollapsible(false);
    layout->addWidget(m_content, 1);
    layout->addWidget(m_status);

    const QRect space = QGuiApplication::primaryScreen()->availableGeometry();
    resize(qMin(820, space.width() * 9 / 10), qMin(900, space.height() * 17 / 20));
}

QPushButton* PreviewWidget::makeButton(const QString& text, const QString& tip,
                                       const QList<QKeySequence>& keys, void (PreviewWidget::*slot)())
{
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    button->setToolTip(QStringLiteral("%1 (%2)").arg(tip, keys.first().toString(QKeySequence::NativeText)));
    button->setAccessibleName(tip);
    if (slot)
        connect(button, &QPushButton::clicked, this, slot);
    for (const QKeySequence& key : keys) {
        auto* shortcut = new QShortcut(key, this);
        connect(shortcut, &QShortcut::activated, button, [button] { button->click(); });
    }
    return button;
}

QWidget* PreviewWidget::makeButtons()
{
    auto* bar = new QWidget(this);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    m_previous =
        makeButton(tr("上一页(&P)"), tr("显示上一页"), {Qt::Key_PageUp}, &PreviewWidget::previousPage);
    m_next = makeButton(tr("下一页(&N)"), tr("显示下一页"), {Qt::Key_PageDown}, &PreviewWidget::nextPage);
    m_zoomButtons = {
        makeButton(tr("放大(&I)"), tr("放大页面"),
                   {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
                   &PreviewWidget::zoomIn),
        makeButton(tr("缩小(&U)"), tr("缩小页面"), {QKeySequence(Qt::CTRL | Qt::Key_Minus)},
                   &PreviewWidget::zoomOut),
        makeButton(tr("适合窗口(&F)"), tr("整页显示在窗口中"), {QKeySequence(Qt::CTRL | Qt::Key_0)},
                   &PreviewWidget::zoomToFit),
        makeButton(tr("100%(&1)"), tr("按原始像素显示"), {QKeySequence(Qt::CTRL | Qt::Key_1)},
                   &PreviewWidget::zoomToOriginal)};
    QPushButton* closeButton = makeButton(tr("关闭(&C)"), tr("关闭预览"), {Qt::Key_Escape}, nullptr);
    connect(closeButton, &QPushButton::clicked, this, &QWidget::close);
    row->addWidget(m_previous);
    row->addWidget(m_next);
    row->addSpacing(12);
    for (QPushButton* button : m_zoomButtons)
        row->addWidget(button);
    row->addStretch(1);
    row->addWidget(closeButton);
    return bar;
}

void PreviewWidget::setPreviewFilePthAndShow(const QString& path)
{
    PreviewPicture picture;
    picture.load(path);
    setPreviewAndShow(picture, QFileInfo(path).fileName());
}

void PreviewWidget::setText(const QString& text, const QString& description)
{
    m_text->setPlainText(text);
    m_text->setAccessibleName(description);
    m_text->setPlaceholderText(tr("未识别到文字"));
    m_text->show();
    const QRect space = QGuiApplication::primaryScreen()->availableGeometry();
    resize(qMin(1200, space.width() * 9 / 10), height());
    const int half = width() / 2;
    m_content->setSizes({half, half, half}); // of page and reason one is seen
}

void PreviewWidget::setPreviewAndShow(const PreviewPicture& picture, const QString& name)
{
    m_picture = picture;
    m_fileName = name;
    setWindowTitle(tr("预览 - %1").arg(m_fileName));
    if (!m_picture.fault().isEmpty())
        m_fault->setText(tr("无法显示页面“%1”：%2。").arg(m_fileName, m_picture.fault()));
    const bool usable = m_picture.fault().isEmpty();
    m_view->setVisible(usable);
    m_fault->setVisible(!usable);
    for (QPushButton* button : qAsConst(m_zoomButtons))
        button->setEnabled(usable);

    if (!m_group->pages().contains(this))
        m_group->add(this);
    PreviewWidget* shown = nullptr;
    for (PreviewWidget* page : m_group->pages())
        if (page->isVisible())
            shown = page;
    if (!shown || shown == this) {
        show();
        showPicture();
    } else {
        shown->updateStatus();
    }
}

double PreviewWidget::zoom() const
{
    return m_view->transform().m11() * devicePixelRatioF();
}

void PreviewWidget::setZoom(double zoom)
{
    if (m_scene->items().isEmpty())
        return;
    const double scale = qBound(smallestZoom, zoom, largestZoom) / devicePixelRatioF();
    m_view->setTransform(QTransform::fromScale(scale, scale));
    updateStatus();
}

void PreviewWidget::zoomIn()
{
    m_fit = false;
    setZoom(zoom() * zoomStep);
}

void PreviewWidget::zoomOut()
{
    m_fit = false;
    setZoom(zoom() / zoomStep);
}

void PreviewWidget::zoomToOriginal()
{
    m_fit = false;
    setZoom(1.0);
}

void PreviewWidget::zoomToFit()
{
    m_fit = true;
    const QRectF page = m_scene->sceneRect();
    const QSize room = m_view->maximumViewportSize();
    if (page.isEmpty() || room.isEmpty())
        return;
    setZoom(qMin(room.width() / page.width(), room.height() / page.height()) * devicePixelRatioF());
}

// Decodes the page into the scene; only the visible window of a group holds its pixels.
void PreviewWidget::showPicture()
{
    m_scene->clear();
    const QImage page = m_picture.fault().isEmpty() ? m_picture.decode() : QImage();
    if (!page.isNull()) {
        auto* item = new PageItem(page);
        item->setScale(double(m_picture.originalSize().width()) / page.width());
        m_scene->addItem(item);
        m_scene->setSceneRect(item->sceneBoundingRect());
        if (m_fit)
            zoomToFit();
    }
    updateStatus();
}

void PreviewWidget::updateStatus()
{
    const QVector<PreviewWidget*> pages = m_group->pages();
    const int index = pages.indexOf(this);
    m_previous->setEnabled(index > 0);
    m_next->setEnabled(index >= 0 && index + 1 < pages.size());
    QStringList parts;
    if (pages.size() > 1)
        parts << tr("第 %1 页，共 %2 页").arg(index + 1).arg(pages.size());
    if (!m_scene->items().isEmpty()) {
        const QSize size = m_picture.originalSize();
        parts << tr("%1 × %2 像素").arg(size.width()).arg(size.height())
              << tr("显示比例 %1%").arg(qRound(zoom() * 100));
    }
    m_status->setText(parts.join(tr("　", "between two facts about a picture")));
    m_status->setAccessibleName(m_status->text());
}

void PreviewWidget::nextPage()
{
    stepTo(1);
}

void PreviewWidget::previousPage()
{
    stepTo(-1);
}

void PreviewWidget::stepTo(int offset)
{
    const QVector<PreviewWidget*> pages = m_group->pages();
    const int index = pages.indexOf(this) + offset;
    if (index < 0 || index >= pages.size())
        return;
    PreviewWidget* other = pages.at(index);
    other->setGeometry(geometry());
    if (isMaximized())
        other->showMaximized();
    else
        other->show();
    other->raise();
    other->activateWindow();
    hide();
}

void PreviewWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous() && m_scene->items().isEmpty())
        showPicture();
}

void PreviewWidget::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        m_scene->clear();
}

void PreviewWidget::closeEvent(QCloseEvent* event)
{
    event->accept();
    m_closing = true;
    for (PreviewWidget* page : m_group->pages())
        if (!page->m_closing)
            page->close();
}

bool PreviewWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_view->viewport() && event->type() == QEvent::Wheel) {
        auto* wheel = static_cast<QWheelEvent*>(event);
        if (wheel->modifiers().testFlag(Qt::ControlModifier)) {
            m_fit = false;
            m_view->setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
            setZoom(zoom() * qPow(zoomStep, wheel->angleDelta().y() / 120.0));
            m_view->setTransformationAnchor(QGraphicsView::AnchorViewCenter);
            return true;
        }
    }
    if (watched == m_view->viewport() && event->type() == QEvent::Resize && m_fit)
        zoomToFit();
    return QWidget::eventFilter(watched, event);
}
