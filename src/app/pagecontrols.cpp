// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/pagecontrols.h"

#include "ui_widget.h"

ScanPageControls scanPageControls(const Ui::Widget& ui)
{
    ScanPageControls c;
    c.source = ui.scanTypeComboBox_10;
    c.paperSize = ui.papersizeComboBox_5;
    c.front = ui.frontRadioButton_5;
    c.back = ui.backRadioButton_5;
    c.duplex = ui.doubleRadioButton_5;
    c.colorMode = ui.scanTypeComboBox_9;
    c.resolution = ui.resolutionComboBox_5;
    c.resolutionText = ui.resolutionLineEdit_5;
    c.lightness = ui.lightnessSlider_5;
    c.contrast = ui.contrastSlider_5;
    c.gamma = ui.gammaSlider_5;
    c.lightnessValue = ui.lightnessValueLabel_5;
    c.contrastValue = ui.contrastValueLabel_5;
    c.gammaValue = ui.gammaValueLabel_5;
    c.threshold = ui.thresholdComboBox_5;
    c.colorFilter = ui.colorFilterComboBox_5;
    c.deScreen = ui.deScreenComboBox_5;
    c.filter = ui.filterComboBox_5;
    c.contiScan = ui.contiScanCheckBox_5;
    c.colorMatch = ui.colorMatchCheckBox_5;
    c.autoCrowed = ui.autoCrowedCheckBox_5;
    c.autoCut = ui.autocutCheckBox_5;
    c.autoRight = ui.autoRightCheckBox_5;
    c.delBlank = ui.delBlankCheckBox_5;
    c.imgMend = ui.imgMendCheckBox_5;
    c.outMutiImg = ui.outMutiImgCheckBox_5;
    c.fillHole = ui.fillHoleCheckBox_5;
    c.delBackground = ui.delBackgroundCheckBox_5;
    c.delColor = ui.delColorCheckBox_5;
    c.characEnhance = ui.characEnhanceCheckBox_5;
    c.redFile = ui.redfileCheckBox_5;
    c.combine = ui.combineCheckBox_5;
    c.split = ui.splitCheckBox_5;
    c.handAdjust = ui.handAdjustCheckBox_5;
    c.horizontal = ui.horizontalRadioButton_5;
    c.vertical = ui.verticalRadioButton_5;
    c.frontRotation = ui.frontRotationLabel_5;
    c.backRotation = ui.backRotationLabel_5;
    c.fileType = ui.fileTypeComboBox_5;
    c.colorFormat = ui.colorFormatComboBox_5;
    c.greyFormat = ui.greyFormatComboBox_5;
    c.bwFormat = ui.bwFormatComboBox_5;
    c.appStart = ui.appStartCheckBox_5;
    c.application = ui.applicationComboBox_5;
    c.appendApp = ui.appendPushButton_2;
    c.editApp = ui.editPushButton_5;
    c.deleteApp = ui.deletePushButton_5;
    return c;
}

ScanPageControls filePageControls(const Ui::Widget& ui)
{
    ScanPageControls c;
    c.source = ui.scanTypeComboBox;
    c.paperSize = ui.papersizeComboBox;
    c.front = ui.frontRadioBtn;
    c.back = ui.backRadioBtn;
    c.duplex = ui.doubleRadioBtn;
    c.colorMode = ui.scanTypeComboBox_2;
    c.resolution = ui.resolutionComboBox;
    c.resolutionText = ui.resolutionLineEdit;
    c.lightness = ui.lightnessSlider;
    c.contrast = ui.contrastSlider;
    c.gamma = ui.gammaSlider;
    c.lightnessValue = ui.lightnessValueLabel;
    c.contrastValue = ui.contrastValueLabel;
    c.gammaValue = ui.gammaValueLabel;
    c.threshold = ui.thresholdComboBox;
    c.colorFilter = ui.colorFilterComboBox;
    c.deScreen = ui.deScreenComboBox;
    c.filter = ui.filterComboBox;
    c.contiScan = ui.contiScanCheckBox;
    c.colorMatch = ui.colorMatchCheckBox;
    c.autoCrowed = ui.autoCrowedCheckBox;
    c.autoCut = ui.autocutCheckBox;
    c.autoRight = ui.autoRightCheckBox;
    c.delBlank = ui.delBlankCheckBox;
    c.imgMend = ui.imgMendCheckBox;
    c.outMutiImg = ui.outMutiImgCheckBox;
    c.fillHole = ui.fillHoleCheckBox;
    c.delBackground = ui.delBackgroundCheckBox;
    c.delColor = ui.delColorCheckBox;
    c.characEnhance = ui.characEnhanceCheckBox;
    c.redFile = ui.redfileCheckBox;
    c.combine = ui.combineCheckBox;
    c.split = ui.splitCheckBox;
    c.handAdjust = ui.handAdjustCheckBox;
    c.horizontal = ui.horizontalRadioButton;
    c.vertical = ui.verticalRadioButton;
    c.frontRotation = ui.frontRotationLabel;
    c.backRotation = ui.backRotationLabel;
    c.fileType = ui.fileTypeComboBox;
    c.colorFormat = ui.colorFormatComboBox;
    c.greyFormat = ui.greyFormatComboBox;
    c.bwFormat = ui.bwFormatComboBox;
    c.appStart = ui.appStartCheckBox;
    c.application = ui.applicationComboBox;
    c.appendApp = ui.appendPushButton;
    c.editApp = ui.editPushButton;
    c.deleteApp = ui.deletePushButton;
    return c;
}
