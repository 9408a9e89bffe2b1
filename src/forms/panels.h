// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/functionpanel.h"

class QFileSystemModel;
class QTreeView;

// A function panel that shows the files of a folder; the function itself scans to files, and the panel's
// further controls follow later. GUI thread.
class FolderPanel : public FunctionPanel
{
    Q_OBJECT
public:
    FolderPanel(const QString& title, const QString& description, QWidget* parent = nullptr);

    // Follows the folder's contents from now on; an empty or missing folder shows nothing.
    void setFolder(const QString& folder);

private:
    void openFile(const QModelIndex& index);

    QFileSystemModel* m_model;
    QTreeView* m_files;
};

class copyPanel : public FolderPanel
{
    Q_OBJECT
public:
    explicit copyPanel(QWidget* parent = nullptr);
};

class EmailPanel : public FolderPanel
{
    Q_OBJECT
public:
    explicit EmailPanel(QWidget* parent = nullptr);
};

class filepanel : public FolderPanel
{
    Q_OBJECT
public:
    explicit filepanel(QWidget* parent = nullptr);
};

class ftppanel : public FolderPanel
{
    Q_OBJECT
public:
    explicit ftppanel(QWidget* parent = nullptr);
};
