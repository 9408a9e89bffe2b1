// SPDX-License-Identifier: GPL-3.0-or-later
#include "passworddialog.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace reader {

PasswordDialog::PasswordDialog(const QString& fileName, QWidget* parent)
    : QDialog(parent), m_password(new QLineEdit(this)), m_wrong(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("需要密码"));
    auto* file = new QLabel(tr("文件“%1”已加密。").arg(fileName), this);
    file->setTextFormat(Qt::PlainText);
    file->setWordWrap(true);
    auto* label = new QLabel(tr("密码(&P)："), this);
    label->setBuddy(m_password);
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setAccessibleName(tr("密码"));
    m_wrong->hide();
    auto* column = new QVBoxLayout(this);
    for (QWidget* part : std::initializer_list<QWidget*>{file, label, m_password, m_wrong, m_buttons})
        column->addWidget(part);
    setMinimumWidth(360);
    QPushButton* ok = m_buttons->button(QDialogButtonBox::Ok);
    ok->setEnabled(false);
    connect(m_password, &QLineEdit::textChanged, this,
            [ok](const QString& text) { ok->setEnabled(!text.isEmpty()); });
    connect(m_buttons, &QDialogButtonBox::accepted, this, &PasswordDialog::enter);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void PasswordDialog::enter()
{
    m_password->setEnabled(false);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(false);
    emit entered(m_password->text());
}

void PasswordDialog::tellWrong(int triesLeft)
{
    m_wrong->setText(tr("密码不正确，还可以再试 %1 次。").arg(triesLeft));
    m_wrong->setAccessibleName(m_wrong->text());
    m_wrong->show();
    m_password->setEnabled(true);
    m_password->clear();
    m_password->setFocus();
}

} // namespace reader
