// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPersistentModelIndex>
#include <QStringList>
#include <QTimer>
#include <QWidget>

class FolderModel;
class QAction;
class QComboBox;
class QLabel;
class QPushButton;
class QTreeView;

// A folder's files with pictures, name, size and date: to open, rename, move to the trash, drag elsewhere, by
// mouse and keyboard. Follows the folder while it is seen, also when it vanishes and comes back. GUI thread.
class FolderView : public QWidget
{
    Q_OBJECT
public:
    explicit FolderView(QWidget* parent = nullptr);

    void setFolder(const QString& folder); // need not exist
    QString folder() const { return m_folder; }
    QStringList selectedFiles() const; // paths

signals:
    void folderChosen(const QString& folder); // by the user

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void buildList();
    void buildButtons();
    QAction* addAction(const QString& text, const QKeySequence& key, void (FolderView::*slot)());
    void follow(); // shows the folder as it is now
    void showCount();
    void updateActions();
    void sort(int choice);
    void choose();
    void openFiles();
    void rename();
    void moveToTrash();
    void tell(const QString& text);

    QString m_folder;
    QString m_shown;                // the folder that the list shows; empty: none
    QString m_selectNext;           // the file that was renamed, until the list shows its new name
    FolderModel* m_model = nullptr; // made when it is first seen: it runs a thread
    QTreeView* m_list;
    QLabel* m_folderLabel;
    QLabel* m_emptyLabel;
    QLabel* m_messageLabel;
    QComboBox* m_sort;
    QPushButton* m_chooseButton;
    QAction* m_open = nullptr;
    QAction* m_rename = nullptr;
    QAction* m_trash = nullptr;
    QTimer m_watch; // for the folder itself; its contents are watched by the model
};
