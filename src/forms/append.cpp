// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/append.h"

#include "forms/dialogparts.h"
#include "ui_append.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

constexpr int longestName = 60; // characters; the list is narrow

// One word as a command line of the desktop-entry rules has it: quoted when it holds reserved characters.
QString quoted(QString word)
{
    static const QRegularExpression reserved(QStringLiteral(R"([\s"'\\><~|&;$*?#()`])"));
    if (!word.contains(reserved))
        return word;
    static const QRegularExpression escaped(QStringLiteral(R"((["`$\\]))"));
    word.replace(escaped, QStringLiteral(R"(\\1)"));
    return QLatin1Char('"') + word + QLatin1Char('"');
}

struct CommandLine
{
    QString program;
    QString arguments; // as they stand
};

// Takes the first word off a command line; the reverse of quoted().
CommandLine splitProgram(const QString& command)
{
    CommandLine parts;
    bool inQuotes = false;
    int i = 0;
    for (; i < command.size() && (inQuotes || !command.at(i).isSpace()); ++i) {
        if (command.at(i) == QLatin1Char('"'))
            inQuotes = !inQuotes;
        else if (inQuotes && command.at(i) == QLatin1Char('\\') && i + 1 < command.size())
            parts.program += command.at(++i);
        else
            parts.program += command.at(i);
    }
    parts.arguments = command.mid(i).trimmed();
    return parts;
}

bool quotesArePaired(const QString& arguments)
{
    bool inQuotes = false;
    for (int i = 0; i < arguments.size(); ++i) {
        if (arguments.at(i) == QLatin1Char('"'))
            inQuotes = !inQuotes;
        else if (inQuotes && arguments.at(i) == QLatin1Char('\\'))
            ++i;
    }
    return !inQuotes;
}

bool isRunnable(const QString& program)
{
    if (program.contains(QLatin1Char('/'))) {
        const QFileInfo info(program);
        return info.isAbsolute() && info.isFile() && info.isExecutable();
    }
    return !QStandardPaths::findExecutable(program).isEmpty();
}

} // namespace

append::append(const AppEntry& entry, const QStringList& otherNames, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::append>()), m_otherNames(otherNames)
{
    m_ui->setupUi(this);
    setWindowTitle(entry.text.isEmpty() ? tr("添加应用程序") : tr("编辑应用程序"));
    dialogparts::styleHelp(m_ui->helpLabel);
    dialogparts::useChineseButtons(m_ui->buttonBox);
    const CommandLine command = splitProgram(entry.command.trimmed());
    m_ui->nameEdit->setText(entry.text);
    m_ui->nameEdit->setMaxLength(longestName);
    m_ui->programEdit->setText(command.program);
    m_ui->argumentsEdit->setText(command.arguments);
    connect(m_ui->browseButton, &QPushButton::clicked, this, &append::browse);
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &append::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    for (QLineEdit* edit : {m_ui->nameEdit, m_ui->programEdit, m_ui->argumentsEdit})
        connect(edit, &QLineEdit::textEdited, this,
                [this] { dialogparts::showMessage(m_ui->messageLabel, QString()); });
}

append::~append() = default;

void append::browse()
{
    const QString current = m_ui->programEdit->text().trimmed();
    const QString start = QFileInfo(current).isAbsolute() ? current : QStringLiteral("/usr/bin");
    const QString program = QFileDialog::getOpenFileName(this, tr("选择程序"), start);
    if (program.isEmpty())
        return;
    m_ui->programEdit->setText(program);
    dialogparts::showMessage(m_ui->messageLabel, QString());
    if (m_ui->nameEdit->text().trimmed().isEmpty())
        m_ui->nameEdit->setText(QFileInfo(program).fileName().left(longestName));
}

bool append::check()
{
    const QString name = m_ui->nameEdit->text().trimmed();
    const QString program = m_ui->programEdit->text().trimmed();
    const QString arguments = m_ui->argumentsEdit->text();
    const auto refuse = [this](const QString& reason, QWidget* field) {
        dialogparts::refuse(m_ui->messageLabel, reason, field);
        return false;
    };
    if (name.isEmpty())
        return refuse(tr("请输入应用程序的名称。"), m_ui->nameEdit);
    if (m_otherNames.contains(name))
        return refuse(tr("列表中已有名为“%1”的应用程序。").arg(name), m_ui->nameEdit);
    if (dialogparts::hasControlCharacters(name))
        return refuse(tr("名称中不能有控制字符。"), m_ui->nameEdit);
    if (dialogparts::hasControlCharacters(program) || dialogparts::hasControlCharacters(arguments))
        return refuse(tr("程序和参数中不能有控制字符。"), m_ui->programEdit);
    if (program.isEmpty() && !arguments.trimmed().isEmpty())
        return refuse(tr("有参数时必须指定程序。"), m_ui->programEdit);
    if (!program.isEmpty() && !isRunnable(program))
        return refuse(tr("找不到程序“%1”，或者它不能运行。").arg(program), m_ui->programEdit);
    if (!quotesArePaired(arguments))
        return refuse(tr("参数中的双引号没有成对出现。"), m_ui->argumentsEdit);
    return true;
}

void append::accept()
{
    if (check())
        QDialog::accept();
}

AppEntry append::entry() const
{
    AppEntry entry;
    entry.text = m_ui->nameEdit->text().trimmed();
    const QString program = m_ui->programEdit->text().trimmed();
    if (!program.isEmpty())
        entry.command = (quoted(program) + QLatin1Char(' ') + m_ui->argumentsEdit->text()).trimmed();
    return entry;
}
