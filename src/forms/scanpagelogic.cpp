// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/scanpagelogic.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <array>

#include "forms/controlhelp.h"
#include "forms/spliticon.h"

namespace {

enum SourceIndex
{
    Flatbed,
    FeederFront,
    FeederBack,
    FeederDuplex,
    Automatic
};

constexpr std::array kPaperCodes = {2, 3, 4, 5, 6, 2}; // the last: custom, scanned as A4
constexpr int kDefaultDpi = 300;
constexpr char kRotationProperty[] = "rotationCode";

// Stored in the settings in every language.
QString storedCustom()
{
    return QStringLiteral("自定义");
}

int validCustomDpi(const QString& text) // 0: not usable
{
    bool isNumber = false;
    const int dpi = text.trimmed().toInt(&isNumber);
    return isNumber && dpi >= ScanPageLogic::kMinCustomDpi && dpi <= ScanPageLogic::kMaxCustomDpi ? dpi : 0;
}

const char* rotationLabel(ScanPageLogic::Side side, int code)
{
    static constexpr const char* front[] = {QT_TRANSLATE_NOOP("ScanPageLogic", "正面旋转0°"),
                                            QT_TRANSLATE_NOOP("ScanPageLogic", "正面左转90°"),
                                            QT_TRANSLATE_NOOP("ScanPageLogic", "正面旋转180°"),
                                            QT_TRANSLATE_NOOP("ScanPageLogic", "正面右转90°")};
    static constexpr const char* back[] = {QT_TRANSLATE_NOOP("ScanPageLogic", "反面旋转0°"),
                                           QT_TRANSLATE_NOOP("ScanPageLogic", "反面左转90°"),
                                           QT_TRANSLATE_NOOP("ScanPageLogic", "反面旋转180°"),
                                           QT_TRANSLATE_NOOP("ScanPageLogic", "反面右转90°")};
    const int known = code < 0 || code > 3 ? 3 : code;
    return (side == ScanPageLogic::Side::Front ? front : back)[known];
}

template <size_t N>
void setData(QComboBox* combo, const std::array<int, N>& values)
{
    for (int i = 0; i < combo->count() && i < static_cast<int>(N); ++i)
        combo->setItemData(i, values[static_cast<size_t>(i)]);
}

// The control's own state: a page that is disabled as a whole while a batch runs keeps what was chosen on it.
bool isUsable(const QWidget* control)
{
    return !control->testAttribute(Qt::WA_ForceDisabled);
}

int boundedIndex(const QComboBox* combo, int index)
{
    return qMin(index, combo->count() - 1);
}

} // namespace

ScanPageLogic::ScanPageLogic(const ScanPageControls& controls, QObject* parent)
    : QObject(parent), m_c(controls)
{
    setItemData();
    m_c.resolutionText->setValidator(new QIntValidator(kMinCustomDpi, kMaxCustomDpi, m_c.resolutionText));
    m_resolutionWarning = m_c.resolutionText->addAction(
        m_c.resolutionText->style()->standardIcon(QStyle::SP_MessageBoxWarning), QLineEdit::TrailingPosition);
    m_resolutionWarning->setToolTip(tr("请输入 50 至 1200 之间的分辨率"));
    if (m_c.split)
        m_c.split->setIcon(splitPageIcon());
    setRotation(Side::Front, Upright);
    setRotation(Side::Back, Upright);
    connectOwnSignals();
    settingsLoaded();
}

void ScanPageLogic::setItemData()
{
    setData(m_c.source, std::array{1, 2, 3, 4, 5});
    setData(m_c.paperSize, kPaperCodes);
    setData(m_c.colorMode, std::array<int, 3>{BlackWhite, Grey, Color});
    for (int i = 0; i < m_c.resolution->count(); ++i) // the last item is no number: 0, custom
        m_c.resolution->setItemData(i, m_c.resolution->itemText(i).toInt());
    explainControls(m_c);
}

void ScanPageLogic::connectOwnSignals()
{
    connect(m_c.handAdjust, &QCheckBox::clicked, this, &ScanPageLogic::handAdjustClicked);
    connect(m_c.resolutionText, &QLineEdit::textChanged, this, &ScanPageLogic::resolutionTextChanged);
    connect(m_c.paperSize, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ScanPageLogic::paperSizeChanged);
    // The window has slots for the user's clicks; the dependent controls follow any change of these two.
    connect(m_c.combine, &QCheckBox::toggled, this, &ScanPageLogic::updateEnabled);
    if (m_c.split)
        connect(m_c.split, &QAbstractButton::toggled, this, &ScanPageLogic::updateEnabled);
}

