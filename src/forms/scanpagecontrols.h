// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QAbstractButton;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QSlider;

// The controls of one form that scans (the window's scan page and file page, a function's panel) under names
// that all share. The forms have different object names; all rules and settings work on this struct.
struct ScanPageControls
{
    // paper
    QComboBox* source = nullptr;    // 0 flatbed, 1 feeder front, 2 feeder back, 3 feeder duplex, 4 automatic
    QComboBox* paperSize = nullptr; // last item: custom
    QRadioButton* front = nullptr;
    QRadioButton* back = nullptr;
    QRadioButton* duplex = nullptr;
    QComboBox* colorMode = nullptr;  // 0 black and white, 1 grey, 2 colour
    QComboBox* resolution = nullptr; // last item: custom
    QLineEdit* resolutionText = nullptr;
    // tone
    QSlider* lightness = nullptr; // -100 to 100
    QSlider* contrast = nullptr;  // -100 to 100
    QSlider* gamma = nullptr;     // hundredths
    QLabel* lightnessValue = nullptr;
    QLabel* contrastValue = nullptr;
    QLabel* gammaValue = nullptr;
    QComboBox* threshold = nullptr; // 0 automatic, 1 custom
    QComboBox* colorFilter = nullptr;
    QComboBox* deScreen = nullptr;
    QComboBox* filter = nullptr;
    QComboBox* noise = nullptr; // 0 none, 1 custom, 2 automatic; null: as the settings say
    // corrections
    QCheckBox* contiScan = nullptr;
    QCheckBox* colorMatch = nullptr;
    QCheckBox* autoCrowed = nullptr; // dense
    QCheckBox* autoCut = nullptr;    // crop
    QCheckBox* autoRight = nullptr;  // deskew
    QCheckBox* delBlank = nullptr;
    QCheckBox* imgMend = nullptr;
    QCheckBox* outMutiImg = nullptr;
    QCheckBox* fillHole = nullptr;
    QCheckBox* delBackground = nullptr;
    QCheckBox* delColor = nullptr;
    QCheckBox* characEnhance = nullptr;
    QCheckBox* redFile = nullptr;
    // pages
    QCheckBox* combine = nullptr;
    QAbstractButton* split = nullptr;     // pages are cut into pieces; null in forms that have splitFile
    QAbstractButton* splitFile = nullptr; // a document gets a fixed number of pages; null: no such choice
    QCheckBox* handAdjust = nullptr;      // fixed instead of automatic rotation
    QCheckBox* mergeByHand = nullptr;     // pages are left for merging by hand; null: no such choice
    QRadioButton* horizontal = nullptr;
    QRadioButton* vertical = nullptr;
    QLabel* frontRotation = nullptr; // the text names the turn; enabled: this turn is used
    QLabel* backRotation = nullptr;  // both disabled: automatic orientation
    // output
    QComboBox* fileType = nullptr;    // shows and sets the format of the current colour mode
    QComboBox* colorFormat = nullptr; // the formats per colour mode (not shown); null: one for all modes
    QComboBox* greyFormat = nullptr;
    QComboBox* bwFormat = nullptr;
    QCheckBox* appStart = nullptr;
    QComboBox* application = nullptr;
    QAbstractButton* appendApp = nullptr; // null in panels: a dialog edits the list
    QAbstractButton* editApp = nullptr;
    QAbstractButton* deleteApp = nullptr;
};
