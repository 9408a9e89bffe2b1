// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/settingbinding.h"

#include <QDialog>
#include <utility>
#include <vector>

class QFormLayout;
class QLabel;
class QSlider;
class QVBoxLayout;

// What the dialogs have in common that edit one group of the main settings file: a title, a line that says
// what the settings do to the page, the controls, a message, and the buttons 确定, 取消 and 默认值. A dialog
// adds its controls in its constructor, binds them (one that binds none stores nothing), and calls
// showStored() last. GUI thread.
class SettingsDialog : public QDialog
{
    Q_OBJECT
public:
    SettingsDialog(const QString& title, const QString& help, const QString& group, QWidget* parent);

    void accept() override; // stores and closes; stays open with a message when that fails

public slots:
    void setDefaults(); // the group's factory values into the controls; nothing is stored

protected:
    void showEvent(QShowEvent* event) override;

    QVBoxLayout* body() const { return m_body; }
    SettingBinding& binding() { return m_binding; }
    const QString& group() const { return m_group; }

    // A row of `form`: the label's "&" letter leads to the control; without a label the control has a text of
    // its own. `key` names the control.
    void addRow(QFormLayout* form, const QString& label, QWidget* control, const char* key,
                const QString& tip);
    // A slider with its value beside it.
    QSlider* addSlider(QFormLayout* form, const QString& label, const char* key, int least, int most,
                       const QString& tip);
    // An explanation among the controls.
    QLabel* addHelp(const QString& text);

    // Reads the stored values and follows the controls from then on; adds the buttons.
    void showStored();
    // Called after any change of a control: what follows from the values.
    virtual void valuesChanged() {}
    // The controls that belong to no key of the group.
    virtual void setOwnDefaults() {}

private:
    void addButtons();
    bool store();
    void showNumbers(); // beside the sliders: reading values is silent

    QString m_group;
    SettingBinding m_binding;
    QVBoxLayout* m_body;
    QLabel* m_message = nullptr;
    std::vector<std::pair<QSlider*, QLabel*>> m_numbers;
};
