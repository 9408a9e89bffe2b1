// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <opencv2/core.hpp>

// A folder of page files and documents, and the other programs that open them.
class DocumentFiles
{
public:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString folder() const { return m_folder.path(); }
    QStringList everything(const QString& folder = QString()) const; // with hidden files, sorted
    void put(const QString& name, const QByteArray& bytes) const;
    QByteArray get(const QString& name) const;

    // Starts a program in the folder; its output, or the reason on the error stream with "FAILED: " before
    // it.
    QByteArray run(const QString& program, const QStringList& arguments) const;
    // The pages of a document as its reader draws them, red-green-blue.
    QList<cv::Mat> drawnPdf(const QString& name, int dpi) const;
    QList<cv::Mat> drawnOfd(const QString& name, int dpi) const; // empty when a strict reader finds a fault
    cv::Mat picture(const QString& name) const; // as OpenCV reads it, turned as its Exif data say

private:
    QList<cv::Mat> drawn(const QString& prefix) const;

    QTemporaryDir m_folder;
};
