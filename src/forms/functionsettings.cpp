// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/functionsettings.h"

#include "config/settingtable.h"
#include "forms/commonbindings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QSignalBlocker>
#include <QSlider>

using Side = ScanPageLogic::Side;

FunctionSettings::FunctionSettings(ScanPageLogic& logic) : m_logic(logic)
{
    const ScanPageControls& c = m_logic.controls();
    m_binding.bind(keys::App, c.application);
    m_binding.bind(keys::specifiedApp, c.appStart);
    bindSource(m_binding, c);
    bindPages();
    if (c.colorFormat)
        bindFormats(m_binding, c);
    m_binding.bind(keys::gamma, c.gamma);
    bindTone(m_binding, c);
    bindSwitches(m_binding, c);
    m_binding.bind(keys::noiseMode, c.noise);
    bindTurn(keys::pageSetFront, keys::pageSetFrontText, keys::frontRotateState, c.frontRotation,
             Side::Front);
    bindTurn(keys::pageSetBack, keys::pageSetBackText, keys::backRotateState, c.backRotation, Side::Back);
    bindResolution(m_binding, m_logic);
}

void FunctionSettings::bindPages()
{
    const ScanPageControls& c = m_logic.controls();
    m_binding.bind(keys::split, c.splitFile ? c.splitFile : c.split);
    m_binding.bind(keys::handAdjust, c.mergeByHand);
    m_binding.bind(keys::handState, {}, [c] { return isUsable(c.mergeByHand); });
}

void FunctionSettings::bindTurn(const char* codeKey, const char* textKey, const char* usedKey, QLabel* label,
                                Side side)
{
    m_binding.bind(
        codeKey,
        [=](const QSettings& settings) {
            const bool hasCode = settings.contains(QLatin1String(codeKey));
            const QString text = readText(settings, textKey);
            m_logic.setRotation(side, hasCode || text.isEmpty() ? readInt(settings, codeKey)
                                                                : ScanPageLogic::rotationCode(text));
        },
        [=] { return m_logic.rotation(side); });
    m_binding.bind(textKey, {},
                   [=] { return ScanPageLogic::storedRotationText(side, m_logic.rotation(side)); });
    m_binding.bind(
        usedKey, [=](const QSettings& settings) { label->setEnabled(readBool(settings, usedKey)); },
        [=] { return isUsable(label); });
}

void FunctionSettings::read(const QSettings& settings)
{
    m_binding.read(settings);
    if (!settings.contains(QLatin1String(keys::gamma)))
        m_logic.controls().gamma->setValue(kNeutralGamma);
    applyRead();
}

void FunctionSettings::applyRead()
{
    const ScanPageControls& c = m_logic.controls();
    c.handAdjust->setChecked(isUsable(c.frontRotation) || isUsable(c.backRotation));
    m_logic.settingsLoaded();
}

void FunctionSettings::write(QSettings& settings) const
{
    m_binding.write(settings);
}

void FunctionSettings::setDefaults(const QString& group)
{
    m_binding.readFactoryValues(group);
    applyRead();
}