void ScanPageLogic::followControls()
{
    using L = ScanPageLogic;
    const auto combo = [this](QComboBox* box, void (L::*slot)()) {
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, slot);
    };
    combo(m_c.source, &L::sourceChanged);
    combo(m_c.resolution, &L::resolutionChanged);
    combo(m_c.colorMode, &L::colorModeChanged);
    combo(m_c.fileType, &L::fileTypeChanged);
    const auto click = [this](QAbstractButton* button, void (L::*slot)()) {
        if (button)
            connect(button, &QAbstractButton::clicked, this, slot);
    };
    click(m_c.front, &L::frontClicked);
    click(m_c.back, &L::backClicked);
    click(m_c.duplex, &L::doubleClicked);
    click(m_c.split, &L::splitClicked);
    click(m_c.combine, &L::combineClicked);
    click(m_c.redFile, &L::redFileClicked);
    click(m_c.autoCut, &L::autoCutClicked);
    connect(m_c.lightness, &QSlider::valueChanged, this, &L::lightnessChanged);
    connect(m_c.contrast, &QSlider::valueChanged, this, &L::contrastChanged);
    connect(m_c.gamma, &QSlider::valueChanged, this, &L::gammaChanged);
}

void ScanPageLogic::sourceChanged()
{
    switch (m_c.source->currentIndex()) {
    case FeederBack:
        m_c.back->setChecked(true);
        break;
    case FeederDuplex:
        m_c.duplex->setChecked(true);
        break;
    default:
        m_c.front->setChecked(true);
    }
    if (!isAutoRotate())
        cancelAutoRotateState();
    updateEnabled();
}

void ScanPageLogic::resolutionChanged()
{
    const bool custom = isCustomSelected();
    m_c.resolutionText->setText(custom ? m_customText
                                       : QString::number(m_c.resolution->currentData().toInt()));
    m_c.resolutionText->setEnabled(custom);
    resolutionTextChanged();
}

void ScanPageLogic::resolutionTextChanged()
{
    const bool custom = isCustomSelected();
    if (custom && m_c.resolutionText->isEnabled())
        m_customText = m_c.resolutionText->text();
    m_resolutionWarning->setVisible(custom && validCustomDpi(m_c.resolutionText->text()) == 0);
}

void ScanPageLogic::colorModeChanged()
{
    const QSignalBlocker blocker(m_c.fileType); // shown, not chosen
    m_c.fileType->setCurrentIndex(fileFormat());
    updateEnabled();
}

void ScanPageLogic::fileTypeChanged()
{
    formatCombo()->setCurrentIndex(m_c.fileType->currentIndex());
}

void ScanPageLogic::paperSizeChanged()
{
    m_c.paperSize->setToolTip(isPaperCustom() ? tr("按 A4 扫描，再裁切到自定义的尺寸")
                                              : tr("扫描的范围；“自定义”按 A4 扫描，再裁切到设定的大小"));
}

void ScanPageLogic::frontClicked()
{
    selectSource(FeederFront);
}

void ScanPageLogic::backClicked()
{
    selectSource(FeederBack);
}

void ScanPageLogic::doubleClicked()
{
    selectSource(FeederDuplex);
}

void ScanPageLogic::selectSource(int index)
{
    m_c.source->setCurrentIndex(index);
    sourceChanged();
}

void ScanPageLogic::splitClicked()
{
    if (m_c.split->isChecked())
        m_c.combine->setChecked(false);
    updateEnabled();
}

void ScanPageLogic::combineClicked()
{
    if (m_c.combine->isChecked() && m_c.split)
        m_c.split->setChecked(false);
    updateEnabled();
}

void ScanPageLogic::redFileClicked()
{
    if (m_c.redFile->isChecked())
        m_c.delColor->setChecked(false);
    updateEnabled();
}

void ScanPageLogic::autoCutClicked()
{
    updateEnabled();
}

