// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/filenameset.h"

#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/append.h"
#include "forms/dialogparts.h"
#include "ui_filenameset.h"

#include <QTimer>

namespace {

// The application list that belongs to a function's group.
QString applicationGroup(const QString& group)
{
    if (group == QLatin1String(groups::scanPdf))
        return QLatin1String(groups::scanPdfApp);
    if (group == QLatin1String(groups::filePdf))
        return QLatin1String(groups::filePdfApp);
    const bool filePage = group.startsWith(QLatin1String("File_"));
    return QLatin1String(filePage ? groups::fileApp : groups::scanApp);
}

// The image functions' lists are edited beside the list on the page itself, which writes them.
bool ownsApplications(const QString& appGroup)
{
    return appGroup == QLatin1String(groups::scanPdfApp) || appGroup == QLatin1String(groups::filePdfApp);
}

} // namespace

fileNameSet::fileNameSet(const QString& group, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::fileNameSet>()), m_group(group),
      m_appGroup(applicationGroup(group))
{
    m_ui->setupUi(this);
    dialogparts::styleHelp(m_ui->helpLabel);
    dialogparts::styleHelp(m_ui->orderHintLabel);
    m_ui->orderHintLabel->setWordWrap(false);
    dialogparts::useChineseButtons(m_ui->buttonBox);
    m_fields = new NamingFields(
        {m_ui->nameEdit, m_ui->startEdit, m_ui->lengthSpinBox, m_ui->coverCheckBox, m_ui->nextNameLabel},
        this);
    m_ui->appendAppButton->setVisible(ownsApplications(m_appGroup));
    m_ui->delAppButton->setVisible(ownsApplications(m_appGroup));
    const std::pair<QWidget*, int> accessKeys[] = {{m_ui->dateAndtimeCheckBox, Qt::Key_T},
                                                   {m_ui->systemRadioButton, Qt::Key_Y},
                                                   {m_ui->usrRadioButton, Qt::Key_U},
                                                   {m_ui->separatorComboBox, Qt::Key_E},
                                                   {m_ui->timeTypeCheckBox, Qt::Key_H},
                                                   {m_ui->usrDefineCheckBox, Qt::Key_Z},
                                                   {m_ui->nameEdit, Qt::Key_P},
                                                   {m_ui->startEdit, Qt::Key_B},
                                                   {m_ui->lengthSpinBox, Qt::Key_L},
                                                   {m_ui->coverCheckBox, Qt::Key_R},
                                                   {m_ui->messgBoxCheckBox, Qt::Key_Q},
                                                   {m_ui->showConfirmBoxCheckBox, Qt::Key_A},
                                                   {m_ui->finishStarAppCheckBox, Qt::Key_F}};
    for (const auto& [control, key] : accessKeys)
        dialogparts::addAccessKey(control, Qt::ALT | key);

    m_apps = readApplications(*openMainSettings(), m_appGroup);
    setRules(offeredNamingRules(m_group));
    connectControls();

    auto* clock = new QTimer(this); // a stamp in the name moves on
    connect(clock, &QTimer::timeout, this, [this] { m_fields->showNextName(rules()); });
    clock->start(1000);
}

fileNameSet::~fileNameSet() = default;

void fileNameSet::connectControls()
{
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{
             m_ui->dateAndtimeCheckBox, m_ui->systemRadioButton, m_ui->timeTypeCheckBox,
             m_ui->usrDefineCheckBox, m_ui->finishStarAppCheckBox})
        connect(button, &QAbstractButton::toggled, this, &fileNameSet::showRules);
    QComboBox* const order[] = {m_ui->yearComboBox, m_ui->monthComboBox, m_ui->dateComboBox};
    for (int place = 0; place < 3; ++place)
        connect(order[place], QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                [this, place] { keepOrderDistinct(place); });
    connect(m_ui->separatorComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &fileNameSet::showRules);
    connect(m_fields, &NamingFields::edited, this, &fileNameSet::showRules);
    connect(m_ui->appendAppButton, &QPushButton::clicked, this, &fileNameSet::appendApp);
    connect(m_ui->delAppButton, &QPushButton::clicked, this, &fileNameSet::delApp);
    connect(m_ui->buttonBox->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            [this] { setRules(factoryNamingRules(m_group)); });
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &fileNameSet::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void fileNameSet::setRules(const NamingRules& rules)
{
    m_ui->dateAndtimeCheckBox->setChecked(rules.stamp);
    m_ui->systemRadioButton->setChecked(rules.systemStamp);
    m_ui->usrRadioButton->setChecked(!rules.systemStamp);
    QComboBox* const order[] = {m_ui->yearComboBox, m_ui->monthComboBox, m_ui->dateComboBox};
    for (int place = 0; place < 3; ++place) {
        const QSignalBlocker blocker(order[place]); // a stored order is shown as it is
        order[place]->setCurrentIndex(rules.order[place]);
        m_order[place] = order[place]->currentIndex();
    }
    m_ui->separatorComboBox->setCurrentIndex(rules.separator);
    m_ui->timeTypeCheckBox->setChecked(rules.hours24);
    m_ui->usrDefineCheckBox->setChecked(rules.userDefined);
    m_fields->show(rules);
    m_ui->messgBoxCheckBox->setChecked(rules.askBefore);
    m_ui->showConfirmBoxCheckBox->setChecked(rules.askAfter);
    m_ui->finishStarAppCheckBox->setChecked(rules.finishStartApp);
    showApplications();
    if (m_ui->appNameComboBox->findData(rules.appName) < 0)
        m_ui->appNameComboBox->addItem(rules.appName, rules.appName);
    m_ui->appNameComboBox->setCurrentIndex(m_ui->appNameComboBox->findData(rules.appName));
    showRules();
}

