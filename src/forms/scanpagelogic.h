// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include "forms/scanpagecontrols.h"

class QAbstractButton;
class QAction;

// The rules between the controls of one form that scans (a page of the window or a function's panel): which
// control enables, presets or follows which, and the values that a scan takes from them. It changes controls
// only; it neither reads nor writes settings and starts nothing. All rules go by index and item data, never
// by displayed text.
//
// The constructor gives the combos their item data and connects the few controls whose signals the window has
// no slot for; the window's slots call the other operations. GUI thread only; the controls must outlive it.
class ScanPageLogic : public QObject
{
    Q_OBJECT
public:
    enum class Side
    {
        Front,
        Back
    };
    // Rotation code of a side, as stored in the settings.
    enum RotationCode
    {
        Upright = 0,
        Left90 = 1,
        Half = 2,
        Right90 = 3
    };
    enum ColorMode
    {
        BlackWhite = 0,
        Grey = 1,
        Color = 2
    };

    static constexpr int kMinCustomDpi = 50;
    static constexpr int kMaxCustomDpi = 1200;

    explicit ScanPageLogic(const ScanPageControls& controls, QObject* parent = nullptr);

    const ScanPageControls& controls() const { return m_c; }

    // For a form without slots of its own: the rules below follow the controls' signals.
    void followControls();

    // Called by the window's slots of the same meaning. Each may be called at any time and any number of
    // times.
    void sourceChanged(); // the side radios follow, merging is for duplex, fixed rotations follow the sides
    void resolutionChanged(); // copies the combo's text into the field and disables it, except for "custom"
    void resolutionTextChanged(); // remembers the typed custom value, marks a bad one
    void colorModeChanged();      // shows the format of this colour mode; threshold for black and white only
    void fileTypeChanged();       // the shown format becomes that of the current colour mode
    void paperSizeChanged();      // says how a custom size is scanned
    void frontClicked();          // the feeder source follows the side
    void backClicked();
    void doubleClicked();
    void splitClicked(); // a page is merged or split, not both
    void combineClicked();
    void redFileClicked(); // a red header is not dropped as a colour
    void autoCutClicked();
    void handAdjustClicked(); // on: fixed rotation, off: automatic orientation
    void lightnessChanged();  // the labels beside the sliders
    void contrastChanged();
    void gammaChanged(); // "1.20"

    // Which rotation is used for a page: that of an enabled label; none enabled means automatic orientation.
    void setAutoRotateState();    // none
    void setRotateState();        // the label of the scanned side (both for duplex)
    void doubleRotateState();     // both
    void cancelAutoRotateState(); // the label or labels of the scan type
    bool isAutoRotate() const;
    void setRotation(Side side, int code); // another code than 0 to 3 counts as 3
    int rotation(Side side) const;         // 0 to 3

    // Factory values of every control of a page of the window; the application list stays.
    void setDefaults();
    // After the controls were filled from settings: puts labels, fields and enabled states in order. Fixed
    // rotation is on when a rotation label or the "manual rotation" box says so.
    void settingsLoaded();

    // What a scan takes from the controls.
    int scanResolution() const;      // dpi for the device; custom: 300 up to 300, else 600
    int sourceNumber() const;        // 1 flatbed, 2 front, 3 back, 4 duplex, 5 automatic
    int paperCode() const;           // 2 A4, 3 Letter, 4 A5, 5 B5, 6 Legal; custom: 2
    int fieldDpi() const;            // the resolution field; an unusable custom value: what is scanned
    bool isPaperCustom() const;      // a custom size is cut by software
    bool isResolutionCustom() const; // the page is resampled to fieldDpi(): custom, 50 to 1200
    bool isFinerThan400() const;     // 400 was chosen: the device delivers 600
    ColorMode colorMode() const;
    int fileFormat() const; // format index of the current colour mode: 0 JPEG, 1 TIFF, 2 PNG, 3 BMP
    // Checked and enabled; a page or window that is disabled around the control does not switch it off.
    static bool isOn(const QAbstractButton* button);

    // The typed custom resolution (also while another one is selected) and the text stored for the combo.
    QString customResolutionText() const { return m_customText; }
    void setCustomResolutionText(const QString& text); // an unusable text becomes "300"
    QString resolutionStoredText() const;              // "100" to "600" or "自定义", in every language

    // The text of a rotation label, for example "正面左转90°", as shown and as stored: the stored one is
    // Chinese in every language.
    static QString rotationText(Side side, int code);
    static QString storedRotationText(Side side, int code);
    // The code of a stored text; any text that is not one of the first three counts as 3.
    static int rotationCode(const QString& text);
    static double clockwiseDegrees(int code); // 0, 270, 180, 90

private:
    void setItemData();
    void connectOwnSignals();
    void updateEnabled();
    void selectSource(int index);
    void setRotationLabels(bool front, bool back);
    bool isCustomSelected() const;
    QComboBox* formatCombo() const;

    ScanPageControls m_c;
    QString m_customText = QStringLiteral("300");
    QAction* m_resolutionWarning = nullptr;
};
