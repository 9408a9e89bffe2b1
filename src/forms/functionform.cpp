// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/functionform.h"

#include "config/installroot.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/dialogparts.h"
#include "forms/functiondialogs.h"
#include "forms/functionsettings.h"
#include "forms/scanpagelogic.h"
#include "ui_functionform.h"

#include <QDir>
#include <QGridLayout>
#include <QLineEdit>

FunctionForm::FunctionForm(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::FunctionForm>())
{
    m_ui->setupUi(this);
    m_ui->applicationComboBox->lineEdit()->setAccessibleName(m_ui->applicationComboBox->accessibleName());
    m_ui->outMutiImgCheckBox->hide(); // stored, but a document has no further copies
}

FunctionForm::~FunctionForm() = default;

ScanPageControls FunctionForm::controls() const
{
    ScanPageControls c;
    c.source = m_ui->scanTypeComboBox;
    c.paperSize = m_ui->papersizeComboBox;
    c.front = m_ui->frontRadioBtn;
    c.back = m_ui->backRadioBtn;
    c.duplex = m_ui->doubleRadioBtn;
    c.colorMode = m_ui->scanTypeComboBox_2;
    c.resolution = m_ui->resolutionComboBox;
    c.resolutionText = m_ui->resolutionLineEdit;
    c.lightness = m_ui->lightnessSlider;
    c.contrast = m_ui->contrastSlider;
    c.gamma = m_ui->gammaSlider;
    c.lightnessValue = m_ui->lightnessValueLabel;
    c.contrastValue = m_ui->contrastValueLabel;
    c.gammaValue = m_ui->gammaValueLabel;
    c.threshold = m_ui->thresholdComboBox;
    c.colorFilter = m_ui->colorFilterComboBox;
    c.deScreen = m_ui->deScreenComboBox;
    c.filter = m_ui->filterComboBox;
    c.noise = m_ui->noiseComboBox;
    c.contiScan = m_ui->contiScanCheckBox;
    c.colorMatch = m_ui->colorMatchCheckBox;
    c.autoCrowed = m_ui->autoCrowedCheckBox;
    c.autoCut = m_ui->autocutCheckBox;
    c.autoRight = m_ui->autoRightCheckBox;
    c.delBlank = m_ui->delBlankCheckBox;
    c.imgMend = m_ui->imgMendCheckBox;
    c.outMutiImg = m_ui->outMutiImgCheckBox;
    c.fillHole = m_ui->fillHoleCheckBox;
    c.delBackground = m_ui->delBackgroundCheckBox;
    c.delColor = m_ui->delColorCheckBox;
    c.characEnhance = m_ui->characEnhanceCheckBox;
    c.redFile = m_ui->redfileCheckBox;
    c.combine = m_ui->combineCheckBox;
    c.handAdjust = m_ui->manualRotateCheckBox;
    c.mergeByHand = m_ui->handAdjustCheckBox;
    c.horizontal = m_ui->horizontalRadioButton;
    c.vertical = m_ui->verticalRadioButton;
    c.frontRotation = m_ui->frontRotationLabel;
    c.backRotation = m_ui->backRotationLabel;
    c.fileType = m_ui->fileTypeComboBox;
    c.appStart = m_ui->specifiedAppCheckBox;
    c.application = m_ui->specifiedAppComboBox;
    return c;
}

void FunctionForm::addToPages(QWidget* widget)
{
    m_ui->pageExtraLayout->addWidget(widget);
    setTabOrder(m_ui->verticalRadioButton, widget);
}

void FunctionForm::setSourceLabel(const QString& text)
{
    m_ui->sourceLabel->setText(text);
}

void FunctionForm::showInsteadOfFormats(QComboBox* list, const QString& label)
{
    m_ui->fileTypeLabel->setText(label);
    m_ui->fileTypeLabel->setBuddy(list);
    m_ui->fileTypeComboBox->hide();
    m_ui->outputGrid->addWidget(list, 0, 1);
    setTabOrder(m_ui->fileTypeComboBox, list);
    setTabOrder(list, m_ui->savePushButton);
}

