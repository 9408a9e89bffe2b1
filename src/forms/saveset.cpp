// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/saveset.h"

#include "config/installroot.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/dialogparts.h"
#include "forms/filenameset.h"
#include "output/savefolder.h"
#include "ui_saveset.h"

#include <QDir>
#include <QFileInfo>
#include <QTimer>

namespace {

// The parts of a name as an item of the naming combo, which is also what "saveFile" holds: 0 the fixed name,
// 1 prefix and counter, 2 date and time, 3 both.
int namingMode(const NamingRules& rules)
{
    return (rules.userDefined ? 1 : 0) + (rules.stamp ? 2 : 0);
}

} // namespace

saveSet::saveSet(const QString& group, const QString& pathGroup, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::saveSet>()), m_group(group), m_pathGroup(pathGroup)
{
    m_ui->setupUi(this);
    dialogparts::styleHelp(m_ui->helpLabel);
    dialogparts::styleHelp(m_ui->folderLabel);
    m_ui->folderLabel->setTextFormat(Qt::PlainText);
    dialogparts::useChineseButtons(m_ui->buttonBox);
    m_fields = new NamingFields(
        {m_ui->nameEdit, m_ui->startEdit, m_ui->lengthSpinBox, m_ui->coverCheckBox, m_ui->nextNameLabel},
        this);
    dialogparts::addAccessKey(m_ui->coverCheckBox, Qt::ALT | Qt::Key_R);

    QString stored = storedSaveFolder(m_pathGroup);
    if (stored.trimmed().isEmpty())
        stored = defaultSaveFolder();
    m_ui->folderEdit->setText(QDir::toNativeSeparators(stored));
    setRules(offeredNamingRules(m_group));
    connectControls();
    showFolderState();

    auto* clock = new QTimer(this); // a stamp in the name moves on
    connect(clock, &QTimer::timeout, this, [this] { m_fields->showNextName(rules()); });
    clock->start(1000);
}

saveSet::~saveSet() = default;

void saveSet::connectControls()
{
    connect(m_ui->folderEdit, &QLineEdit::textChanged, this, &saveSet::showFolderState);
    connect(m_ui->browseButton, &QPushButton::clicked, this, &saveSet::browse);
    connect(m_ui->defaultButton, &QPushButton::clicked, this,
            [this] { m_ui->folderEdit->setText(defaultSaveFolder()); });
    connect(m_ui->saveFileComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &saveSet::showRules);
    connect(m_fields, &NamingFields::edited, this, &saveSet::showRules);
    connect(m_ui->fileNameButton, &QPushButton::clicked, this, &saveSet::openFileNameSet);
    connect(m_ui->buttonBox->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this, [this] {
        m_ui->folderEdit->setText(defaultSaveFolder());
        setRules(factoryNamingRules(m_group));
    });
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &saveSet::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QString saveSet::folder() const
{
    const QString typed = m_ui->folderEdit->text().trimmed();
    return typed.isEmpty() ? defaultSaveFolder() : QDir::cleanPath(typed);
}

void saveSet::setRules(const NamingRules& rules)
{
    m_rules = rules;
    m_ui->saveFileComboBox->setCurrentIndex(namingMode(rules));
    m_fields->show(rules);
    showRules();
}

NamingRules saveSet::rules() const
{
    NamingRules rules = m_rules;
    m_fields->take(rules);
    const int mode = m_ui->saveFileComboBox->currentIndex();
    rules.userDefined = mode == 1 || mode == 3;
    rules.stamp = mode >= 2;
    return rules;
}

void saveSet::showRules()
{
    const NamingRules now = rules();
    m_fields->setUsable(now.userDefined);
    m_fields->showNextName(now);
    dialogparts::showMessage(m_ui->messageLabel, QString());
}

// Says what will happen with the folder that is being typed; nothing is created yet.
void saveSet::showFolderState()
{
    const QFileInfo info(folder());
    QString state = tr("扫描的文件将保存在这里。");
    if (info.isRelative())
        state = tr("⚠ 请输入以“/”开头的完整路径。");
    else if (!info.exists())
        state = tr("此文件夹尚不存在，确定后将会新建。");
    else if (!info.isDir())
        state = tr("⚠ 这是一个文件，不是文件夹。");
    else if (!info.isWritable())
        state = tr("⚠ 没有写入此文件夹的权限。");
    m_ui->folderLabel->setText(state);
    dialogparts::showMessage(m_ui->messageLabel, QString());
}

void saveSet::browse()
{
    const QString chosen = dialogparts::chooseFolder(this, folder());
    if (!chosen.isEmpty())
        m_ui->folderEdit->setText(chosen);
}

void saveSet::openFileNameSet()
{
    fileNameSet dialog(m_group, this);
    dialog.setRules(rules());
    if (dialog.exec() == QDialog::Accepted)
        setRules(dialog.rules());
}

// A path that cannot name a folder is refused. A folder that cannot be written now (a network drive that is
// away) is warned about once.
bool saveSet::checkFolder()
{
    const QString wanted = folder();
    if (dialogparts::hasControlCharacters(wanted)) {
        dialogparts::refuse(m_ui->messageLabel, tr("文件夹名中不能有控制字符。"), m_ui->folderEdit);
        return false;
    }
    if (QFileInfo(wanted).isRelative() || (QFileInfo::exists(wanted) && !QFileInfo(wanted).isDir())) {
        dialogparts::refuse(m_ui->messageLabel, tr("请选择一个文件夹。"), m_ui->folderEdit);
        return false;
    }
    if (wanted == m_doubtfulFolder)
        return true;
    const SaveFolder prepared = prepareSaveFolder(wanted);
    if (prepared.good())
        return true;
    m_doubtfulFolder = wanted;
    dialogparts::refuse(m_ui->messageLabel, tr("%1。再次点“确定”仍使用它。").arg(prepared.problem),
                        m_ui->folderEdit);
    return false;
}

bool saveSet::store()
{
    const auto settings = openMainSettings();
    {
        const GroupScope scope(*settings, m_group);
        storeNamingRules(*settings, rules());
        settings->setValue(QLatin1String(keys::saveFile), m_ui->saveFileComboBox->currentIndex());
    }
    const auto paths = openPathSettings();
    {
        const GroupScope scope(*paths, m_pathGroup);
        paths->setValue(QLatin1String(keys::savepath), folder());
    }
    const bool mainStored = saveSettings(*settings);
    return saveSettings(*paths) && mainStored;
}

void saveSet::accept()
{
    if (!m_fields->check(rules().userDefined, m_ui->messageLabel) || !checkFolder())
        return;
    if (store())
        QDialog::accept();
    else
        dialogparts::showMessage(m_ui->messageLabel, dialogparts::cannotStore());
}
