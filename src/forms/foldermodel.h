// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/thumbnails.h"

#include <QFileSystemModel>

// The files of one folder with small pictures: read by a thread of the base class, which watches the folder.
// Files can be renamed and dragged out as copies; nothing can be dropped here. GUI thread.
class FolderModel : public QFileSystemModel
{
    Q_OBJECT
public:
    enum Column
    {
        Name,
        Size,
        Type,
        Date
    };
    static constexpr int kPictureSide = 56; // pixels of the layout

    explicit FolderModel(QObject* parent = nullptr);

    // Forgets the pictures that are still to be made; call it with a new folder.
    QModelIndex open(const QString& folder);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }
    // A new file name. Never replaces a file; a refusal is told by problem().
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

signals:
    void renamed(const QString& file); // the new path; the list shows it a little later
    void problem(const QString& text); // Chinese

private:
    QIcon pictureOf(const QModelIndex& index) const;
    void pictureReady(const QString& path);

    mutable Thumbnails m_pictures;
};
