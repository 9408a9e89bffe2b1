// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "config/applicationlist.h"
#include "forms/namingfields.h"

#include <QDialog>
#include <memory>

namespace Ui {
class fileNameSet;
}

// The file-name dialog: all naming settings of one function's group in the main settings file.
class fileNameSet : public QDialog
{
    Q_OBJECT
public:
    // `group`: "Scan_Scan", "File_Scan", "Scan_PDF", ... Shows what is stored there.
    explicit fileNameSet(const QString& group, QWidget* parent = nullptr);
    ~fileNameSet() override;

    NamingRules rules() const;
    void setRules(const NamingRules& rules); // what another dialog has changed and not stored yet

public slots:
    void accept() override; // checks, stores, closes

private:
    void connectControls();
    void showRules();
    void showApplications();
    void keepOrderDistinct(int changed);
    void appendApp();
    void delApp();
    void writeApps();

    std::unique_ptr<Ui::fileNameSet> m_ui;
    QString m_group;
    QString m_appGroup;
    NamingFields* m_fields;
    std::vector<AppEntry> m_apps;
    int m_order[3] = {0, 1, 2};
};
