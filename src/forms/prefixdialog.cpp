// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/prefixdialog.h"

#include "forms/dialogparts.h"
#include "ui_prefixdialog.h"

PrefixDialog::PrefixDialog(Moment moment, const NamingRules& rules, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::PrefixDialog>()), m_rules(rules)
{
    m_ui->setupUi(this);
    dialogparts::styleHelp(m_ui->helpLabel);
    dialogparts::useChineseButtons(m_ui->buttonBox);
    if (moment == Moment::BeforeBatch)
        m_ui->helpLabel->setText(tr("请确认这一批文件的前缀，然后开始扫描。"));
    else
        m_ui->helpLabel->setText(tr("请确认刚保存的文件的前缀。改动前缀后，这一批文件会随之改名。"));
    // A batch that was named without a prefix gets one here if the user types it.
    m_rules.userDefined = true;
    m_ui->nameCaption->setVisible(moment == Moment::BeforeBatch);
    m_ui->nameLabel->setVisible(moment == Moment::BeforeBatch);
    m_ui->prefixEdit->setText(rules.prefix);
    m_ui->prefixEdit->selectAll();
    connect(m_ui->prefixEdit, &QLineEdit::textChanged, this, &PrefixDialog::showName);
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &PrefixDialog::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showName();
}

PrefixDialog::~PrefixDialog() = default;

void PrefixDialog::showName()
{
    m_rules.prefix = prefix();
    m_ui->nameLabel->setText(safeBaseName(imageName(m_rules, QDateTime::currentDateTime(), false)));
    dialogparts::showMessage(m_ui->messageLabel, dialogparts::prefixProblem(prefix()));
}

void PrefixDialog::accept()
{
    const QString problem = dialogparts::prefixProblem(prefix());
    if (problem.isEmpty())
        QDialog::accept();
    else
        dialogparts::refuse(m_ui->messageLabel, problem, m_ui->prefixEdit);
}

QString PrefixDialog::prefix() const
{
    return m_ui->prefixEdit->text().trimmed();
}
