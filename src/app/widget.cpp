// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widget.h"

#include "app/globals.h"
#include "app/manual.h"
#include "app/pagecontrols.h"
#include "app/templatemark.h"
#include "config/factory.h"
#include "config/folderrights.h"
#include "config/keys.h"
#include "config/paths.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "config/templatearchive.h"
#include "config/templates.h"
#include "device/cancelflag.h"
#include "device/functionalapp.h"
#include "device/readbtn.h"
#include "device/scanthread.h"
#include "device/stateinfopanel.h"
#include "forms/panels.h"
#include "forms/scanpagelogic.h"
#include "forms/scanpagesettings.h"
#include "forms/wholesetpanel.h"
#include "ocr/ocrpanel.h"
#include "pdf/pdfpanel.h"
#include "ui_widget.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDebug>
#include <QMessageBox>
#include <QScreen>

Widget::Widget(std::unique_ptr<readBtn> keys, int trayWaitMs, QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::Widget>()), m_keys(std::move(keys)),
      m_template(QLatin1String(defaultTemplate))
{
    paths::ensureFolders();
    initializeIni();
    ui->setupUi(this);
    createPages();
    ui->iconComboBox->hide();
    ui->typeComboBox->hide();
    ui->progressBar->hide();
    setFixedSize(sizeHint());
    move(QGuiApplication::primaryScreen()->availableGeometry().center() - rect().center());

    updateTemplete(QLatin1String(defaultTemplate));
    createActions();
    createTrayIcon();
    waitForTray(trayWaitMs);

    createFunctionPanels(*m_scanPage);
    createFunctionPanels(*m_filePage);
    ui->functionStack->layout()->invalidate(); // it does not notice what came to it
    ui->functionStack->updateGeometry();
    setFixedSize(sizeHint()); // the largest panel fits
    move(QGuiApplication::primaryScreen()->availableGeometry().center() - rect().center());
    createWholeSet();
    selectStartTemplate();
    restoreShellState();
    scanReadIni();
    m_wholeSet->readIni();
    createTemplateControls();
    m_manual = new Manual(this);
    connect(m_manual, &Manual::refused, this, &Widget::tellHelpProblem);
    m_mark->look();

    scan = 0;
    imageConnection = 0;
    pdfConnection = 0;
    ocrConnection = 0;
    connectProgress();
    startWatcher();
    showMessageOnWindow(1, tr("状态监视器启动"), tr("状态监视器启动成功！"));
    if (const QString problem = folderRightsProblem(); !problem.isEmpty())
        notice(problem);
}

Widget::~Widget()
{
    if (m_thread) {
        cancelflag::set();
        m_thread->wait();
    }
}

void Widget::createPages()
{
    const ScanPageControls scanControls = scanPageControls(*ui);
    const ScanPageControls fileControls = filePageControls(*ui);
    m_scanPage =
        std::make_unique<TemplatePage>(QStringLiteral("Scan"), new ScanPageLogic(scanControls, this));
    m_filePage =
        std::make_unique<TemplatePage>(QStringLiteral("File"), new ScanPageLogic(fileControls, this));
    m_scanPage->functionCombo = ui->templetBtncomboBox_3;
    m_scanPage->describeLabel = ui->scanDescribeLabel;
    m_scanPage->body = ui->scanPage;
    m_filePage->functionCombo = ui->templetBtncomboBox;
    m_filePage->describeLabel = ui->fileDescribeLabel;
    m_filePage->body = ui->filePage;

    const auto fill = [](QComboBox* combo, const QVector<Function>& functions) {
        const QSignalBlocker quiet(combo);
        combo->clear();
        for (const Function function : functions)
            combo->addItem(functionName(function), static_cast<int>(function));
    };
    fill(ui->templetBtncomboBox_3, scanPageFunctions());
    fill(ui->templetBtncomboBox, filePageFunctions());
}

void Widget::createFunctionPanels(TemplatePage& page)
{
    const QString group = page.isScanPage ? QStringLiteral("Scan") : QStringLiteral("File");
    page.copy = new copyPanel(group, this);
    page.email = new EmailPanel(group, this);
    page.file = new filepanel(group, this);
    page.ocr = new ocrpanel(group, *this, this);
    page.pdf = new pdfpanel(group, *this, this);
    page.ftp = new ftppanel(group, this);
    const std::initializer_list<QWidget*> panels{page.copy, page.email, page.file,
                                                 page.ocr,  page.pdf,   page.ftp};
    for (QWidget* panel : panels) {
        panel->hide();
        ui->functionStack->addWidget(panel);
    }
}

void Widget::createWholeSet()
{
    m_wholeSet = std::make_unique<wholesetpanel>();
    m_maintenance = new FunctionalApp;
    m_wholeSet->addMaintenancePage(m_maintenance);
    m_wholeSet->readIni();
    connect(m_wholeSet.get(), &wholesetpanel::getAndSetFunctionalSignals, m_keys.get(),
            &readBtn::getAndSetFunctionSlot);
}

