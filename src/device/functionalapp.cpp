// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/functionalapp.h"

#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "device/usb_communicate.h"
#include "ui_functionalapp.h"

#include <QDebug>
#include <QEventLoop>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QShowEvent>
#include <QThread>
#include <QTimer>
#include <algorithm>

using maintenance::Counter;
using maintenance::Outcome;
using maintenance::Wear;

struct FunctionalApp::CounterControls
{
    Counter counter;
    QLineEdit* field;
    QPushButton* reset;
    QString name; // as the question before a reset says it
    // only of parts that wear out
    QProgressBar* bar = nullptr;
    QLabel* hint = nullptr;
    QSpinBox* limit = nullptr;
};

namespace {

constexpr int kCounterTab = 1;

// A missing key reads as 0, which no control here can show.
int numberOrFactory(const QSettings& settings, const char* key)
{
    const int stored = readInt(settings, key);
    return stored > 0 ? stored : table(groups::wholeSet).find(key)->factory.toInt();
}

QString duration(int minutes)
{
    const int hours = minutes / 60;
    const int rest = minutes % 60;
    if (hours == 0)
        return QString();
    return rest == 0 ? FunctionalApp::tr("= %1 小时").arg(hours)
                     : FunctionalApp::tr("= %1 小时 %2 分钟").arg(hours).arg(rest);
}

bool isUnavailable(int result)
{
    return result == usb_communicate::DeviceNotFound || result == usb_communicate::DeviceError;
}

enum class Alarm
{
    None,
    Soon,
    Now,
};

// A warning is bold and coloured; the colours keep their distance from a dark background, too.
void setAlarm(QWidget* widget, Alarm alarm)
{
    QFont font = widget->font();
    font.setBold(alarm != Alarm::None);
    widget->setFont(font);
    QPalette palette;
    if (alarm != Alarm::None) {
        const bool dark = palette.color(QPalette::Window).lightness() < 128;
        const QColor red = dark ? QColor(255, 130, 120) : QColor(178, 24, 24);
        const QColor amber = dark ? QColor(255, 190, 90) : QColor(138, 78, 0);
        palette.setColor(QPalette::WindowText, alarm == Alarm::Now ? red : amber);
        palette.setColor(QPalette::Highlight, QColor(178, 24, 24));
    }
    widget->setPalette(palette);
}

// The tabs do not ask their pages how high a wrapped text gets.
void fitHeight(QWidget* page)
{
    constexpr int width = 560;
    page->setMinimumSize(width, page->layout()->heightForWidth(width));
}

} // namespace

FunctionalApp::FunctionalApp(QWidget* parent)
    : FunctionalApp([] { return std::make_unique<usb_communicate>(); }, parent)
{
}

FunctionalApp::FunctionalApp(MakeChannel makeChannel, QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::FunctionalApp>()), m_makeChannel(std::move(makeChannel))
{
    m_ui->setupUi(this);
    fitHeight(m_ui->standbyTab);
    fitHeight(m_ui->counterTab);
    setUpCounters();
    connect(m_ui->sleepOrCount, &QTabWidget::currentChanged, this, &FunctionalApp::readWhenShown);
    connect(m_ui->sleeptime, QOverload<int>::of(&QSpinBox::valueChanged), this, &FunctionalApp::showStandby);
    readIni();
}

FunctionalApp::~FunctionalApp() = default;

void FunctionalApp::setUpCounters()
{
    m_counters = {
        {Counter::Scans, m_ui->current_plat, m_ui->reset_plat, tr("扫描计数器")},
        {Counter::FeedRoller, m_ui->target_incom, m_ui->reset_btn_incom, tr("进纸滚轮计数器"), m_ui->incomBar,
         m_ui->incomHintLabel, m_ui->rollerLimit},
        {Counter::PadModule, m_ui->target_ruandian, m_ui->reset_btn_ruandian, tr("软垫模组计数器"),
         m_ui->ruandianBar, m_ui->ruandianHintLabel, m_ui->padLimit},
    };
    for (std::size_t i = 0; i < m_counters.size(); ++i) {
        const CounterControls& controls = m_counters[i];
        controls.reset->setAccessibleName(tr("重置%1").arg(controls.name));
        if (!controls.limit)
            continue;
        controls.limit->setAccessibleName(tr("%1的更换张数").arg(controls.name));
        connect(controls.limit, QOverload<int>::of(&QSpinBox::valueChanged), this,
                [this, i] { showWear(m_counters[i]); });
    }
}

// The device

