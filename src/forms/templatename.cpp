// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/templatename.h"

#include "config/templates.h"
#include "forms/dialogparts.h"
#include "forms/questionbox.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

TemplateName::TemplateName(const QString& proposal, std::function<bool(const QString&)> exists,
                           QWidget* parent)
    : QDialog(parent), m_exists(std::move(exists)), m_name(new QLineEdit(proposal, this)),
      m_message(new QLabel(this))
{
    setObjectName(QStringLiteral("TemplateName"));
    setWindowTitle(tr("保存模板"));
    setWindowModality(Qt::ApplicationModal);
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    m_name->setObjectName(QStringLiteral("nameEdit"));
    m_name->setAccessibleName(tr("模板名称"));
    m_message->setObjectName(QStringLiteral("messageLabel"));
    auto* help = new QLabel(tr("模板保存两页的全部设置，载入后即可恢复。名称最多 64 个字，不含空格。"), this);
    dialogparts::styleHelp(help);
    auto* label = new QLabel(tr("模板名称(&N):"), this);
    label->setBuddy(m_name);
    auto* form = new QFormLayout;
    form->addRow(label, m_name);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    dialogparts::useChineseButtons(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(help);
    layout->addLayout(form);
    layout->addWidget(m_message);
    layout->addStretch();
    layout->addWidget(buttons);
    setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    connect(buttons, &QDialogButtonBox::accepted, this, &TemplateName::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_name, &QLineEdit::textChanged, this, &TemplateName::nameEdited);
    nameEdited();
    m_name->selectAll();
}

void TemplateName::nameEdited()
{
    const bool cut = m_name->text().contains(QLatin1Char('_'));
    dialogparts::showMessage(
        m_message, cut ? tr("名称含有“_”：下次启动后列表中只显示“_”之前的部分，无法再载入。") : QString());
}

void TemplateName::accept()
{
    const QString name = m_name->text();
    if (!isSafeTemplateName(name)) {
        dialogparts::refuse(m_message, tr("模板名称不能包含空格或特殊字符"), m_name);
        return;
    }
    if (m_exists(name) && !questionbox::ask(this, tr("模板“%1”已存在，要覆盖吗？").arg(name)))
        return;
    emit sendAddTempleteMessage(name);
    QDialog::accept();
}