void ScanPageLogic::handAdjustClicked()
{
    if (m_c.handAdjust->isChecked())
        cancelAutoRotateState();
    else
        setAutoRotateState();
}

void ScanPageLogic::lightnessChanged()
{
    m_c.lightnessValue->setText(QString::number(m_c.lightness->value()));
}

void ScanPageLogic::contrastChanged()
{
    m_c.contrastValue->setText(QString::number(m_c.contrast->value()));
}

void ScanPageLogic::gammaChanged()
{
    m_c.gammaValue->setText(QString::number(m_c.gamma->value() / 100.0, 'f', 2));
}

void ScanPageLogic::setAutoRotateState()
{
    setRotationLabels(false, false);
}

void ScanPageLogic::setRotateState()
{
    const int source = m_c.source->currentIndex();
    setRotationLabels(source != FeederBack, source == FeederBack || source == FeederDuplex);
}

void ScanPageLogic::doubleRotateState()
{
    setRotationLabels(true, true);
}

void ScanPageLogic::cancelAutoRotateState()
{
    setRotateState();
}

void ScanPageLogic::setRotationLabels(bool front, bool back)
{
    m_c.frontRotation->setEnabled(front);
    m_c.backRotation->setEnabled(back);
    m_c.handAdjust->setChecked(front || back);
}

// The label's own state counts: inside a page that is disabled as a whole its rotation is still the chosen
// one.
bool ScanPageLogic::isAutoRotate() const
{
    return !isUsable(m_c.frontRotation) && !isUsable(m_c.backRotation);
}

void ScanPageLogic::setRotation(Side side, int code)
{
    const int known = code < Upright || code > Right90 ? static_cast<int>(Right90) : code;
    QLabel* label = side == Side::Front ? m_c.frontRotation : m_c.backRotation;
    label->setProperty(kRotationProperty, known);
    label->setText(rotationText(side, known));
}

int ScanPageLogic::rotation(Side side) const
{
    return (side == Side::Front ? m_c.frontRotation : m_c.backRotation)->property(kRotationProperty).toInt();
}

void ScanPageLogic::setDefaults()
{
    m_customText = QStringLiteral("300");
    m_c.source->setCurrentIndex(FeederFront);
    m_c.paperSize->setCurrentIndex(boundedIndex(m_c.paperSize, 1));
    m_c.colorMode->setCurrentIndex(Color);
    m_c.resolution->setCurrentIndex(m_c.resolution->findData(kDefaultDpi));
    for (QComboBox* combo : {m_c.threshold, m_c.colorFilter, m_c.deScreen, m_c.filter, m_c.colorFormat,
                             m_c.greyFormat, m_c.bwFormat})
        combo->setCurrentIndex(0);
    m_c.application->setCurrentIndex(boundedIndex(m_c.application, 0));
    m_c.lightness->setValue(15);
    m_c.contrast->setValue(35);
    m_c.gamma->setValue(120);
    for (QCheckBox* box :
         {m_c.contiScan, m_c.colorMatch, m_c.autoCut, m_c.delBlank, m_c.imgMend, m_c.outMutiImg, m_c.fillHole,
          m_c.delBackground, m_c.delColor, m_c.characEnhance, m_c.redFile, m_c.combine, m_c.appStart})
        box->setChecked(false);
    m_c.split->setChecked(false);
    m_c.autoCrowed->setChecked(true);
    m_c.autoRight->setChecked(true);
    m_c.delBlank->setEnabled(true);
    m_c.handAdjust->setEnabled(true);
    m_c.vertical->setChecked(true);
    setRotation(Side::Front, Upright);
    setRotation(Side::Back, Upright);
    setAutoRotateState();
    settingsLoaded();
}

void ScanPageLogic::settingsLoaded()
{
    const bool front = isUsable(m_c.frontRotation);
    const bool back = isUsable(m_c.backRotation);
    const bool manual = m_c.handAdjust->isChecked() && isUsable(m_c.handAdjust);
    if (front || back)
        setRotationLabels(front, back); // as stored, whatever the source
    else if (manual)
        cancelAutoRotateState();
    const int index = m_c.source->currentIndex();
    (index == FeederBack ? m_c.back : index == FeederDuplex ? m_c.duplex : m_c.front)->setChecked(true);
    resolutionChanged();
    colorModeChanged();
    paperSizeChanged();
    lightnessChanged();
    contrastChanged();
    gammaChanged();
}

