// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;
class QWidget;

// Boxes titled "提示" whose buttons have our own texts, whatever the toolkit translates.
namespace questionbox {

// Yes or no; the Enter and Escape keys mean no.
bool ask(QWidget* parent, const QString& text);
// With an OK button.
void inform(QWidget* parent, const QString& text);

} // namespace questionbox
