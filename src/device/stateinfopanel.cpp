// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/stateinfopanel.h"

#include "device/buttonwatch.h"
#include "device/cancelflag.h"
#include "device/statefile.h"
#include "device/statetexts.h"
#include "device/statusicon.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int windowWidth = 620, windowHeight = 260; // the longest text takes three lines
constexpr int textPoints = 15;

// A slim bar with a part that runs through: nobody knows how many sheets lie in the feeder.
const char* const slimBar =
    "QProgressBar { border: none; border-radius: 3px; background: palette(midlight); }"
    "QProgressBar::chunk { background: palette(highlight); width: 60px; }";
constexpr int barHeight = 6;

} // namespace

stateInfoPanel::stateInfoPanel(QWidget* parent)
    : QDialog(parent), m_icon(new StatusIcon(this)), m_label(new QLabel(this)),
      m_progress(new QProgressBar(this))
{
    setObjectName(QStringLiteral("stateInfoPanel"));
    setWindowTitle(tr("扫描状态"));
    setWindowModality(Qt::ApplicationModal);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setAttribute(Qt::WA_QuitOnClose, false); // the program lives in the tray
    setFixedSize(windowWidth, windowHeight);

    m_label->setObjectName(QStringLiteral("textLabel"));
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText); // texts come from outside
    QFont large = m_label->font();
    large.setPointSize(textPoints);
    m_label->setFont(large);
    m_label->setAccessibleName(tr("扫描状态"));
    m_progress->setRange(0, 0);
    m_progress->setTextVisible(false);
    m_progress->setFixedHeight(barHeight);
    m_progress->setStyleSheet(QLatin1String(slimBar));
    m_progress->setAccessibleName(tr("扫描进度"));

    auto* message = new QHBoxLayout;
    message->setSpacing(20);
    message->addWidget(m_icon, 0, Qt::AlignVCenter);
    message->addWidget(m_label, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 24, 28, 20);
    layout->setSpacing(16);
    layout->addLayout(message, 1);
    layout->addWidget(m_progress);
    layout->addWidget(makeButtons());
    setMode(Mode::Notice);
}

QWidget* stateInfoPanel::makeButtons()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    const auto add = [&](const char* name, const QString& text) {
        auto* button = new QPushButton(text, row);
        button->setObjectName(QLatin1String(name));
        button->setMinimumSize(112, 36);
        layout->addWidget(button);
        return button;
    };
    m_continue = add("continueButton", tr("继续"));
    m_finish = add("finishButton", tr("完成"));
    m_cancel = add("cancelButton", tr("取消扫描"));
    m_confirm = add("confirmButton", tr("确定"));
    m_continue->setAccessibleDescription(tr("扫描同一批次的下一页"));
    m_finish->setAccessibleDescription(tr("结束本批次扫描"));
    m_cancel->setAccessibleDescription(tr("停止正在进行的扫描"));
    m_cancel->setAutoDefault(false);
    connect(m_continue, &QPushButton::clicked, this, [this] { answer(true); });
    connect(m_finish, &QPushButton::clicked, this, [this] { answer(false); });
    connect(m_cancel, &QPushButton::clicked, this, &stateInfoPanel::cancel);
    connect(m_confirm, &QPushButton::clicked, this, &stateInfoPanel::confirm);
    return row;
}

void stateInfoPanel::setMode(Mode mode)
{
    m_mode = mode;
    const bool running = mode == Mode::Batch || mode == Mode::Cancelling;
    m_progress->setVisible(running);
    m_confirm->setVisible(mode == Mode::Notice);
    m_cancel->setVisible(running);
    m_cancel->setEnabled(mode == Mode::Batch);
    m_continue->setVisible(mode == Mode::Question);
    m_finish->setVisible(mode == Mode::Question);
    // Enter or a blank meant for another window must not cancel: that takes Esc, Tab or the mouse.
    if (running) {
        setFocus();
    } else {
        QPushButton* const usual = mode == Mode::Question ? m_continue : m_confirm;
        usual->setDefault(true);
        usual->setFocus();
    }
    showText();
}

// The question and the answer to a cancel stand before what the scanner says.
void stateInfoPanel::showText()
{
    QString shown = m_text;
    if (m_mode == Mode::Question)
        shown = tr("继续扫描下一页？");
    else if (m_mode == Mode::Cancelling && m_text != state::text(state::Cancelled))
        shown = tr("正在取消扫描，请稍候……");
    m_label->setText(shown);
    m_label->setAccessibleDescription(shown);

    if (m_mode == Mode::Question)
        m_icon->setKind(StatusIcon::Kind::Question);
    else if (state::isFaultText(shown) || shown == state::text(state::Busy))
        m_icon->setKind(StatusIcon::Kind::Warning);
    else
        m_icon->setKind(StatusIcon::Kind::Scanning);
}

void stateInfoPanel::setShowString(const QString& text)
{
    m_text = text;
    showText();
}

QString stateInfoPanel::showString() const
{
    return m_text;
}

void stateInfoPanel::setButtonName(const QString& name)
{
    m_confirm->setText(name);
}

void stateInfoPanel::setButtonHide()
{
    m_batchRuns = true;
    setMode(Mode::Batch);
}

bool stateInfoPanel::getButtonState() const
{
    return !m_confirm->isHidden();
}

void stateInfoPanel::closeWindow()
{
    if (m_mode == Mode::Question)
        answer(false);
    m_batchRuns = false;
    setMode(Mode::Notice);
    hide();
}

void stateInfoPanel::stateInfoPanelSlot(const QString& commandOrText)
{
    if (commandOrText == QLatin1String(panelcommand::HideButton)) {
        setButtonHide();
    } else if (commandOrText == QLatin1String(panelcommand::CloseWindow)) {
        closeWindow();
    } else if (commandOrText == QLatin1String(panelcommand::ShowWindow)) {
        show();
        raise();
        activateWindow();
    } else {
        setShowString(commandOrText);
        if (m_mode != Mode::Question)
            followText();
    }
}

// A fault has ended the batch or waits for the user; any other text says that it goes on.
void stateInfoPanel::followText()
{
    if (state::isFaultText(m_text) || !m_batchRuns)
        setMode(Mode::Notice);
    else if (m_mode != Mode::Cancelling)
        setMode(Mode::Batch);
}

void stateInfoPanel::askNextPage()
{
    setMode(Mode::Question);
    stateInfoPanelSlot(QLatin1String(panelcommand::ShowWindow));
}

void stateInfoPanel::answer(bool another)
{
    m_mode = Mode::Batch;
    followText();
    emit nextPageAnswered(another);
}

void stateInfoPanel::cancel()
{
    if (m_mode != Mode::Batch)
        return;
    cancelflag::set();
    setMode(Mode::Cancelling);
    emit cancelRequested();
}

void stateInfoPanel::confirm()
{
    hide();
    emit confirmed();
}

void stateInfoPanel::reject()
{
    switch (m_mode) {
    case Mode::Notice:
        confirm();
        break;
    case Mode::Batch:
        cancel();
        break;
    case Mode::Cancelling:
        hide(); // asked for twice
        break;
    case Mode::Question:
        answer(false);
        break;
    }
}

// A closed window is gone at once, also while the cancel that it stands for takes its time.
void stateInfoPanel::closeEvent(QCloseEvent* event)
{
    reject();
    hide();
    event->accept();
}