bool FunctionalApp::exchange(const Work& work)
{
    if (m_exchanging || m_scanRunning)
        return false;
    const QPointer<FunctionalApp> self(this);
    const QPointer<QWidget> focused = focusWidget();
    m_exchanging = true;
    enableButtons();
    const QPointer<QWidget> waiting = focusWidget(); // a disabled button hands the focus on
    showStatus(tr("正在与扫描仪通信…"), true);
    emit exchangeStarted();

    bool denied = false;
    const std::unique_ptr<QThread> worker(QThread::create([&work, &denied, makeChannel = m_makeChannel] {
        const auto channel = makeChannel();
        work(*channel);
        denied = channel->accessDenied();
    }));
    QEventLoop loop;
    connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit);
    worker->start();
    loop.exec();
    worker->wait(); // the loop also ends when the program does
    if (!self)
        return false;

    m_accessDenied = denied;
    m_exchanging = false;
    enableButtons();
    if (focused && focused->isVisible() && focusWidget() == waiting)
        focused->setFocus();
    emit exchangeEnded();
    return true;
}

void FunctionalApp::enableButtons()
{
    const bool usable = !m_exchanging && !m_scanRunning;
    m_ui->sleepTime_btn->setEnabled(usable);
    m_ui->refreshButton->setEnabled(usable);
    for (const CounterControls& controls : m_counters)
        controls.reset->setEnabled(usable);
}

void FunctionalApp::setScanRunning(bool running)
{
    if (running == m_scanRunning)
        return;
    m_scanRunning = running;
    enableButtons();
    showStatus(running ? tr("正在扫描，扫描结束后可以使用") : tr("空闲"), true);
    if (!running)
        readWhenShown();
}

void FunctionalApp::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        readWhenShown();
}

// Once what is going on has been painted.
void FunctionalApp::readWhenShown()
{
    QTimer::singleShot(0, this, [this] {
        if (isVisible() && m_ui->sleepOrCount->currentIndex() == kCounterTab)
            getScannerPrimiters();
    });
}

// Counters

void FunctionalApp::getScannerPrimiters()
{
    maintenance::Readings readings;
    if (!exchange([&readings](usb_communicate& channel) { readings = maintenance::readCounters(channel); }))
        return;
    bool silent = false;
    for (std::size_t i = 0; i < m_counters.size(); ++i) {
        const maintenance::Reading& reading = readings.counters[i];
        showReading(m_counters[i], reading);
        if (reading.outcome == Outcome::SendFailed)
            showUnavailable();
        else if (reading.outcome == Outcome::Value)
            showStatus(tr("正常"), true);
        else
            silent = true;
    }
    if (silent)
        showStatus(tr("扫描仪没有应答或应答不完整"), false);
}

void FunctionalApp::showReading(const CounterControls& controls, const maintenance::Reading& reading)
{
    switch (reading.outcome) {
    case Outcome::Value:
        controls.field->setText(QString::number(reading.value));
        controls.field->setEnabled(true);
        break;
    case Outcome::SendFailed:
        controls.field->setText(QStringLiteral("0"));
        controls.field->setEnabled(false);
        break;
    case Outcome::ReadFailed:
        controls.field->setEnabled(false);
        break;
    case Outcome::ShortReply:
        return;
    }
    showWear(controls);
}

void FunctionalApp::showWear(const CounterControls& controls)
{
    if (!controls.bar)
        return;
    const bool known = controls.field->isEnabled();
    const int count = known ? controls.field->text().toInt() : 0;
    const int limit = controls.limit->value();
    const Wear wear = maintenance::wear(count, limit);
    controls.bar->setMaximum(limit);
    controls.bar->setValue(qMin(count, limit));
    controls.bar->setEnabled(known);
    QString hint = tr("还可使用约 %1 张").arg(limit - count);
    if (!known)
        hint = tr("未读到计数");
    else if (wear == Wear::Due)
        hint = tr("⚠ 需要更换");
    else if (wear == Wear::DueSoon)
        hint = tr("⚠ 即将需要更换");
    controls.hint->setText(hint);
    const bool due = wear == Wear::Due;
    setAlarm(controls.hint, due ? Alarm::Now : wear == Wear::DueSoon ? Alarm::Soon : Alarm::None);
    setAlarm(controls.bar, due ? Alarm::Now : Alarm::None);
}

void FunctionalApp::reset(Counter counter)
{
    const auto controls = std::find_if(m_counters.begin(), m_counters.end(),
                                       [counter](const CounterControls& c) { return c.counter == counter; });
    if (!confirm(
            tr("%1将重置为0。\n该动作不可撤销，确定要继续吗？\n点击【OK】重置计数器，或者点击【取消】退出")
                .arg(controls->name)))
        return;
    int result = usb_communicate::DeviceNotFound;
    if (!exchange([&result, counter](usb_communicate& channel) {
            result = maintenance::resetCounter(channel, counter);
        }))
        return;
    showResult(result, tr("正常"));
    if (result == usb_communicate::Done)
        getScannerPrimiters(); // what the device says now
    else
        showConnectionError();
}

void FunctionalApp::on_reset_plat_clicked()
{
    reset(Counter::Scans);
}

void FunctionalApp::on_reset_btn_incom_clicked()
{
    reset(Counter::FeedRoller);
}

void FunctionalApp::on_reset_btn_ruandian_clicked()
{
    reset(Counter::PadModule);
}

void FunctionalApp::on_refreshButton_clicked()
{
    getScannerPrimiters();
}

