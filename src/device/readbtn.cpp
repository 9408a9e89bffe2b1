// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/readbtn.h"

#include "config/progresswords.h"
#include "device/statefile.h"
#include "device/stateinfopanel.h"
#include "device/statetexts.h"

readBtn::readBtn(QObject* parent) : readBtn(makeLibUsb(), {}, parent) {}

readBtn::readBtn(std::unique_ptr<UsbApi> api, ButtonWatch::Intervals intervals, QObject* parent)
    : QThread(parent), m_watch(std::move(api), intervals,
                               {[this](int code) { emit buttonStateSignal(code); },
                                [this](const QString& word) { emit stateInfoPanelSignal(word); },
                                [this](bool denied) { emit accessDeniedSignal(denied); }}),
      m_panel(std::make_unique<stateInfoPanel>())
{
    connect(this, &readBtn::stateInfoPanelSignal, m_panel.get(), &stateInfoPanel::stateInfoPanelSlot);
}

readBtn::~readBtn()
{
    stop();
    wait();
}

void readBtn::scannerBtnStar()
{
    m_watch.loop();
}

void readBtn::run()
{
    scannerBtnStar();
}

void readBtn::stop()
{
    m_watch.stop();
}

stateInfoPanel* readBtn::panel() const
{
    return m_panel.get();
}

void readBtn::getAndSetFunctionSlot(int state)
{
    m_watch.setState(state);
}

void readBtn::dialogShowSlot(const QString& text)
{
    if (text == progress::kFinished) {
        m_watch.setState(ButtonWatch::Idle);
        return;
    }
    if (progress::isControlWord(text))
        return;
    const bool newBatch = text == state::text(state::Preparing);
    if (!newBatch && m_panel->isVisible() && state::isFaultText(m_panel->showString()))
        return;
    m_watch.setShownText(text);
    m_panel->setShowString(text);
}