void FunctionForm::setUp(const ScanPageControls& controls, const FunctionGroups& groups)
{
    auto* logic = new ScanPageLogic(controls, this);
    m_function = std::make_unique<FunctionControls>(logic, groups);
    m_settings = std::make_unique<FunctionSettings>(*logic);
    logic->followControls();
    connect(m_ui->revolvesetPushButton, &QPushButton::clicked, this,
            [this] { editRotation(*m_function, this); });
    connect(m_ui->savePushButton, &QPushButton::clicked, this, [this] {
        if (!editSaveRules(*m_function, this))
            return;
        showFolder();
        m_function->readApplicationList();
        m_function->showApplications(m_function->controls.application->currentIndex());
    });
    connect(m_ui->setPushButton, &QPushButton::clicked, this, [this] { editBorder(this); });
    connect(m_ui->morePushButton, &QPushButton::clicked, this,
            [this] { showMoreSettings(*m_function, m_ui->morePushButton); });
    connect(m_ui->papersizeComboBox, QOverload<int>::of(&QComboBox::activated), this, [this] {
        if (m_function->logic->isPaperCustom())
            editPaperSize(*m_function, this);
    });
    connect(m_ui->browsePushButton, &QPushButton::clicked, this, &FunctionForm::browse);
    connect(m_ui->applicationComboBox, &QComboBox::editTextChanged, this, &FunctionForm::folderChanged);
}

void FunctionForm::showExtraCopies()
{
    auto* grid = qobject_cast<QGridLayout*>(m_ui->correctionGroupBox->layout());
    const int place = grid ? grid->indexOf(m_ui->previewPushButton) : -1;
    m_ui->outMutiImgCheckBox->show();
    if (place < 0)
        return;
    int row = 0, column = 0, rows = 0, columns = 0;
    grid->getItemPosition(place, &row, &column, &rows, &columns);
    m_ui->previewPushButton->hide(); // the window's own button shows a preview
    grid->removeWidget(m_ui->outMutiImgCheckBox);
    grid->addWidget(m_ui->outMutiImgCheckBox, row, column, rows, columns);
}

QPushButton* FunctionForm::previewButton() const
{
    return m_ui->previewPushButton;
}

QString FunctionForm::folder() const
{
    const QString text = m_ui->applicationComboBox->currentText().trimmed();
    return text.isEmpty() ? defaultSaveFolder() : QDir::cleanPath(text);
}

void FunctionForm::showFolder()
{
    QStringList folders{m_function->saveFolder(), defaultSaveFolder()};
    folders.removeAll(QString());
    folders.removeDuplicates();
    m_ui->applicationComboBox->clear();
    m_ui->applicationComboBox->addItems(folders);
    m_ui->applicationComboBox->setCurrentIndex(0);
}

void FunctionForm::browse()
{
    const QString chosen = dialogparts::chooseFolder(this, folder());
    if (!chosen.isEmpty())
        setFolder(chosen);
}

void FunctionForm::setFolder(const QString& folder)
{
    m_ui->applicationComboBox->setEditText(folder);
}

void FunctionForm::readStored()
{
    m_function->readApplicationList();
    m_function->showApplications(0);
    const auto file = openMainSettings();
    const GroupScope scope(*file, m_function->groups.scan);
    m_settings->read(*file);
    showFolder();
}

bool FunctionForm::writeStored()
{
    const auto pathFile = openPathSettings();
    pathFile->setValue(m_function->groups.path + QLatin1Char('/') + QLatin1String(keys::savepath), folder());
    const auto file = openMainSettings();
    {
        const GroupScope scope(*file, m_function->groups.scan);
        m_settings->write(*file);
    }
    const bool saved = saveSettings(*pathFile);
    return saveSettings(*file) && saved;
}

void FunctionForm::setDefaults()
{
    m_settings->setDefaults(m_function->groups.scan);
    setFolder(defaultSaveFolder());
}

bool FunctionForm::matches(QSettings& main, const QSettings& path) const
{
    const QString stored =
        path.value(m_function->groups.path + QLatin1Char('/') + QLatin1String(keys::savepath)).toString();
    if (!m_function->applicationsMatch(main) || (!stored.isEmpty() && QDir::cleanPath(stored) != folder()))
        return false;
    const GroupScope scope(main, m_function->groups.scan);
    return m_settings->matches(main);
}

void FunctionForm::beginPreview()
{
    const ScanPageControls& c = m_function->controls;
    m_beforePreview.clear();
    for (QAbstractButton* button : {static_cast<QAbstractButton*>(c.combine), c.splitFile}) {
        if (!button)
            continue;
        m_beforePreview.emplace_back(button, button->isChecked());
        button->setChecked(false);
    }
    m_ui->horizontalRadioButton->setEnabled(false);
    m_ui->verticalRadioButton->setEnabled(false);
}

void FunctionForm::endPreview()
{
    for (const auto& [button, checked] : m_beforePreview)
        button->setChecked(checked); // the directions follow the box for merging
    m_beforePreview.clear();
}