// Standby

int FunctionalApp::setSleepTime(int minutes)
{
    const int result = sendStandby(minutes);
    if (isUnavailable(result))
        qWarning("init device error");
    return result;
}

int FunctionalApp::sendStandby(int minutes)
{
    int result = usb_communicate::DeviceNotFound;
    if (exchange([&result, minutes](usb_communicate& channel) {
            result = maintenance::setStandby(channel, minutes);
        }))
        showResult(result, tr("正常，待机设置已发送到扫描仪"));
    return result;
}

void FunctionalApp::on_sleepTime_btn_clicked()
{
    constexpr int standbyNow = 1; // the shortest time that the device knows
    int minutes = 0;
    if (m_ui->sleep->isChecked()) {
        minutes = m_ui->sleeptime->value();
        qDebug("sleeptime = %d", minutes);
        qDebug("hour = %d, minit = %d", minutes / 60, minutes % 60);
    } else if (m_ui->xiumian->isChecked()) {
        minutes = standbyNow;
    }
    const QPointer<FunctionalApp> self(this);
    const int result = sendStandby(minutes);
    if (!self)
        return;
    if (result == usb_communicate::Done)
        writeIni();
    else if (!isUnavailable(result))
        showConnectionError();
}

void FunctionalApp::on_no_sleep_clicked(bool)
{
    showStandby();
}

void FunctionalApp::on_sleep_clicked(bool)
{
    showStandby();
    m_ui->sleeptime->setFocus();
}

void FunctionalApp::on_xiumian_clicked(bool)
{
    showStandby();
}

void FunctionalApp::showStandby()
{
    const bool timed = m_ui->sleep->isChecked();
    m_ui->sleeptime->setEnabled(timed);
    m_ui->sleeptimeLabel->setEnabled(timed);
    m_ui->durationLabel->setEnabled(timed);
    m_ui->durationLabel->setText(duration(m_ui->sleeptime->value()));
}

// Messages

bool FunctionalApp::confirm(const QString& text)
{
    QMessageBox box(QMessageBox::Question, tr("提示"), text, QMessageBox::Ok | QMessageBox::Cancel, this);
    box.button(QMessageBox::Ok)->setText(QStringLiteral("OK"));
    box.button(QMessageBox::Cancel)->setText(tr("取消"));
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Ok;
}

void FunctionalApp::showUnavailable()
{
    showStatus(m_accessDenied ? tr("没有访问扫描仪的权限") : tr("扫描仪连接断开"), false);
}

void FunctionalApp::showResult(int result, const QString& success)
{
    if (result == usb_communicate::Done)
        showStatus(success, true);
    else if (result == usb_communicate::ReadFailed)
        showStatus(tr("扫描仪没有应答"), false);
    else
        showUnavailable();
}

void FunctionalApp::showConnectionError()
{
    QMessageBox box(QMessageBox::Warning, tr("提示"), tr("连接错误"), QMessageBox::Ok, this);
    box.button(QMessageBox::Ok)->setText(tr("确定"));
    box.exec();
}

void FunctionalApp::showStatus(const QString& text, bool good)
{
    m_ui->statusLabel->setText(text);
    setAlarm(m_ui->statusLabel, good ? Alarm::None : Alarm::Now);
}

// Settings

void FunctionalApp::readIni()
{
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, groups::wholeSet);
    QRadioButton* choice = m_ui->sleep; // also when nothing is stored
    if (readBool(*settings, keys::noSleep))
        choice = m_ui->no_sleep;
    else if (!readBool(*settings, keys::sleep) && readBool(*settings, keys::xiumian))
        choice = m_ui->xiumian;
    choice->setChecked(true);
    m_ui->sleeptime->setValue(numberOrFactory(*settings, keys::sleeptime));
    m_ui->rollerLimit->setValue(numberOrFactory(*settings, keys::rollerLimit));
    m_ui->padLimit->setValue(numberOrFactory(*settings, keys::padLimit));
    m_ui->sleepOrCount->setCurrentIndex(
        qMin(readInt(*settings, keys::sleepOrCount), m_ui->sleepOrCount->count() - 1));
    showStandby();
    for (const CounterControls& controls : m_counters)
        showWear(controls);
}

bool FunctionalApp::writeIni()
{
    const auto settings = openMainSettings();
    {
        const GroupScope scope(*settings, groups::wholeSet);
        settings->setValue(keys::sleepOrCount, m_ui->sleepOrCount->currentIndex());
        settings->setValue(keys::noSleep, m_ui->no_sleep->isChecked());
        settings->setValue(keys::sleep, m_ui->sleep->isChecked());
        settings->setValue(keys::xiumian, m_ui->xiumian->isChecked());
        settings->setValue(keys::sleeptime, m_ui->sleeptime->value());
        settings->setValue(keys::rollerLimit, m_ui->rollerLimit->value());
        settings->setValue(keys::padLimit, m_ui->padLimit->value());
    }
    return saveSettings(*settings);
}
