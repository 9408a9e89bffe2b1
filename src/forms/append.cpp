// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/append.h"

#include "forms/applicationicon.h"
#include "forms/commandline.h"
#include "forms/desktopentrydialog.h"
#include "forms/dialogparts.h"
#include "ui_append.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

constexpr int longestName = 60; // characters; the list is narrow
constexpr char kMenuFolder[] = "/usr/share/applications/";

struct Preset
{
    const char* name;
    const char* program; // empty: the desktop's default
    const char* arguments;
};

// Programs that open pictures and documents; those that are installed are offered.
constexpr Preset presets[] = {
    {QT_TRANSLATE_NOOP("append", "系统默认程序"), "", ""},
    {QT_TRANSLATE_NOOP("append", "图像查看器 Eye of GNOME"), "eog", ""},
    {QT_TRANSLATE_NOOP("append", "图像查看器 Eye of MATE"), "eom", ""},
    {QT_TRANSLATE_NOOP("append", "图像查看器 Gwenview"), "gwenview", ""},
    {QT_TRANSLATE_NOOP("append", "图像查看器 Ristretto"), "ristretto", ""},
    {QT_TRANSLATE_NOOP("append", "图像编辑 GIMP"), "gimp", ""},
    {QT_TRANSLATE_NOOP("append", "画图 KolourPaint"), "kolourpaint", ""},
    {QT_TRANSLATE_NOOP("append", "LibreOffice 绘图"), "libreoffice", "--draw"},
    {QT_TRANSLATE_NOOP("append", "LibreOffice 文档"), "libreoffice", "--writer"},
    {QT_TRANSLATE_NOOP("append", "文档查看器 Evince"), "evince", ""},
    {QT_TRANSLATE_NOOP("append", "文档查看器 Okular"), "okular", ""},
    {QT_TRANSLATE_NOOP("append", "文档查看器 Atril"), "atril", ""},
    {QT_TRANSLATE_NOOP("append", "图像查看器 ImageMagick"), "display", ""},
};

} // namespace

append::append(const AppEntry& entry, const QStringList& otherNames, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::append>()), m_otherNames(otherNames)
{
    m_ui->setupUi(this);
    setWindowTitle(entry.text.isEmpty() ? tr("添加应用程序") : tr("编辑应用程序"));
    dialogparts::styleHelp(m_ui->helpLabel);
    dialogparts::useChineseButtons(m_ui->buttonBox);
    m_ui->nameEdit->setMaxLength(longestName);
    fillPresets();
    fill(entry);
    connect(m_ui->presetComboBox, QOverload<int>::of(&QComboBox::activated), this, &append::takePreset);
    connect(m_ui->importButton, &QPushButton::clicked, this, &append::import);
    connect(m_ui->programEdit, &QLineEdit::textEdited, this, [this] { setIcon(QString()); });
    connect(m_ui->browseButton, &QPushButton::clicked, this, &append::browse);
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &append::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    for (QLineEdit* edit : {m_ui->nameEdit, m_ui->programEdit, m_ui->argumentsEdit})
        connect(edit, &QLineEdit::textEdited, this,
                [this] { dialogparts::showMessage(m_ui->messageLabel, QString()); });
}

append::~append() = default;

void append::fill(const AppEntry& entry)
{
    const commandline::Parts command = commandline::split(entry.command.trimmed());
    m_ui->nameEdit->setText(entry.text.left(longestName));
    m_ui->programEdit->setText(command.program);
    m_ui->argumentsEdit->setText(command.arguments);
    setIcon(entry.icon);
    dialogparts::showMessage(m_ui->messageLabel, QString());
}

// The icon stands for the program: another program has none until one is imported.
void append::setIcon(const QString& icon)
{
    m_icon = icon;
    delete m_iconAction;
    m_iconAction = nullptr;
    const QIcon picture = applicationIcon(icon);
    if (!picture.isNull())
        m_iconAction = m_ui->nameEdit->addAction(picture, QLineEdit::LeadingPosition);
}

void append::fillPresets()
{
    m_ui->presetComboBox->addItem(tr("（请选择）"), -1);
    int number = 0;
    for (const Preset& preset : presets) {
        const QString program = QLatin1String(preset.program);
        if (program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty())
            m_ui->presetComboBox->addItem(tr(preset.name), number);
        ++number;
    }
}

void append::takePreset()
{
    const int number = m_ui->presetComboBox->currentData().toInt();
    if (number < 0)
        return;
    const Preset& preset = presets[number];
    fill({tr(preset.name),
          (QLatin1String(preset.program) + QLatin1Char(' ') + QLatin1String(preset.arguments)).trimmed()});
}

void append::import()
{
    DesktopEntryDialog dialog(QLatin1String(kMenuFolder), this);
    if (dialog.exec() == QDialog::Accepted)
        fill(dialog.application());
}

void append::browse()
{
    const QString current = m_ui->programEdit->text().trimmed();
    const QString start = QFileInfo(current).isAbsolute() ? current : QStringLiteral("/usr/bin");
    const QString program = QFileDialog::getOpenFileName(this, tr("选择程序"), start);
    if (program.isEmpty())
        return;
    m_ui->programEdit->setText(program);
    setIcon(QString());
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
    const QString problem = commandline::problem(program, arguments);
    if (!problem.isEmpty())
        return refuse(problem, m_ui->programEdit);
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
    entry.icon = m_icon;
    const QString program = m_ui->programEdit->text().trimmed();
    if (!program.isEmpty())
        entry.command =
            (commandline::quoted(program) + QLatin1Char(' ') + m_ui->argumentsEdit->text()).trimmed();
    return entry;
}
