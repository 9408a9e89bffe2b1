// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "config/applicationlist.h"

#include <QDialog>
#include <memory>

namespace Ui {
class append;
}
class QAction;

// Asks for one entry of an application list: its name in the list, the program and its arguments, typed or
// filled in from a preset or from an application of the desktop's menu. Used for
// new entries and for changing one. It stores nothing: the caller takes entry() when it was accepted.
class append : public QDialog
{
    Q_OBJECT
public:
    // `otherNames`: display texts that are taken by the other entries of the list.
    append(const AppEntry& entry, const QStringList& otherNames, QWidget* parent = nullptr);
    ~append() override;

    // The command line follows the quoting of desktop entries; empty when no program was given.
    AppEntry entry() const;

public slots:
    void accept() override;

private:
    void fill(const AppEntry& entry);
    void setIcon(const QString& icon);
    void fillPresets();
    void takePreset();
    void import();
    void browse();
    bool check();

    std::unique_ptr<Ui::append> m_ui;
    QStringList m_otherNames;
    QString m_icon; // of the program that the fields show
    QAction* m_iconAction = nullptr;
};
