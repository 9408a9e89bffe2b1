// SPDX-License-Identifier: GPL-3.0-or-later
// The slots of the two pages' controls: the same rules under the controls' own names.
#include "app/widget.h"

#include "forms/functiondialogs.h"
#include "forms/scanpagelogic.h"
#include "ui_widget.h"

// Scan page

void Widget::on_appendPushButton_2_clicked()
{
    editApplication(*m_scanPage, true);
}

void Widget::on_editPushButton_5_clicked()
{
    editApplication(*m_scanPage, false);
}

void Widget::on_deletePushButton_5_clicked()
{
    deleteApplication(*m_scanPage);
}

void Widget::on_savePushButton_5_clicked()
{
    editSaveRules(*m_scanPage, this);
}

void Widget::on_revolvesetPushButton_5_clicked()
{
    editRotation(*m_scanPage, this);
}

void Widget::on_setPushButton_5_clicked()
{
    editBorder(this);
}

void Widget::on_morePushButton_5_clicked()
{
    showMoreSettings(*m_scanPage, ui->morePushButton_5);
}

void Widget::on_lightnessSlider_5_valueChanged(int)
{
    m_scanPage->logic->lightnessChanged();
}

void Widget::on_contrastSlider_5_valueChanged(int)
{
    m_scanPage->logic->contrastChanged();
}

void Widget::on_gammaSlider_5_valueChanged(int)
{
    m_scanPage->logic->gammaChanged();
}

void Widget::on_scanTypeComboBox_10_currentIndexChanged(int)
{
    m_scanPage->logic->sourceChanged();
}

void Widget::on_scanTypeComboBox_9_currentIndexChanged(int)
{
    m_scanPage->logic->colorModeChanged();
}

void Widget::on_resolutionComboBox_5_currentIndexChanged(int)
{
    m_scanPage->logic->resolutionChanged();
}

void Widget::on_fileTypeComboBox_5_currentIndexChanged(int)
{
    m_scanPage->logic->fileTypeChanged();
}

void Widget::on_resolutionLineEdit_5_textChanged(const QString&)
{
    m_scanPage->logic->resolutionTextChanged();
}

void Widget::on_papersizeComboBox_5_currentIndexChanged(int)
{
    m_scanPage->logic->paperSizeChanged();
}

void Widget::on_papersizeComboBox_5_activated(int)
{
    if (m_scanPage->logic->isPaperCustom())
        editPaperSize(*m_scanPage, this);
}

void Widget::on_frontRadioButton_5_clicked()
{
    m_scanPage->logic->frontClicked();
}

void Widget::on_backRadioButton_5_clicked()
{
    m_scanPage->logic->backClicked();
}

void Widget::on_doubleRadioButton_5_clicked()
{
    m_scanPage->logic->doubleClicked();
}

void Widget::on_splitCheckBox_5_clicked()
{
    m_scanPage->logic->splitClicked();
}

void Widget::on_combineCheckBox_5_clicked()
{
    m_scanPage->logic->combineClicked();
}

void Widget::on_redfileCheckBox_5_clicked()
{
    m_scanPage->logic->redFileClicked();
}

void Widget::on_autocutCheckBox_5_clicked()
{
    m_scanPage->logic->autoCutClicked();
}

// File page

void Widget::on_appendPushButton_clicked()
{
    editApplication(*m_filePage, true);
}

void Widget::on_editPushButton_clicked()
{
    editApplication(*m_filePage, false);
}

void Widget::on_deletePushButton_clicked()
{
    deleteApplication(*m_filePage);
}

void Widget::on_savePushButton_clicked()
{
    editSaveRules(*m_filePage, this);
}

void Widget::on_revolvesetPushButton_clicked()
{
    editRotation(*m_filePage, this);
}

void Widget::on_setPushButton_clicked()
{
    editBorder(this);
}

void Widget::on_morePushButton_clicked()
{
    showMoreSettings(*m_filePage, ui->morePushButton);
}

void Widget::on_papersizeComboBox_activated(int)
{
    if (m_filePage->logic->isPaperCustom())
        editPaperSize(*m_filePage, this);
}

void Widget::on_lightnessSlider_valueChanged(int)
{
    m_filePage->logic->lightnessChanged();
}

void Widget::on_contrastSlider_valueChanged(int)
{
    m_filePage->logic->contrastChanged();
}

void Widget::on_gammaSlider_valueChanged(int)
{
    m_filePage->logic->gammaChanged();
}

void Widget::on_scanTypeComboBox_currentIndexChanged(int)
{
    m_filePage->logic->sourceChanged();
}

void Widget::on_scanTypeComboBox_2_currentIndexChanged(int)
{
    m_filePage->logic->colorModeChanged();
}

void Widget::on_resolutionComboBox_currentIndexChanged(int)
{
    m_filePage->logic->resolutionChanged();
}

void Widget::on_fileTypeComboBox_currentIndexChanged(int)
{
    m_filePage->logic->fileTypeChanged();
}

void Widget::on_frontRadioBtn_clicked()
{
    m_filePage->logic->frontClicked();
}

void Widget::on_backRadioBtn_clicked()
{
    m_filePage->logic->backClicked();
}

void Widget::on_doubleRadioBtn_clicked()
{
    m_filePage->logic->doubleClicked();
}

void Widget::on_splitCheckBox_clicked()
{
    m_filePage->logic->splitClicked();
}

void Widget::on_combineCheckBox_clicked()
{
    m_filePage->logic->combineClicked();
}

void Widget::on_redfileCheckBox_clicked()
{
    m_filePage->logic->redFileClicked();
}

void Widget::on_autocutCheckBox_clicked()
{
    m_filePage->logic->autoCutClicked();
}