NamingRules fileNameSet::rules() const
{
    NamingRules rules;
    rules.stamp = m_ui->dateAndtimeCheckBox->isChecked();
    rules.systemStamp = m_ui->systemRadioButton->isChecked();
    rules.order[0] = m_ui->yearComboBox->currentIndex();
    rules.order[1] = m_ui->monthComboBox->currentIndex();
    rules.order[2] = m_ui->dateComboBox->currentIndex();
    rules.separator = m_ui->separatorComboBox->currentIndex();
    rules.hours24 = m_ui->timeTypeCheckBox->isChecked();
    rules.userDefined = m_ui->usrDefineCheckBox->isChecked();
    m_fields->take(rules);
    rules.askBefore = m_ui->messgBoxCheckBox->isChecked();
    rules.askAfter = m_ui->showConfirmBoxCheckBox->isChecked();
    rules.finishStartApp = m_ui->finishStarAppCheckBox->isChecked();
    rules.appName = m_ui->appNameComboBox->currentData().toString();
    return rules;
}

// What can be used under the present choice, and the name it gives.
void fileNameSet::showRules()
{
    const NamingRules now = rules();
    m_ui->systemRadioButton->setEnabled(now.stamp);
    m_ui->usrRadioButton->setEnabled(now.stamp);
    for (QWidget* control : std::initializer_list<QWidget*>{
             m_ui->yearComboBoxLabel, m_ui->yearComboBox, m_ui->monthComboBox, m_ui->dateComboBox,
             m_ui->orderHintLabel, m_ui->separatorComboBoxLabel, m_ui->separatorComboBox,
             m_ui->timeTypeCheckBox})
        control->setEnabled(now.stamp && !now.systemStamp);
    m_fields->setUsable(now.userDefined);
    m_ui->messgBoxCheckBox->setEnabled(now.userDefined);
    m_ui->showConfirmBoxCheckBox->setEnabled(now.userDefined);
    m_ui->appNameComboBox->setEnabled(now.finishStartApp);
    m_ui->appendAppButton->setEnabled(now.finishStartApp);
    m_ui->delAppButton->setEnabled(now.finishStartApp);
    dialogparts::showMessage(m_ui->messageLabel, QString());
    m_fields->showNextName(now);
}

// Choosing a field that stands elsewhere exchanges the two, so that no field is twice in the date.
void fileNameSet::keepOrderDistinct(int changed)
{
    QComboBox* const order[] = {m_ui->yearComboBox, m_ui->monthComboBox, m_ui->dateComboBox};
    const int chosen = order[changed]->currentIndex();
    for (int place = 0; place < 3; ++place) {
        if (place != changed && order[place]->currentIndex() == chosen) {
            const QSignalBlocker blocker(order[place]);
            order[place]->setCurrentIndex(m_order[changed]);
        }
    }
    for (int place = 0; place < 3; ++place)
        m_order[place] = order[place]->currentIndex();
    showRules();
}

void fileNameSet::showApplications()
{
    const QString current = m_ui->appNameComboBox->currentData().toString();
    m_ui->appNameComboBox->clear();
    m_ui->appNameComboBox->addItem(tr("系统默认程序"), QString());
    for (const AppEntry& app : m_apps)
        m_ui->appNameComboBox->addItem(app.text, app.text);
    m_ui->appNameComboBox->setCurrentIndex(qMax(0, m_ui->appNameComboBox->findData(current)));
}

void fileNameSet::appendApp()
{
    QStringList names;
    for (const AppEntry& app : m_apps)
        names << app.text;
    append dialog(AppEntry(), names, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_apps.push_back(dialog.entry());
    writeApps();
    m_ui->appNameComboBox->setCurrentIndex(m_ui->appNameComboBox->findData(dialog.entry().text));
}

void fileNameSet::delApp()
{
    const QString name = m_ui->appNameComboBox->currentData().toString();
    const auto found =
        std::find_if(m_apps.begin(), m_apps.end(), [&name](const AppEntry& app) { return app.text == name; });
    if (found == m_apps.end()) {
        dialogparts::showMessage(m_ui->messageLabel, tr("这一项不能删除。"));
        return;
    }
    m_apps.erase(found);
    countDeletedApplication();
    writeApps();
}

void fileNameSet::writeApps()
{
    const auto settings = openMainSettings();
    writeApplications(*settings, m_appGroup, m_apps);
    if (!saveSettings(*settings))
        dialogparts::showMessage(m_ui->messageLabel, dialogparts::cannotStore());
    showApplications();
}

void fileNameSet::accept()
{
    NamingRules chosen = rules();
    if (!m_fields->check(chosen.userDefined, m_ui->messageLabel))
        return;
    const auto settings = openMainSettings();
    {
        const GroupScope scope(*settings, m_group);
        storeNamingRules(*settings, chosen);
    }
    if (saveSettings(*settings))
        QDialog::accept();
    else
        dialogparts::showMessage(m_ui->messageLabel, dialogparts::cannotStore());
}
