// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/desktopentry.h"

#include <QDialog>
#include <QTimer>
#include <QVector>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

// Shows the applications of the desktop's menu, with their icons, to take one. An application that cannot be
// used is listed, and the dialog says why when it is chosen. The files are read in slices. GUI thread.
class DesktopEntryDialog : public QDialog
{
    Q_OBJECT
public:
    explicit DesktopEntryDialog(const QString& folder, QWidget* parent = nullptr);

    // The chosen application, after accept().
    const AppEntry& application() const { return m_chosen; }

public slots:
    void accept() override;

private:
    void readSome();
    void addEntry(const QString& file);
    void filter(const QString& text);
    void browse();
    bool take(const DesktopEntry& entry);

    QString m_folder;
    QStringList m_files; // still to be read
    QVector<DesktopEntry> m_entries;
    AppEntry m_chosen;
    QTimer m_reading;
    QLineEdit* m_filter;
    QListWidget* m_list;
    QLabel* m_message;
};
