// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/pdfpanel.h"

#include "config/progresswords.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/commonbindings.h"
#include "forms/functioncontrols.h"
#include "forms/functionform.h"
#include "forms/functionhost.h"
#include "forms/functionsettings.h"
#include "forms/scanpagelogic.h"
#include "imaging/backgroundrun.h"
#include "output/naming.h"
#include "pdf/documentjob.h"
#include "pdf/documentplan.h"
#include "pdf/pagereader.h"
#include "ui_pdfpanel.h"

#include <QComboBox>
#include <QDebug>
#include <QLineEdit>
#include <QPushButton>

pdfpanel::pdfpanel(const QString& page, FunctionHost& host, QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::pdfpanel>()), m_host(host)
{
    ui->setupUi(this);
    ui->form->addToPages(ui->handcombineCheckBox);
    bindControls(page);
    m_batch = std::make_unique<FunctionBatch>(*ui->form, m_host, batchSteps());
    ui->form->readStored();
}

pdfpanel::~pdfpanel() = default;

void pdfpanel::bindControls(const QString& page)
{
    ScanPageControls c = ui->form->controls();
    c.colorFormat = ui->colorComboBox;
    c.greyFormat = ui->grayComboBox;
    c.bwFormat = ui->wbComboBox;
    c.splitFile = ui->handcombineCheckBox;
    const QStringList formats{QStringLiteral("OFD"), QStringLiteral("PDF"), tr("可搜索PDF"), tr("可搜索OFD")};
    for (QComboBox* combo : {c.fileType, c.colorFormat, c.greyFormat, c.bwFormat}) {
        combo->addItems(formats);
        for (int i = 0; i < combo->count(); ++i) {
            if (isSearchable(i))
                combo->setItemData(i, tr("仅含文字，不含页面图像"), Qt::ToolTipRole);
        }
        combo->setVisible(combo == c.fileType); // it shows the list of the colour mode
    }
    ui->form->setUp(c, panelGroups(page, QStringLiteral("PDF")));
    SettingBinding& binding = ui->form->settings().binding();
    binding.bind(keys::splitState, {}, [c] { return isUsable(c.splitFile); });
    binding.bind(keys::combineState, {}, [c] { return isUsable(c.combine); });
    binding.bind(keys::autoCutState, {}, [c] { return isUsable(c.autoCut); });
    binding.bind(keys::resolutinState, {}, [c] { return isUsable(c.resolutionText); });
}

FunctionControls& pdfpanel::functionControls()
{
    return ui->form->function();
}

const FunctionControls& pdfpanel::functionControls() const
{
    return ui->form->function();
}

// --- settings --------------------------------------------------------------------------------------------

void pdfpanel::readIni(QSettings* settings)
{
    ui->form->settings().read(*settings);
}

void pdfpanel::writeIni(QSettings* settings) const
{
    ui->form->settings().write(*settings);
}

void pdfpanel::scanReadIni()
{
    ui->form->readStored();
}

bool pdfpanel::scanWriteIni()
{
    return ui->form->writeStored();
}

void pdfpanel::fileReadIni()
{
    ui->form->readStored();
}

bool pdfpanel::fileWriteIni()
{
    return ui->form->writeStored();
}

void pdfpanel::setDefaultValue()
{
    ui->form->setDefaults();
}

bool pdfpanel::matches(QSettings& main, const QSettings& path) const
{
    return ui->form->matches(main, path);
}

// --- start of a scan ---------------------------------------------------------------------------------------

void pdfpanel::scanButtonClicked()
{
    const bool preview = m_preview == 1;
    if (!m_host.beginJob(this, preview)) {
        jobEnded();
        return;
    }
    ui->form->previewButton()->setEnabled(false);
    m_batch->startScan(
        FunctionHost::Receiver::Pdf, [this] { scanImageConvertPDFslots(); }, preview);
}

void pdfpanel::previewButtonClicked()
{
    m_preview = 1;
    scanButtonClicked();
}

void pdfpanel::on_previewPushButton_clicked()
{
    if (!m_host.beginJob(this, true)) // stores the settings before the form changes
        return;
    m_previewRequested = true;
    ui->form->previewButton()->setEnabled(false);
    ui->form->beginPreview();
    m_preview = 1;
    emit sendPDFProcessMessg(progress::kPreview);
    previewButtonClicked();
}

void pdfpanel::jobEnded()
{
    m_preview = 0;
    if (m_previewRequested)
        ui->form->endPreview();
    m_previewRequested = false;
    setPreviewEnabled(true);
}

void pdfpanel::setPreviewEnabled(bool enabled)
{
    ui->form->previewButton()->setEnabled(enabled);
}

void pdfpanel::scannerOnLineFlagslots(int code)
{
    constexpr int kOffline = 4;
    if (code == kOffline)
        setPreviewEnabled(false);
}
