// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/wholesetpanel.h"

#include "config/autostart.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/beforeafter.h"
#include "forms/dialogparts.h"
#include "ui_wholesetpanel.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QRegularExpression>
#include <QShowEvent>

namespace {

QString strengthText(int value)
{
    return value == 0 ? wholesetpanel::tr("0（关）") : QString::number(value);
}

} // namespace

wholesetpanel::wholesetpanel(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::wholesetpanel>()),
      m_preview(new BeforeAfter(Qt::Vertical, this))
{
    m_ui->setupUi(this);
    for (QLabel* label : findChildren<QLabel*>(QRegularExpression(QStringLiteral("[hH]elpLabel$")))) {
        dialogparts::styleHelp(label);
        if (auto* control = findChild<QWidget*>(label->objectName().remove(QStringLiteral("HelpLabel"))))
            control->setToolTip(label->text());
    }
    // the tabs do not ask their pages how high a wrapped text gets
    constexpr int width = 560;
    m_ui->processingTab->setMinimumSize(width, m_ui->processingTab->layout()->heightForWidth(width));
    addPreview();
    dialogparts::useChineseButtons(m_ui->buttonBox);
    dialogparts::showMessage(m_ui->messageLabel, QString());
    bindControls();
    for (QSlider* slider : {m_ui->delValue, m_ui->enhanceValue, m_ui->delBlank})
        connect(slider, &QSlider::valueChanged, this, &wholesetpanel::showValues);
    for (QSlider* slider : {m_ui->delValue, m_ui->enhanceValue})
        connect(slider, &QSlider::valueChanged, this, [this, slider] {
            m_showsCharacters = slider == m_ui->enhanceValue;
            showEffect();
        });
    connect(m_ui->delBlank, &QSlider::valueChanged, this, &wholesetpanel::showBlank);
    QPushButton* defaults = m_ui->buttonBox->button(QDialogButtonBox::RestoreDefaults);
    connect(defaults, &QPushButton::clicked, this, &wholesetpanel::setDefaults);
    connect(m_ui->pages, &QTabWidget::currentChanged, defaults,
            [defaults](int page) { defaults->setEnabled(page == 0); }); // the scanner keeps its own
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &wholesetpanel::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &wholesetpanel::reject);
    connect(m_ui->buttonBox->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &wholesetpanel::writeIni);
    readIni();
}

wholesetpanel::~wholesetpanel() = default;

// Beside the settings of the pages, not of the scanner.
void wholesetpanel::addPreview()
{
    QWidget* tab = m_ui->processingTab;
    auto* settings = new QWidget(tab);
    settings->setMinimumSize(tab->minimumSize());
    tab->setMinimumSize(0, 0);
    settings->setLayout(tab->layout()); // with its widgets
    auto* columns = new QHBoxLayout(tab);
    columns->addWidget(settings, 1);
    columns->addWidget(m_preview);
}

void wholesetpanel::bindControls()
{
    m_binding.bind(keys::delValue, m_ui->delValue);
    m_binding.bind(keys::enhanceValue, m_ui->enhanceValue);
    m_binding.bind(keys::delBlank, m_ui->delBlank);
    m_binding.bind(keys::splitCount, m_ui->splitCount);
    m_binding.bind(keys::longShortRotate, m_ui->longShortRotate);
    m_binding.bind(keys::fGrayDpi, m_ui->fGrayDpi);
    m_binding.bind(keys::fWBDpi, m_ui->fWBDpi);
}

void wholesetpanel::addMaintenancePage(QWidget* page)
{
    Q_ASSERT(!m_maintenance);
    m_maintenance = page;
    m_ui->pages->insertTab(1, page, tr("设备维护(&M)"));
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
    m_ui->autostart->setChecked(autostart::isOn());
    showValues();
    if (isVisible())
        showEffect();
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
    QString problem = written ? QString() : dialogparts::cannotStore();
    if (written && !autostart::set(m_ui->autostart->isChecked(), QCoreApplication::applicationFilePath())) {
        written = false;
        problem = tr("无法写入 %1，请检查磁盘空间和权限。").arg(autostart::file());
    }
    dialogparts::showMessage(m_ui->messageLabel, problem);
    if (written)
        emit settingsWritten();
    return written;
}

void wholesetpanel::changeScanTypeState(int mode)
{
    m_scanTypeState = mode;
    const bool filePage = mode == 0;
    m_ui->helpLabel->setText(filePage
                                 ? tr("文件模板和扫描按键模板都使用这里的设置；现在使用的是文件模板。")
                                 : tr("文件模板和扫描按键模板都使用这里的设置；现在使用的是扫描按键模板。"));
    const QString pages = tr("拆分页面时，一页切成这么多份");
    const QString documents = tr("拆分 PDF、OFD 文档时，每个文档这么多页");
    m_ui->splitCountHelpLabel->setText(
        tr("%1；%2。").arg(filePage ? documents : pages, filePage ? pages : documents));
    m_ui->splitCount->setToolTip(m_ui->splitCountHelpLabel->text());
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
        readIni(); // a template may have been loaded, and a page scanned, meanwhile
    QDialog::showEvent(event);
}

void wholesetpanel::showValues()
{
    m_ui->delValueValueLabel->setText(strengthText(m_ui->delValue->value()));
    m_ui->enhanceValueValueLabel->setText(strengthText(m_ui->enhanceValue->value()));
    m_ui->delBlankValueLabel->setText(QString::number(m_ui->delBlank->value()));
}

// What the strength that was moved last does to the last scanned page.
void wholesetpanel::showEffect()
{
    const int background = m_ui->delValue->value();
    const int characters = m_ui->enhanceValue->value();
    if (m_showsCharacters)
        m_preview->showEffect(
            [=](ImageConvertFunction& library, MagickWand* image) {
                return library.imageCharacterEnhance(image, characters);
            },
            tr("处理后（字符增强 %1）").arg(characters));
    else
        m_preview->showEffect(
            [=](ImageConvertFunction& library, MagickWand* image) {
                return library.imageDelBackground(image, background);
            },
            tr("处理后（删除背景 %1）").arg(background));
}

// Whether the last scanned page would go at this level.
void wholesetpanel::showBlank()
{
    const int level = m_ui->delBlank->value();
    m_preview->show(
        [level](const SamplePage& sample, const QString&) {
            EffectPreview::Result result;
            result.picture.load(sample.page);
            result.text = countsAsBlank(sample, level) ? tr("按此灵敏度，这一页会被当作空白页删除。")
                                                       : tr("按此灵敏度，这一页会保留。");
            return result;
        },
        tr("整页（空白页灵敏度 %1）").arg(level));
}

void wholesetpanel::setDefaults()
{
    m_binding.readFactoryValues(QLatin1String(groups::wholeSet));
    showValues();
    showEffect();
}
