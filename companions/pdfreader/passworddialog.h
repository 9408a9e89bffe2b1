// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>

namespace reader {

// Asks for the password of one file. It stays open while the password is tried: accept() comes from the
// window.
class PasswordDialog : public QDialog
{
    Q_OBJECT
public:
    PasswordDialog(const QString& fileName, QWidget* parent);
    void tellWrong(int triesLeft);

signals:
    void entered(const QString& password);

private:
    void enter();

    QLineEdit* m_password;
    QLabel* m_wrong;
    QDialogButtonBox* m_buttons;
};

} // namespace reader
