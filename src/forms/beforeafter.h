// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/effectpreview.h"
#include "imaging/effect.h"

#include <QPixmap>
#include <QWidget>

class QLabel;

// A picture scaled into the space that there is.
class PictureView : public QWidget
{
    Q_OBJECT
public:
    explicit PictureView(const QString& name, QWidget* parent = nullptr);

    void setPicture(const QImage& picture);
    QImage picture() const { return m_picture.toImage(); }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_picture;
};

// A piece of the last scanned page before and after a setting has done its work on it. GUI thread.
class BeforeAfter : public QWidget
{
    Q_OBJECT
public:
    explicit BeforeAfter(Qt::Orientation orientation = Qt::Horizontal, QWidget* parent = nullptr);

    // Shows the detail after this effect; `caption` names it.
    void showEffect(const Effect& effect, const QString& caption);
    // Shows what `work` makes; its text stands below.
    void show(EffectPreview::Work work, const QString& caption);

    QImage before() const { return m_before->picture(); }
    QImage after() const { return m_after->picture(); }

signals:
    void shown();

private:
    void makeRoom();
    void take(const QImage& before, const EffectPreview::Result& after, bool drawn);

    EffectPreview m_preview;
    PictureView* m_before;
    PictureView* m_after;
    QLabel* m_caption;
    QLabel* m_note;
};
