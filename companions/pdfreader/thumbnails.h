// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documentworker.h"

#include <QAbstractListModel>
#include <QListView>

namespace reader {

// The pages as small pictures; the model holds the last few hundred only.
class ThumbnailModel : public QAbstractListModel
{
    Q_OBJECT
public:
    explicit ThumbnailModel(QObject* parent);
    void setCount(int pages);
    void setImage(int page, const QImage& image);
    bool isMissing(int page) const { return !m_images.contains(page); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    int m_count = 0;
    QCache<int, QImage> m_images; // cost: KiB
};

// Asks only for the pictures that are seen.
class ThumbnailPane : public QListView
{
    Q_OBJECT
public:
    explicit ThumbnailPane(DocumentWorker& worker, QWidget* parent = nullptr);
    void setDocument(int pages);
    void setCurrentPage(int page);

signals:
    void pageChosen(int page);

protected:
    void paintEvent(QPaintEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void askForSeen();

    DocumentWorker& m_worker;
    ThumbnailModel* m_model;
    QVector<int> m_asked;
    bool m_following = false; // the view's page, not the user's choice
};

} // namespace reader
