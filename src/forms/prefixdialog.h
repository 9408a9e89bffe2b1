// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "output/naming.h"

#include <QDialog>
#include <memory>

namespace Ui {
class PrefixDialog;
}

// Lets the user confirm or change the prefix of the file names, before a batch or after it. It stores
// nothing: the caller takes prefix() when it was accepted.
class PrefixDialog : public QDialog
{
    Q_OBJECT
public:
    enum class Moment
    {
        BeforeBatch, // the next files get the prefix
        AfterBatch   // the files just saved are renamed
    };
    PrefixDialog(Moment moment, const NamingRules& rules, QWidget* parent = nullptr);
    ~PrefixDialog() override;

    QString prefix() const;

public slots:
    void accept() override;

private:
    void showName();

    std::unique_ptr<Ui::PrefixDialog> m_ui;
    NamingRules m_rules;
};
