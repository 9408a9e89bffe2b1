// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/desktopnotifier.h"
#include "app/functions.h"
#include "app/templatepage.h"
#include "forms/functionhost.h"
#include "forms/noticeboard.h"
#include "imageconvert/imageconvertfunction.h"
#include "imaging/pagepipeline.h"

#include <QSystemTrayIcon>
#include <QWidget>
#include <memory>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

class QAction;
class QMenu;
class QSettings;
class FunctionalApp;
class Manual;
class TemplateArchive;
class TemplateMark;
class readBtn;
class scanThread;
class wholesetpanel;

namespace Ui {
class Widget;
}

// The main window: shell of all function panels and the function that scans to image files. It collects
// control states, calls the rooms that do the work and shows the results. GUI thread.
class Widget : public QWidget, private FunctionHost
{
    Q_OBJECT
public:
    // Takes the watcher of the scanner's keys over and starts it. `trayWaitMs`: how long a session that is
    // just starting may take to bring its tray up.
    explicit Widget(std::unique_ptr<readBtn> keys, int trayWaitMs = 4000, QWidget* parent = nullptr);
    ~Widget() override;

    // Settings
    void initializeIni();
    void setDefaultValue();
    void scanWriteIni();
    void scanReadIni();
    void applySettings();

    // Messages: 1 information, 2 warning and show the window, 3 critical and show the window, 4 hide.
    void showMessageOnWindow(int kind, const QString& title, const QString& text);
    void triggerBubbleOn(int kind, const QString& title, const QString& text);

    // Pages; the window must have a batch page (the selected one outside a batch).
    MagickWand* imageBasicProcess(MagickWand* image); // null: the page is dropped
    PageResult imageProcess(const char* pageFile);
    PageResult imageAppendProcess(const char* frontFile, const char* backFile);
    bool delBlankImage(MagickWand* image, QSettings& settings);
    MagickWand* scanImageColorModeTransform(MagickWand* image);
    MagickWand* widgetImageRGBtoWB(MagickWand* image);
    MagickWand* delWBNoise(MagickWand* image);
    MagickWand* setImageCompress(MagickWand* image, const QString& saveType, QSettings& settings);
    QString getImageName(); // call it once per file written
    const char* getSaveType() const;
    int getRealRotation(const std::string& path) const;
    int getRotation(const cv::Mat& image) const;
    std::vector<cv::Rect> getRowRects(const cv::Mat& image) const;
    std::vector<cv::Rect> getBlockRects(const cv::Mat& rowImage, int rowTop) const;

signals:
    void sendProcessMessg(const QString& text);

public slots:
    void updateTemplete(const QString& current);
    void currentTemplete(const QString& name);
    void newTemplate(const QString& name);
    bool closeTrigger(); // false: the user wants the batch to go on
    void scanImageConvertSlot();
    void scanProcressSlot(const QString& text);
    void setRotateState();
    void setAutoRotateState();
    void doubleRotateState();
    void cancelAutoRotateState();
    void buttonStateSlots(int code);
    void ScannerStateSlots();
    void showMessage();
    void ScannerStateCheck();
    void setIcon(int index);
    void iconActivated(QSystemTrayIcon::ActivationReason reason);
    void scanAddApp(const QString& text, const QString& command);
    void fileAddApp(const QString& text, const QString& command);

    // shell
    void on_templetBtncomboBox_currentIndexChanged(int index);
    void on_templetBtncomboBox_3_currentIndexChanged(int index);
    void on_filePushButton_clicked();
    void on_scanPushButton_clicked();
    void on_wholesetPushButton_clicked();
    void on_confirmPushButton_clicked();
    void on_applyPushButton_clicked();
    void on_cancelPushButton_clicked();
    void on_helpPushButton_clicked();
    void on_scanButton_clicked();
    void on_previewPushButton_5_clicked();
    void on_defaultvaluePushButton_5_clicked();
    void on_saveBtn_clicked();
    void on_delBtn_clicked();
    void on_loadBtn_clicked();

    // scan page
    void on_appendPushButton_2_clicked();
    void on_editPushButton_5_clicked();
    void on_deletePushButton_5_clicked();
    void on_savePushButton_5_clicked();
    void on_setPushButton_5_clicked();
    void on_morePushButton_5_clicked();
    void on_revolvesetPushButton_5_clicked();
    void on_lightnessSlider_5_valueChanged(int value);
    void on_contrastSlider_5_valueChanged(int value);
    void on_gammaSlider_5_valueChanged(int value);
    void on_scanTypeComboBox_10_currentIndexChanged(int index);
    void on_scanTypeComboBox_9_currentIndexChanged(int index);
    void on_resolutionComboBox_5_currentIndexChanged(int index);
    void on_resolutionLineEdit_5_textChanged(const QString& text);
    void on_papersizeComboBox_5_currentIndexChanged(int index);
    void on_papersizeComboBox_5_activated(int index);
    void on_fileTypeComboBox_5_currentIndexChanged(int index);
    void on_frontRadioButton_5_clicked();
    void on_backRadioButton_5_clicked();
    void on_doubleRadioButton_5_clicked();
    void on_splitCheckBox_5_clicked();
    void on_combineCheckBox_5_clicked();
    void on_redfileCheckBox_5_clicked();
    void on_autocutCheckBox_5_clicked();