void Widget::restoreShellState()
{
    const auto file = openMainSettings();
    const auto select = [](QComboBox* combo, int index) {
        const QSignalBlocker quiet(combo);
        combo->setCurrentIndex(qBound(0, index, combo->count() - 1));
    };
    select(ui->templetBtncomboBox_3, readInt(*file, keys::ScanModel));
    select(ui->templetBtncomboBox, readInt(*file, keys::FileModel));
    ui->scanDescribeLabel->setText(readText(*file, keys::scanDescirbe));
    ui->fileDescribeLabel->setText(readText(*file, keys::fileDescirbe));
    selectPage(readInt(*file, keys::modeBtn) != 0 ? *m_filePage : *m_scanPage);
}

void Widget::connectProgress()
{
    connect(m_keys.get(), &readBtn::buttonStateSignal, this, &Widget::buttonStateSlots);
    connect(this, &Widget::sendProcessMessg, m_keys.get(), &readBtn::dialogShowSlot);
    connect(this, &Widget::sendProcessMessg, this, &Widget::showProgress);
    for (TemplatePage* page : {m_scanPage.get(), m_filePage.get()}) {
        connect(m_keys.get(), &readBtn::buttonStateSignal, page->pdf, &pdfpanel::scannerOnLineFlagslots);
        connect(page->pdf, &pdfpanel::sendPDFProcessMessg, m_keys.get(), &readBtn::dialogShowSlot);
        connect(page->ocr, &ocrpanel::sendOCRProcessMessg, m_keys.get(), &readBtn::dialogShowSlot);
        connect(page->pdf, &pdfpanel::sendPDFProcessMessg, this, &Widget::showProgress);
        connect(page->pdf, &pdfpanel::sendPDFProcessMessg, this, &Widget::scanProcressSlot);
        connect(page->ocr, &ocrpanel::sendOCRProcessMessg, this, &Widget::showProgress);
        connect(page->ocr, &ocrpanel::sendOCRProcessMessg, this, &Widget::scanProcressSlot);
    }
}

void Widget::startWatcher()
{
    connect(m_keys.get(), &readBtn::accessDeniedSignal, this, [this](bool denied) {
        if (denied)
            notice(tr("没有访问扫描仪的权限"));
    });
    connect(m_keys->panel(), &stateInfoPanel::cancelRequested, this, &Widget::showCancelling);
    m_keys->start(QThread::InheritPriority);
}

TemplatePage& Widget::selectedPage() const
{
    return ui->filePushButton->isChecked() ? *m_filePage : *m_scanPage;
}

TemplatePage& Widget::workPage() const
{
    return m_batchPage ? *m_batchPage : selectedPage();
}

FunctionControls& Widget::workControls() const
{
    TemplatePage& page = workPage();
    FolderPanel* panel = page.folderPanel(m_batchPage ? m_batchFunction : page.function());
    return panel ? panel->functionControls() : page;
}

// Shows one page's function controls and hides the other's.
void Widget::selectPage(TemplatePage& page)
{
    const bool scanPage = page.isScanPage;
    ScanorFile = scanPage ? 0 : 1;
    m_wholeSet->changeScanTypeState(scanPage ? 2 : 0);
    ui->scanPushButton->setChecked(scanPage);
    ui->filePushButton->setChecked(!scanPage);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{ui->functionLabel, ui->templetBtncomboBox_3, ui->scanDescribeLabel})
        widget->setVisible(scanPage);
    for (QWidget* widget : std::initializer_list<QWidget*>{ui->fileFunctionLabel, ui->templetBtncomboBox,
                                                           ui->fileDescribeLabel})
        widget->setVisible(!scanPage);
    constexpr int kHintFunctionIndex = 4;
    ui->functionHintLabel->setVisible(scanPage && page.functionCombo->currentIndex() == kHintFunctionIndex);
    selectFunction(page, page.functionCombo->currentIndex());
}

void Widget::selectFunction(TemplatePage& page, int index)
{
    if (index < 0 || !page.body)
        return;
    const Function function = page.function();
    page.describeLabel->setText(functionDescription(function, page.isScanPage));
    page.describeLabel->setToolTip(page.describeLabel->text());
    if (page.isScanPage)
        currentMode = function == Function::Ocr ? QStringLiteral("OCR") : QStringLiteral("Scan");
    if (&page == &selectedPage() && page.panelFor(function))
        ui->functionStack->setCurrentWidget(page.panelFor(function));
}

void Widget::on_templetBtncomboBox_currentIndexChanged(int index)
{
    selectFunction(*m_filePage, index);
}

void Widget::on_templetBtncomboBox_3_currentIndexChanged(int index)
{
    selectFunction(*m_scanPage, index);
}

void Widget::on_filePushButton_clicked()
{
    selectPage(*m_filePage);
}

void Widget::on_scanPushButton_clicked()
{
    selectPage(*m_scanPage);
}

bool Widget::closeTrigger()
{
    if (!m_jobRunning)
        return true;
    QMessageBox box(QMessageBox::Question, tr("提示"), tr("扫描任务正在进行，确定要取消任务并退出吗？"),
                    QMessageBox::Yes | QMessageBox::No, this);
    box.setDefaultButton(QMessageBox::No);
    if (box.exec() != QMessageBox::Yes)
        return false;
    cancelflag::set();
    return true;
}

void Widget::closeEvent(QCloseEvent* event)
{
    if (!closeTrigger()) {
        event->ignore();
        return;
    }
    event->accept();
    QCoreApplication::quit();
}
