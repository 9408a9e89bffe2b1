// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/functiondialogs.h"

#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/compressset.h"
#include "forms/functioncontrols.h"
#include "forms/imgmendpanel.h"
#include "forms/noiseset.h"
#include "forms/outputset.h"
#include "forms/papersizeset.h"
#include "forms/rotateset.h"
#include "forms/saveset.h"
#include "forms/scanpagelogic.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QMenu>

namespace {

using Side = ScanPageLogic::Side;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(FunctionDialogs)
};

ScanSides scannedSides(const ScanPageLogic& logic)
{
    constexpr int kBack = 3;
    constexpr int kDuplex = 4;
    const int source = logic.sourceNumber();
    return source == kDuplex ? ScanSides::Both : source == kBack ? ScanSides::Back : ScanSides::Front;
}

// The fixed turns of single- and double-sided scans are remembered apart, for all functions of a page.
const char* turnKey(ScanSides sides)
{
    return sides == ScanSides::Both ? keys::doubleRotate : keys::singleRotate;
}

QString turnGroup(const FunctionControls& function, Side side)
{
    const bool scanPage = function.groups.scan.startsWith(QLatin1String("Scan"));
    if (side == Side::Front)
        return QLatin1String(scanPage ? groups::scanFrontRotate : groups::fileFrontRotate);
    return QLatin1String(scanPage ? groups::scanBackRotate : groups::fileBackRotate);
}

int rememberedTurn(const FunctionControls& function, Side side, ScanSides sides)
{
    const auto file = openMainSettings();
    const GroupScope scope(*file, turnGroup(function, side));
    return readInt(*file, turnKey(sides));
}

void rememberTurns(const FunctionControls& function, ScanSides sides, const RotationChoice& choice)
{
    const auto file = openMainSettings();
    const auto remember = [&](Side side, int turn) {
        const GroupScope scope(*file, turnGroup(function, side));
        file->setValue(QLatin1String(turnKey(sides)), turn);
    };
    if (sides != ScanSides::Back)
        remember(Side::Front, choice.front);
    if (sides != ScanSides::Front)
        remember(Side::Back, choice.back);
    saveSettings(*file); // logs a failure; the turns themselves stand on the page
}

// Functions that make documents do not show the box for further copies of an image.
bool savesImages(const FunctionControls& function)
{
    return !function.controls.outMutiImg->isHidden();
}

} // namespace

bool editRotation(FunctionControls& function, QWidget* parent)
{
    ScanPageLogic& logic = *function.logic;
    const ScanSides sides = scannedSides(logic);
    RotationChoice choice;
    choice.automatic = logic.isAutoRotate();
    const auto turn = [&](Side side) {
        return choice.automatic ? rememberedTurn(function, side, sides) : logic.rotation(side);
    };
    choice.front = turn(Side::Front);
    choice.back = turn(Side::Back);
    RotateSet dialog(choice, sides, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    choice = dialog.choice();
    rememberTurns(function, sides, choice);
    logic.setRotation(Side::Front, choice.front);
    logic.setRotation(Side::Back, choice.back);
    if (choice.automatic)
        logic.setAutoRotateState();
    else if (sides == ScanSides::Both)
        logic.doubleRotateState();
    else
        logic.setRotateState();
    return true;
}

bool editSaveRules(FunctionControls& function, QWidget* parent)
{
    saveSet dialog(function.groups.scan, function.groups.path, parent);
    return dialog.exec() == QDialog::Accepted;
}

bool editBorder(QWidget* parent)
{
    return imgmendpanel(parent).exec() == QDialog::Accepted;
}

bool editNoise(FunctionControls& function, QWidget* parent)
{
    const ScanPageControls& c = function.controls;
    NoiseSet::Modes modes;
    modes.threshold = c.threshold->currentIndex();
    if (c.noise)
        modes.noise = c.noise->currentIndex();
    NoiseSet dialog(function.groups.deNoise, modes, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    modes = dialog.modes();
    c.threshold->setCurrentIndex(modes.threshold);
    if (c.noise)
        c.noise->setCurrentIndex(modes.noise.value_or(0));
    return true;
}

bool editPaperSize(FunctionControls& function, QWidget* parent)
{
    return PaperSizeSet(function.groups.paperSize, parent).exec() == QDialog::Accepted;
}

bool editOutput(FunctionControls& function, QWidget* parent)
{
    const ScanPageControls& c = function.controls;
    OutputSet::Output output;
    output.images = savesImages(function);
    output.copies = c.outMutiImg->isChecked();
    if (output.images && c.colorFormat) {
        for (int i = 0; i < c.fileType->count(); ++i)
            output.formats << c.fileType->itemText(i);
        output.colorFormat = c.colorFormat->currentIndex();
        output.greyFormat = c.greyFormat->currentIndex();
        output.bwFormat = c.bwFormat->currentIndex();
    }
    OutputSet dialog(output, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    output = dialog.output();
    c.outMutiImg->setChecked(output.copies);
    if (output.formats.isEmpty())
        return true;
    c.colorFormat->setCurrentIndex(output.colorFormat);
    c.greyFormat->setCurrentIndex(output.greyFormat);
    c.bwFormat->setCurrentIndex(output.bwFormat);
    function.logic->colorModeChanged(); // shows the format of this colour mode
    return true;
}

bool editCompression(QWidget* parent)
{
    return CompressSet(parent).exec() == QDialog::Accepted;
}

void showMoreSettings(FunctionControls& function, QWidget* button)
{
    QWidget* window = button->window();
    QMenu menu(button);
    menu.setToolTipsVisible(true);
    const auto add = [&menu](const QString& label, const QString& tip) {
        QAction* action = menu.addAction(label);
        action->setToolTip(tip);
        return action;
    };
    const QAction* noise = add(Texts::tr("杂点与阈值(&N)..."), Texts::tr("黑白图像怎样产生"));
    const QAction* paper =
        add(Texts::tr("自定义纸张大小(&P)..."), Texts::tr("纸张大小选择“自定义”时裁切成多大"));
    const QAction* output =
        add(Texts::tr("输出图像(&O)..."), Texts::tr("文件类型、另存的图像、双面翻页方式"));
    const QAction* compression =
        savesImages(function) ? add(Texts::tr("文件压缩(&C)..."), Texts::tr("图像质量和文件大小")) : nullptr;
    const QAction* chosen = menu.exec(button->mapToGlobal(QPoint(0, button->height())));
    if (!chosen)
        return;
    if (chosen == noise)
        editNoise(function, window);
    else if (chosen == paper)
        editPaperSize(function, window);
    else if (chosen == output)
        editOutput(function, window);
    else if (chosen == compression)
        editCompression(window);
}
