// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/commonbindings.h"

#include "config/settingtable.h"
#include "forms/scanpagelogic.h"
#include "forms/settingbinding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QSettings>
#include <QSlider>

bool isUsable(const QWidget* control)
{
    return !control->testAttribute(Qt::WA_ForceDisabled);
}

void bindSource(SettingBinding& binding, const ScanPageControls& c)
{
    binding.bind(keys::scanType, c.source);
    binding.bind(keys::combine, c.combine);
    // Of two exclusive radio buttons one is always checked.
    binding.bind(
        keys::hRBtn,
        [c](const QSettings& settings) {
            (readBool(settings, keys::hRBtn) ? c.horizontal : c.vertical)->setChecked(true);
        },
        [c] { return c.horizontal->isChecked(); });
    // The source decides the side, the horizontal button its counterpart: these four are only written.
    binding.bind(keys::frontRBtn, {}, [c] { return c.front->isChecked(); });
    binding.bind(keys::backRBtn, {}, [c] { return c.back->isChecked(); });
    binding.bind(keys::doubleRBtn, {}, [c] { return c.duplex->isChecked(); });
    binding.bind(keys::vRBtn, {}, [c] { return c.vertical->isChecked(); });
    binding.bind(keys::horizontalState, {}, [c] { return isUsable(c.horizontal); });
    binding.bind(keys::verticalState, {}, [c] { return isUsable(c.vertical); });
    binding.bind(keys::paperSize, c.paperSize);
    binding.bind(keys::scanMode, c.colorMode);
}

void bindFormats(SettingBinding& binding, const ScanPageControls& c)
{
    binding.bind(keys::fileColor, c.colorFormat);
    binding.bind(keys::fileGrey, c.greyFormat);
    binding.bind(keys::fileBW, c.bwFormat);
}

void bindTone(SettingBinding& binding, const ScanPageControls& c)
{
    binding.bind(keys::lightness, c.lightness);
    binding.bind(keys::contrast, c.contrast);
    binding.bind(keys::threshold, c.threshold);
    binding.bind(keys::colorFilter, c.colorFilter);
    binding.bind(keys::deScreen, c.deScreen);
    binding.bind(keys::filter, c.filter);
}

void bindSwitches(SettingBinding& binding, const ScanPageControls& c)
{
    binding.bind(keys::contiScan, c.contiScan);
    binding.bind(keys::colorMatch, c.colorMatch);
    binding.bind(keys::autoCrowed, c.autoCrowed);
    binding.bind(keys::autoCut, c.autoCut);
    binding.bind(keys::autoRight, c.autoRight);
    binding.bind(keys::delBlank, c.delBlank);
    binding.bind(
        keys::delBlankState,
        [c](const QSettings& settings) {
            const bool missing = !settings.contains(QLatin1String(keys::delBlankState));
            c.delBlank->setEnabled(missing || readBool(settings, keys::delBlankState));
        },
        [c] { return isUsable(c.delBlank); });
    binding.bind(keys::imgMend, c.imgMend);
    binding.bind(keys::outMutiImg, c.outMutiImg);
    binding.bind(keys::fillHole, c.fillHole);
    binding.bind(keys::delBackground, c.delBackground);
    binding.bind(keys::delColor, c.delColor);
    binding.bind(keys::characenhance, c.characEnhance);
    binding.bind(keys::readFile, c.redFile);
}

void bindResolution(SettingBinding& binding, ScanPageLogic& logic)
{
    binding.bind(keys::resolution, logic.controls().resolution);
    binding.bind(keys::resolutionText, {}, [&logic] { return logic.resolutionStoredText(); });
    binding.bind(
        keys::selfResolution,
        [&logic](const QSettings& settings) {
            logic.setCustomResolutionText(readText(settings, keys::selfResolution));
        },
        [&logic] { return logic.customResolutionText(); });
}
