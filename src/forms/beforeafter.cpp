// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/beforeafter.h"

#include "forms/dialogparts.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>

PictureView::PictureView(const QString& name, QWidget* parent) : QWidget(parent)
{
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(sizeHint());
}

QSize PictureView::sizeHint() const
{
    return kDetailSize / 2;
}

void PictureView::setPicture(const QImage& picture)
{
    m_picture = QPixmap::fromImage(picture);
    update();
}

void PictureView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillRect(rect(), palette().mid());
    if (m_picture.isNull())
        return;
    const QSizeF size = QSizeF(m_picture.size()).scaled(QSizeF(this->size()), Qt::KeepAspectRatio);
    const QRectF place(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size);
    painter.drawPixmap(place, m_picture, QRectF(m_picture.rect()));
}

BeforeAfter::BeforeAfter(Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent), m_before(new PictureView(tr("处理前"), this)),
      m_after(new PictureView(tr("处理后"), this)), m_caption(new QLabel(tr("处理后"), this)),
      m_note(new QLabel(this))
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    const int row = orientation == Qt::Vertical ? 2 : 0; // of what comes after
    const int column = orientation == Qt::Vertical ? 0 : 1;
    grid->addWidget(new QLabel(tr("处理前"), this), 0, 0);
    grid->addWidget(m_before, 1, 0);
    grid->addWidget(m_caption, row, column);
    grid->addWidget(m_after, row + 1, column);
    grid->addWidget(m_note, row + 2, 0, 1, column + 1);
    grid->setRowStretch(1, 1);
    grid->setRowStretch(row + 1, 1);
    m_note->setText(tr("正在生成预览"));
    dialogparts::styleHelp(m_note);
    connect(&m_preview, &EffectPreview::ready, this, &BeforeAfter::take);
}

void BeforeAfter::showEffect(const Effect& effect, const QString& caption)
{
    show(
        [effect](const SamplePage& sample, const QString& folder) {
            const QString result = folder + QStringLiteral("after.bmp");
            EffectPreview::Result after;
            if (renderEffect(sample.detail, sample.dpi, effect, result))
                after.picture.load(result);
            return after;
        },
        caption);
}

void BeforeAfter::show(EffectPreview::Work work, const QString& caption)
{
    m_caption->setText(caption);
    m_preview.request(std::move(work));
}

// A window is no higher than the first texts in it needed; these may take more lines.
void BeforeAfter::makeRoom()
{
    QLayout* all = window()->layout();
    if (!all || !isVisible())
        return;
    all->activate();
    if (const int wanted = all->totalHeightForWidth(window()->width()); wanted > window()->height())
        window()->resize(window()->width(), wanted);
}

void BeforeAfter::take(const QImage& before, const EffectPreview::Result& after, bool drawn)
{
    m_before->setPicture(before);
    m_after->setPicture(after.picture);
    QString note = drawn ? tr("还没有扫描过页面，以示例页面代替。") : tr("最近扫描的页面的一部分。");
    if (after.picture.isNull())
        note = tr("无法生成预览，请检查磁盘空间。");
    m_note->setText(after.text.isEmpty() ? note : tr("%1%2", "two sentences").arg(note, after.text));
    makeRoom();
    emit shown();
}
