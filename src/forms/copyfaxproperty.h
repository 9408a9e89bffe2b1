// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <memory>

class SettingBinding;
namespace Ui {
class copyfaxproperty;
}

// How copies are meant to be printed. The values are stored with the page's settings and travel with the
// templates; nothing here prints, and the dialog says so.
class copyfaxproperty : public QDialog
{
    Q_OBJECT
public:
    // `group`: "Scan_Copy_Print" or "File_Copy_Print".
    explicit copyfaxproperty(const QString& group, QWidget* parent = nullptr);
    ~copyfaxproperty() override;

public slots:
    void accept() override; // stores

private:
    void bindControls();

    std::unique_ptr<Ui::copyfaxproperty> m_ui;
    std::unique_ptr<SettingBinding> m_binding;
    QString m_group;
};
