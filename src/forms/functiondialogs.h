// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class FunctionControls;
class QWidget;

// The dialogs behind the buttons of a form that scans. Each stores its settings and puts what belongs to the
// form's own controls into them. True when the user has confirmed.
bool editRotation(FunctionControls& function, QWidget* parent);
bool editSaveRules(FunctionControls& function, QWidget* parent);
bool editBorder(QWidget* parent);
bool editNoise(FunctionControls& function, QWidget* parent);
bool editPaperSize(FunctionControls& function, QWidget* parent);
bool editOutput(FunctionControls& function, QWidget* parent);
bool editCompression(QWidget* parent);

// The menu of the button 更多, with those of these dialogs that have no button of their own.
void showMoreSettings(FunctionControls& function, QWidget* button);
