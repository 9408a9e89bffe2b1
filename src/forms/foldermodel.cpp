// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/foldermodel.h"

#include "forms/dialogparts.h"

#include <QApplication>
#include <QDateTime>
#include <QDebug>
#include <QFileInfo>
#include <QLocale>
#include <QPainter>
#include <QStyle>

namespace {

QString nameProblem(const QString& folder, const QString& name)
{
    constexpr int kMostBytes = 255;
    if (name.trimmed().isEmpty())
        return FolderModel::tr("文件名不能为空");
    if (name.contains(QLatin1Char('/')) || dialogparts::hasControlCharacters(name))
        return FolderModel::tr("文件名中不能有“/”或控制字符");
    if (name.startsWith(QLatin1Char('.')))
        return FolderModel::tr("文件名不能以“.”开头，否则文件会被隐藏");
    if (name.toUtf8().size() > kMostBytes)
        return FolderModel::tr("文件名太长");
    const QFileInfo target(folder + QLatin1Char('/') + name);
    if (target.exists() || target.isSymLink())
        return FolderModel::tr("文件夹中已有“%1”，没有重命名").arg(name);
    return {};
}

// All rows have pictures of one size, so that names stand in one line.
QIcon centred(const QPixmap& picture, int side)
{
    const qreal ratio = qApp->devicePixelRatio();
    QPixmap square(QSize(side, side) * ratio);
    square.setDevicePixelRatio(ratio);
    square.fill(Qt::transparent);
    QPainter painter(&square);
    const QSizeF size = QSizeF(picture.size()).scaled(side - 2, side - 2, Qt::KeepAspectRatio);
    const QRectF place((side - size.width()) / 2, (side - size.height()) / 2, size.width(), size.height());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, picture, picture.rect());
    painter.setPen(Qt::gray); // a white page on a white list
    painter.drawRect(place);
    return square;
}

} // namespace

FolderModel::FolderModel(QObject* parent)
    : QFileSystemModel(parent), m_pictures(qRound(kPictureSide * qApp->devicePixelRatio()))
{
    setFilter(QDir::Files | QDir::NoDotAndDotDot);
    setReadOnly(false);
    connect(&m_pictures, &Thumbnails::ready, this, &FolderModel::pictureReady);
}

QModelIndex FolderModel::open(const QString& folder)
{
    m_pictures.drop();
    return setRootPath(folder);
}

QVariant FolderModel::data(const QModelIndex& index, int role) const
{
    if (index.isValid() && index.column() == Name && role == Qt::DecorationRole)
        return pictureOf(index);
    if (index.isValid() && index.column() == Date && role == Qt::DisplayRole)
        return lastModified(index).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    if (index.isValid() && index.column() == Size && role == Qt::DisplayRole) {
        const qint64 bytes = size(index);
        return bytes < 1024 ? tr("%1 字节").arg(bytes)
                            : QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
    }
    return QFileSystemModel::data(index, role);
}

QIcon FolderModel::pictureOf(const QModelIndex& index) const
{
    const QPixmap picture = m_pictures.picture(filePath(index), lastModified(index));
    if (!picture.isNull())
        return centred(picture, kPictureSide);
    const auto icon = QFileSystemModel::data(index, Qt::DecorationRole).value<QIcon>();
    return icon.isNull() ? qApp->style()->standardIcon(QStyle::SP_FileIcon) : icon;
}

void FolderModel::pictureReady(const QString& path)
{
    const QModelIndex row = index(path);
    if (row.isValid())
        emit dataChanged(row, row, {Qt::DecorationRole});
}

QVariant FolderModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        const QStringList titles{tr("名称"), tr("大小"), tr("类型"), tr("修改日期")};
        return titles.value(section);
    }
    if (role == Qt::DecorationRole)
        return {};
    return QFileSystemModel::headerData(section, orientation, role);
}

Qt::ItemFlags FolderModel::flags(const QModelIndex& index) const
{
    return QFileSystemModel::flags(index) & ~Qt::ItemIsDropEnabled;
}

bool FolderModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const QString name = value.toString();
    if (!index.isValid() || role != Qt::EditRole || index.column() != Name || name == fileName(index))
        return false;
    const QFileInfo file(filePath(index));
    QString fault = nameProblem(file.path(), name);
    if (fault.isEmpty() && !QFile::rename(file.filePath(), file.path() + QLatin1Char('/') + name))
        fault = tr("无法重命名“%1”，请检查文件夹的写入权限").arg(file.fileName());
    if (fault.isEmpty()) {
        emit renamed(file.path() + QLatin1Char('/') + name);
        return true; // the watched folder brings the new name
    }
    qWarning().noquote() << "not renamed:" << file.filePath() << fault;
    emit problem(fault);
    return false;
}
