// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/scanpagesettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QSettings>
#include <QSlider>
#include <QToolButton>

#include "config/settingtable.h"
#include "forms/scanpagelogic.h"

namespace {

using Side = ScanPageLogic::Side;

// Without its key gamma does nothing, like every other step whose key is missing.
constexpr int kNeutralGamma = 100;

// Of two exclusive radio buttons one is always checked.
void choose(QAbstractButton* first, bool isFirst, QAbstractButton* second)
{
    (isFirst ? first : second)->setChecked(true);
}

} // namespace

ScanPageSettings::ScanPageSettings(ScanPageLogic& logic) : m_logic(logic)
{
    bindPaper();
    bindTone();
    bindSwitches();
    bindStates();
    bindResolution(); // last: the text and the custom value rest on the selected item
}

void ScanPageSettings::bindPaper()
{
    const ScanPageControls& c = m_logic.controls();
    m_binding.bind(keys::App, c.application);
    m_binding.bind(keys::appStart, c.appStart);
    m_binding.bind(keys::fileColor, c.colorFormat);
    m_binding.bind(keys::fileGrey, c.greyFormat);
    m_binding.bind(keys::fileBW, c.bwFormat);
    m_binding.bind(keys::scanType, c.source);
    m_binding.bind(keys::combine, c.combine);
    m_binding.bind(keys::split, c.split);
    m_binding.bind(keys::handAdjust, c.handAdjust);
    m_binding.bind(
        keys::hRBtn,
        [c](const QSettings& settings) { choose(c.horizontal, readBool(settings, keys::hRBtn), c.vertical); },
        [c] { return c.horizontal->isChecked(); });
    // The source decides the side, the horizontal button its counterpart: these four are only written.
    m_binding.bind(keys::frontRBtn, {}, [c] { return c.front->isChecked(); });
    m_binding.bind(keys::backRBtn, {}, [c] { return c.back->isChecked(); });
    m_binding.bind(keys::doubleRBtn, {}, [c] { return c.duplex->isChecked(); });
    m_binding.bind(keys::vRBtn, {}, [c] { return c.vertical->isChecked(); });
    m_binding.bind(keys::paperSize, c.paperSize);
    m_binding.bind(keys::scanMode, c.colorMode);
    // Shows the format of the colour mode, which the three keys above hold.
    m_binding.bind(keys::fileType, {}, [c] { return c.fileType->currentIndex(); });
}

void ScanPageSettings::bindTone()
{
    const ScanPageControls& c = m_logic.controls();
    m_binding.bind(keys::lightness, c.lightness);
    m_binding.bind(keys::contrast, c.contrast);
    m_binding.bindHundredths(keys::gamma, c.gamma);
    m_binding.bind(keys::threshold, c.threshold);
    m_binding.bind(keys::colorFilter, c.colorFilter);
    m_binding.bind(keys::deScreen, c.deScreen);
    m_binding.bind(keys::filter, c.filter);
}

void ScanPageSettings::bindSwitches()
{
    const ScanPageControls& c = m_logic.controls();
    m_binding.bind(keys::contiScan, c.contiScan);
    m_binding.bind(keys::colorMatch, c.colorMatch);
    m_binding.bind(keys::autoCrowed, c.autoCrowed);
    m_binding.bind(keys::autoCut, c.autoCut);
    m_binding.bind(keys::autoRight, c.autoRight);
    m_binding.bind(keys::delBlank, c.delBlank);
    m_binding.bind(keys::imgMend, c.imgMend);
    m_binding.bind(keys::outMutiImg, c.outMutiImg);
    m_binding.bind(keys::fillHole, c.fillHole);
    m_binding.bind(keys::delBackground, c.delBackground);
    m_binding.bind(keys::delColor, c.delColor);
    m_binding.bind(keys::characenhance, c.characEnhance);
    m_binding.bind(keys::readFile, c.redFile);
}

void ScanPageSettings::bindStates()
{
    const ScanPageControls& c = m_logic.controls();
    const auto usable = [](QWidget* control) { return !control->testAttribute(Qt::WA_ForceDisabled); };
    m_binding.bind(keys::handState, {}, [=] { return usable(c.handAdjust); });
    m_binding.bind(keys::horizontalState, {}, [=] { return usable(c.horizontal); });
    m_binding.bind(keys::verticalState, {}, [=] { return usable(c.vertical); });

    struct Label
    {
        const char* usedKey;
        const char* turnKey;
        QLabel* label;
        Side side;
    };
    for (const Label& entry :
         {Label{keys::pageSetFront, keys::pageSetFrontText, c.frontRotation, Side::Front},
          Label{keys::pageSetBack, keys::pageSetBackText, c.backRotation, Side::Back}}) {
        m_binding.bind(
            entry.usedKey,
            [=](const QSettings& settings) { entry.label->setEnabled(readBool(settings, entry.usedKey)); },
            [=] { return usable(entry.label); });
        m_binding.bind(
            entry.turnKey,
            [=](const QSettings& settings) {
                m_logic.setRotation(entry.side, readInt(settings, entry.turnKey));
            },
            [=] { return m_logic.rotation(entry.side); });
    }
    m_binding.bind(
        keys::delBlankState,
        [c](const QSettings& settings) {
            const bool missing = !settings.contains(QLatin1String(keys::delBlankState));
            c.delBlank->setEnabled(missing || readBool(settings, keys::delBlankState));
        },
        [=] { return usable(c.delBlank); });
}

void ScanPageSettings::bindResolution()
{
    m_binding.bind(keys::resolution, m_logic.controls().resolution);
    m_binding.bind(keys::resolutionText, {}, [this] { return m_logic.resolutionStoredText(); });
    m_binding.bind(
        keys::selfResolution,
        [this](const QSettings& settings) {
            m_logic.setCustomResolutionText(readText(settings, keys::selfResolution));
        },
        [this] { return m_logic.customResolutionText(); });
}

void ScanPageSettings::read(const QSettings& settings)
{
    m_binding.read(settings);
    if (!settings.contains(QLatin1String(keys::gamma)))
        m_logic.controls().gamma->setValue(kNeutralGamma);
    m_logic.settingsLoaded();
}

void ScanPageSettings::write(QSettings& settings) const
{
    m_binding.write(settings);
}
