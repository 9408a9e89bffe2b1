// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

// The picture of one previewed page, independent of its file: it is read completely by load(), and kept in
// compressed form while it is not shown, so that a stack of previews stays small in memory.
class PreviewPicture
{
public:
    // Pictures with a longer side than this (pixels), or what load() is told, are scaled down while they are
    // read.
    static constexpr int longestSide = 4000;

    // Reads the file, in any thread. On failure fault() says why, in Chinese, and the picture is empty.
    bool load(const QString& path, int longest = longestSide);

    // Decodes the picture; null when nothing is loaded.
    QImage decode() const;

    const QString& fault() const { return m_fault; }
    QSize originalSize() const { return m_originalSize; } // pixels of the file's picture
    qsizetype storedBytes() const { return m_bytes.size(); }

private:
    bool fail(const QString& reason);

    QByteArray m_bytes; // an image file
    QSize m_originalSize;
    QString m_fault;
};