void ScanPageLogic::updateEnabled()
{
    const int source = m_c.source->currentIndex();
    const bool feeder = source == FeederFront || source == FeederBack || source == FeederDuplex;
    for (QRadioButton* side : {m_c.front, m_c.back, m_c.duplex})
        side->setEnabled(feeder);
    m_c.combine->setEnabled(source == FeederDuplex);
    const bool merging = m_c.combine->isChecked() && source == FeederDuplex;
    const bool direction = merging || (m_c.split && m_c.split->isChecked());
    m_c.horizontal->setEnabled(direction);
    m_c.vertical->setEnabled(direction);
    if (m_c.mergeByHand)
        m_c.mergeByHand->setEnabled(merging);
    m_c.threshold->setEnabled(colorMode() == BlackWhite);
    if (m_c.noise)
        m_c.noise->setEnabled(colorMode() == BlackWhite);
    m_c.outMutiImg->setEnabled(colorMode() != BlackWhite); // the copies have less colour than the page
}

int ScanPageLogic::scanResolution() const
{
    if (!isCustomSelected())
        return m_c.resolution->currentData().toInt();
    return m_c.resolutionText->text().toInt() <= 300 ? 300 : 600;
}

int ScanPageLogic::sourceNumber() const
{
    return m_c.source->currentData().toInt();
}

int ScanPageLogic::paperCode() const
{
    return m_c.paperSize->currentData().toInt();
}

int ScanPageLogic::fieldDpi() const
{
    if (!isCustomSelected())
        return m_c.resolution->currentData().toInt();
    const int dpi = validCustomDpi(m_c.resolutionText->text());
    return dpi != 0 ? dpi : scanResolution();
}

bool ScanPageLogic::isPaperCustom() const
{
    return m_c.paperSize->currentIndex() == m_c.paperSize->count() - 1;
}

bool ScanPageLogic::isCustomSelected() const
{
    return m_c.resolution->currentIndex() == m_c.resolution->count() - 1;
}

bool ScanPageLogic::isResolutionCustom() const
{
    return isCustomSelected() && validCustomDpi(m_c.resolutionText->text()) != 0;
}

bool ScanPageLogic::isFinerThan400() const
{
    return !isCustomSelected() && m_c.resolution->currentData().toInt() == 400;
}

ScanPageLogic::ColorMode ScanPageLogic::colorMode() const
{
    return static_cast<ColorMode>(m_c.colorMode->currentData().toInt());
}

QComboBox* ScanPageLogic::formatCombo() const
{
    if (!m_c.colorFormat)
        return m_c.fileType;
    switch (colorMode()) {
    case BlackWhite:
        return m_c.bwFormat;
    case Grey:
        return m_c.greyFormat;
    default:
        return m_c.colorFormat;
    }
}

int ScanPageLogic::fileFormat() const
{
    return formatCombo()->currentIndex();
}

bool ScanPageLogic::isOn(const QAbstractButton* button)
{
    return button->isChecked() && isUsable(button);
}

void ScanPageLogic::setCustomResolutionText(const QString& text)
{
    m_customText = validCustomDpi(text) != 0 ? text.trimmed() : QStringLiteral("300");
    if (isCustomSelected())
        m_c.resolutionText->setText(m_customText);
}

QString ScanPageLogic::resolutionStoredText() const
{
    return isCustomSelected() ? storedCustom() : QString::number(m_c.resolution->currentData().toInt());
}

QString ScanPageLogic::rotationText(Side side, int code)
{
    return tr(rotationLabel(side, code));
}

QString ScanPageLogic::storedRotationText(Side side, int code)
{
    return QString::fromUtf8(rotationLabel(side, code));
}

int ScanPageLogic::rotationCode(const QString& text)
{
    for (const int code : {Upright, Left90, Half})
        if (text == storedRotationText(Side::Front, code) || text == storedRotationText(Side::Back, code))
            return code;
    return Right90;
}

double ScanPageLogic::clockwiseDegrees(int code)
{
    constexpr std::array degrees = {0.0, 270.0, 180.0, 90.0};
    return code < 0 || code >= static_cast<int>(degrees.size()) ? 0.0 : degrees[static_cast<size_t>(code)];
}
