// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/scanpagesettings.h"

#include "config/settingtable.h"
#include "forms/commonbindings.h"
#include "forms/scanpagelogic.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSettings>
#include <QSlider>

using Side = ScanPageLogic::Side;

ScanPageSettings::ScanPageSettings(ScanPageLogic& logic) : m_logic(logic)
{
    const ScanPageControls& c = m_logic.controls();
    m_binding.bind(keys::App, c.application);
    m_binding.bind(keys::appStart, c.appStart);
    bindSource(m_binding, c);
    bindFormats(m_binding, c);
    m_binding.bind(keys::handAdjust, c.handAdjust);
    m_binding.bind(keys::split, c.split);
    // Shows the format of the colour mode, which the three format keys hold.
    m_binding.bind(keys::fileType, {}, [c] { return c.fileType->currentIndex(); });
    m_binding.bindHundredths(keys::gamma, c.gamma);
    bindTone(m_binding, c);
    bindSwitches(m_binding, c);
    m_binding.bind(keys::handState, {}, [c] { return isUsable(c.handAdjust); });
    bindLabel(keys::pageSetFront, keys::pageSetFrontText, c.frontRotation, Side::Front);
    bindLabel(keys::pageSetBack, keys::pageSetBackText, c.backRotation, Side::Back);
    bindResolution(m_binding, m_logic); // last: the text and the custom value rest on the selected item
}

// A label's turn as a code, and whether this turn is used.
void ScanPageSettings::bindLabel(const char* usedKey, const char* turnKey, QLabel* label, Side side)
{
    m_binding.bind(
        usedKey, [=](const QSettings& settings) { label->setEnabled(readBool(settings, usedKey)); },
        [=] { return isUsable(label); });
    m_binding.bind(
        turnKey, [=](const QSettings& settings) { m_logic.setRotation(side, readInt(settings, turnKey)); },
        [=] { return m_logic.rotation(side); });
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
