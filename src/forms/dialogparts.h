// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequence>
#include <QString>

class QDialogButtonBox;
class QLabel;
class QWidget;

// Small things that every dialog of this room does the same way.
namespace dialogparts {

// Gives `control` an access key (for texts that carry no "&") and names the key in its tool tip. Buttons are
// clicked, other controls take the focus.
void addAccessKey(QWidget* control, const QKeySequence& key);

// Our own texts for OK, Cancel, Apply and RestoreDefaults, whatever the toolkit translates.
void useChineseButtons(QDialogButtonBox* box);

bool hasControlCharacters(const QString& text);

// What is wrong with `prefix` as the beginning of a file name, for the user; empty when nothing is.
QString prefixProblem(const QString& prefix);

// The message for settings that could not be written.
QString cannotStore();

// Explanations in a quieter colour of the desktop's palette.
void styleHelp(QLabel* label);

// Shows `text` as a message (bold, with a warning sign); an empty text hides the label.
void showMessage(QLabel* label, const QString& text);

// As showMessage(), and moves the focus into `field`, whose content is to be corrected.
void refuse(QLabel* label, const QString& text, QWidget* field);

// Lets the user choose a folder, beginning at `start` or what exists above it; empty when they changed their
// mind.
QString chooseFolder(QWidget* parent, const QString& start);

} // namespace dialogparts
