// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/namingfields.h"

#include <QDialog>
#include <memory>

namespace Ui {
class saveSet;
}

// The save dialog of one function: its save folder (path file) and the most used naming settings (main file).
class saveSet : public QDialog
{
    Q_OBJECT
public:
    // For example "Scan_Scan" and "Scan_Scan_FilePath". Shows what is stored there.
    saveSet(const QString& group, const QString& pathGroup, QWidget* parent = nullptr);
    ~saveSet() override;

    QString folder() const; // absolute, without a trailing "/"

public slots:
    void accept() override; // checks, stores, closes

private:
    void connectControls();
    void showRules();
    void showFolderState();
    NamingRules rules() const;
    void setRules(const NamingRules& rules);
    void browse();
    void openFileNameSet();
    bool checkFolder();
    bool store();

    std::unique_ptr<Ui::saveSet> m_ui;
    QString m_group;
    QString m_pathGroup;
    NamingFields* m_fields;
    NamingRules m_rules;      // with what only the file-name dialog shows
    QString m_doubtfulFolder; // the user has been told that it cannot be written
};
