// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/controloptions.h"

#include "forms/scanpagelogic.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>

namespace {

PageOptions::Turn turnOf(const ScanPageLogic& logic, ScanPageLogic::Side side, const QLabel* label)
{
    return {label->isEnabledTo(label->parentWidget()), ScanPageLogic::clockwiseDegrees(logic.rotation(side))};
}

} // namespace

PageOptions optionsFromControls(const ScanPageLogic& logic)
{
    const ScanPageControls& c = logic.controls();
    PageOptions options;
    options.gamma = c.gamma->value() / 100.0;
    options.brightness = c.lightness->value();
    options.contrast = c.contrast->value();
    options.autoCrop = logic.isOn(c.autoCut);
    options.deleteBlank = logic.isOn(c.delBlank);
    options.filter = c.filter->currentIndex();
    options.frontTurn = turnOf(logic, ScanPageLogic::Side::Front, c.frontRotation);
    options.backTurn = turnOf(logic, ScanPageLogic::Side::Back, c.backRotation);
    options.autoDense = logic.isOn(c.autoCrowed);
    options.deskew = logic.isOn(c.autoRight);
    options.deleteBackground = logic.isOn(c.delBackground);
    options.characterEnhance = logic.isOn(c.characEnhance);
    options.redFile = logic.isOn(c.redFile);

    options.dpi = logic.fieldDpi();
    options.scanDpi = logic.isFinerThan400() ? 600 : logic.scanResolution();
    options.customResolution = logic.isResolutionCustom();
    options.scannedFinerThan400 = logic.isFinerThan400();
    options.paper.on = logic.isPaperCustom();

    options.merge = logic.isOn(c.combine) && !(c.mergeByHand && logic.isOn(c.mergeByHand));
    options.split = c.split && logic.isOn(c.split) && c.split->isCheckable();
    options.horizontal = logic.isOn(c.horizontal);
    options.border.on = logic.isOn(c.imgMend);
    options.colorMode = static_cast<ColorMode>(logic.colorMode());
    options.saveType = QString::fromLatin1(saveTypeWord(logic.fileFormat()));
    options.startApplication = logic.isOn(c.appStart);
    options.extraCopies = logic.isOn(c.outMutiImg);
    return options;
}