    // file page
    void on_appendPushButton_clicked();
    void on_editPushButton_clicked();
    void on_deletePushButton_clicked();
    void on_savePushButton_clicked();
    void on_setPushButton_clicked();
    void on_morePushButton_clicked();
    void on_papersizeComboBox_activated(int index);
    void on_revolvesetPushButton_clicked();
    void on_lightnessSlider_valueChanged(int value);
    void on_contrastSlider_valueChanged(int value);
    void on_gammaSlider_valueChanged(int value);
    void on_scanTypeComboBox_currentIndexChanged(int index);
    void on_scanTypeComboBox_2_currentIndexChanged(int index);
    void on_resolutionComboBox_currentIndexChanged(int index);
    void on_fileTypeComboBox_currentIndexChanged(int index);
    void on_frontRadioBtn_clicked();
    void on_backRadioBtn_clicked();
    void on_doubleRadioBtn_clicked();
    void on_splitCheckBox_clicked();
    void on_combineCheckBox_clicked();
    void on_redfileCheckBox_clicked();
    void on_autocutCheckBox_clicked();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // construction (widget.cpp)
    void createPages();
    void createFunctionPanels(TemplatePage& page);
    void createActions();
    void createTrayIcon();
    void waitForTray(int milliseconds);
    void restoreShellState();
    void connectProgress();
    void createWholeSet();
    void createTemplateControls();
    void selectStartTemplate();
    void startWatcher();
    void selectPage(TemplatePage& page);
    void selectFunction(TemplatePage& page, int index);
    TemplatePage& selectedPage() const;
    TemplatePage& workPage() const; // the batch's page, else the selected one
    // The controls of the window's own scan function: the page's, or those of the panel that it scans for.
    FunctionControls& workControls() const;

    // templates (widget_templates.cpp)
    void askTemplateName(const QString& proposal, void (Widget::*then)(const QString&));
    void loadSelected();
    void importTemplate();
    Q_INVOKABLE void importTemplateFile(const QString& file);
    void storeImported(const QString& name);
    void exportTemplate();
    void restoreFactoryTemplate();
    bool refuseDuringJob();
    bool differsFromTemplate(const QString& name) const;

    // dialogs (widget_settings.cpp)
    void editApplication(TemplatePage& page, bool append);
    void deleteApplication(TemplatePage& page);
    void addApplication(TemplatePage& page, const QString& text, const QString& command);
    void tellHelpProblem(const QString& problem);

    // a batch (widget_scan.cpp)
    void startScan(TemplatePage& page, Function function);
    bool beginJob(TemplatePage& page, Function function);
    void startOwnScan();
    void connectOwnPageSlot();
    void dropReceivers();
    void rescueLeftovers();
    bool confirmPrefix(const QString& group);
    void scanThreadEnded();
    void processPageFiles();
    void takeResult(const PageResult& result, const QStringList& sources);
    void finishBatch();
    void showPreviews();
    void endJob();
    void cancelBatch();
    void showCancelling();
    void sendProgress(const QString& text);
    void showProgress(const QString& text);
    void setScanControls(bool enabled);
    void showTrayBalloon(const DesktopNotifier::Message& message);
    // Where the desktop has a notification service the message appears there, else at the tray icon.
    void showBalloon(const DesktopNotifier::Message& message);
    void notice(const QString& text); // status line and a balloon of its own
    void showStatus(const QString& text);
    void hideOrMinimise();
    PagePipeline pipeline();

    // what panels ask for (widget_host.cpp)
    bool beginJob(const QWidget* panel, bool preview) override;
    bool makeThread() override;
    void connectPageSlot(Receiver receiver, std::function<void()> slot) override;
    void startThread(const ScanParameters& parameters) override;
    bool isCancelled() const override;
    void dropCancel() override;
    void leavePages() override;
    ImageConvertFunction& library() override { return m_library; }
    NoticeBoard& notices() override { return m_notices; }
    void reportOutcome() override;
    void showPages(int done, int count) override;
    void renameSaved(const QString& group) override;
    void showSummary(const QString& summary) override;

    std::unique_ptr<Ui::Widget> ui;
    std::unique_ptr<TemplatePage> m_scanPage;
    std::unique_ptr<TemplatePage> m_filePage;
    TemplatePage* m_batchPage = nullptr;
    Function m_batchFunction = Function::Scan;
    const QWidget* m_startingPanel = nullptr; // the window has begun a job for it that is not scanning yet
    QMetaObject::Connection m_pageSlot;       // the one receiver of the scan thread's end
    ImageConvertFunction m_library;
    std::unique_ptr<readBtn> m_keys;
    std::unique_ptr<wholesetpanel> m_wholeSet;
    FunctionalApp* m_maintenance = nullptr; // belongs to m_wholeSet
    scanThread* m_thread = nullptr;
    NoticeBoard m_notices;
    bool m_jobRunning = false;
    bool m_preview = false;
    bool m_leftCancelledPages = false;
    QString m_template; // the template that applying refreshes
    TemplateMark* m_mark = nullptr;
    std::unique_ptr<TemplateArchive> m_imported; // waits for its name
    QAction* m_importAction = nullptr;
    QAction* m_exportAction = nullptr;
    QAction* m_factoryAction = nullptr;

    QSystemTrayIcon* m_tray = nullptr;
    DesktopNotifier* m_notifier = nullptr;
    QMenu* m_trayMenu = nullptr;
    QAction* m_minimizeAction = nullptr;
    QAction* m_showAction = nullptr;
    QAction* m_quitAction = nullptr;
    int m_lastKind = 0;
    QString m_lastTitle;
    QString m_lastText;
    int m_connected = 0;
    int m_onlineState = 0; // the code 4 or 5 that has been acted on; 0 none yet
    Manual* m_manual = nullptr;
};
