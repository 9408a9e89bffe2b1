// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/wholesetpanel.h"

#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/dialogparts.h"
#include "ui_wholesetpanel.h"

#include <QPushButton>
#include <QRegularExpression>
#include <QShowEvent>

namespace {

QString strengthText(int value)
{
    return value == 0 ? wholesetpanel::tr("0（关）") : QString::number(value);
}

// What a control cannot show (a missing number, or one that switches its step off) reads as the factory
// value.
int shownNumber(const QSettings& settings, const char* key, int least, int most)
{
    const int stored = readInt(settings, key);
    return stored >= least && stored <= most ? stored : table(groups::wholeSet).find(key)->factory.toInt();
}

} // namespace

wholesetpanel::wholesetpanel(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::wholesetpanel>())
{
    m_ui->setupUi(this);
    for (QLabel* label : findChildren<QLabel*>(QRegularExpression(QStringLiteral("[hH]elpLabel$"))))
        dialogparts::styleHelp(label);
    // the tabs do not ask their pages how high a wrapped text gets
    constexpr int width = 600;
    m_ui->processingTab->setMinimumSize(width, m_ui->processingTab->layout()->heightForWidth(width));
    dialogparts::useChineseButtons(m_ui->buttonBox);
    dialogparts::showMessage(m_ui->messageLabel, QString());
    bindControls();
    for (QSlider* slider : {m_ui->delValue, m_ui->enhanceValue, m_ui->delBlank})
        connect(slider, &QSlider::valueChanged, this, &wholesetpanel::showValues);
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &wholesetpanel::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &wholesetpanel::reject);
    connect(m_ui->buttonBox->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &wholesetpanel::writeIni);
    readIni();
}

wholesetpanel::~wholesetpanel() = default;

void wholesetpanel::bindControls()
{
    m_binding.bind(keys::delValue, m_ui->delValue);
    m_binding.bind(keys::enhanceValue, m_ui->enhanceValue);
    QSlider* blank = m_ui->delBlank;
    m_binding.bind(
        keys::delBlank,
        [blank](const QSettings& settings) {
            blank->setValue(shownNumber(settings, keys::delBlank, blank->minimum(), blank->maximum()));
        },
        [blank] { return blank->value(); });
    QSpinBox* count = m_ui->splitCount;
    m_binding.bind(
        keys::splitCount,
        [count](const QSettings& settings) {
            count->setValue(shownNumber(settings, keys::splitCount, count->minimum(), count->maximum()));
        },
        [count] { return count->value(); });
    m_binding.bind(keys::longShortRotate, m_ui->longShortRotate);
    m_binding.bind(keys::fGrayDpi, m_ui->fGrayDpi);
    m_binding.bind(keys::fWBDpi, m_ui->fWBDpi);
}

void wholesetpanel::addMaintenancePage(QWidget* page)
{
    Q_ASSERT(!m_maintenance);
    m_maintenance = page;
    m_ui->pages->addTab(page, tr("设备维护(&M)"));
    // By name: the page comes from a room that this one does not know.
    connect(page, SIGNAL(exchangeStarted()), this, SLOT(lendDevice()));
    connect(page, SIGNAL(exchangeEnded()), this, SLOT(takeDeviceBack()));
}

void wholesetpanel::lendDevice()
{
    emit getAndSetFunctionalSignals(2);
}

void wholesetpanel::takeDeviceBack()
{
    emit getAndSetFunctionalSignals(0);
}

void wholesetpanel::readIni()
{
    {
        const auto settings = openMainSettings();
        const GroupScope scope(*settings, groups::wholeSet);
        m_binding.read(*settings);
    }
    showValues();
    if (m_maintenance)
        QMetaObject::invokeMethod(m_maintenance, "readIni");
}

bool wholesetpanel::writeIni()
{
    bool written = true;
    {
        const auto settings = openMainSettings();
        {
            const GroupScope scope(*settings, groups::wholeSet);
            m_binding.write(*settings);
        }
        written = saveSettings(*settings);
    }
    if (written && m_maintenance)
        QMetaObject::invokeMethod(m_maintenance, "writeIni", Q_RETURN_ARG(bool, written));
    dialogparts::showMessage(m_ui->messageLabel, written ? QString() : dialogparts::cannotStore());
    if (written)
        emit settingsWritten();
    return written;
}

void wholesetpanel::changeScanTypeState(int mode)
{
    m_scanTypeState = mode;
}

void wholesetpanel::accept()
{
    if (writeIni())
        QDialog::accept();
}

void wholesetpanel::reject()
{
    readIni();
    dialogparts::showMessage(m_ui->messageLabel, QString());
    QDialog::reject();
}

void wholesetpanel::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        readIni(); // a template may have been loaded meanwhile
    QDialog::showEvent(event);
}

void wholesetpanel::showValues()
{
    m_ui->delValueValueLabel->setText(strengthText(m_ui->delValue->value()));
    m_ui->enhanceValueValueLabel->setText(strengthText(m_ui->enhanceValue->value()));
    m_ui->delBlankValueLabel->setText(QString::number(m_ui->delBlank->value()));
}
