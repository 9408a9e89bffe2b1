// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;
class StatusIcon;

// The status window of a batch, in front of all other windows of the program: what the scanner does, a fault
// until it is confirmed, the question for the next page. During a batch it offers to cancel. GUI thread.
class stateInfoPanel : public QDialog
{
    Q_OBJECT
public:
    explicit stateInfoPanel(QWidget* parent = nullptr);

    void setShowString(const QString& text);
    QString showString() const;

    // The confirm button: its name, and whether it is offered. A batch hides it, which begins the batch for
    // this window: the button that cancels takes its place.
    void setButtonName(const QString& name);
    void setButtonHide();
    bool getButtonState() const;

    // Hides the window and ends the batch for it. An open question is answered with "no more pages".
    void closeWindow();

public slots:
    // "setButtonHide", "showWindow", "closeWindow" or a text to show; the text of a fault brings the confirm
    // button back.
    void stateInfoPanelSlot(const QString& commandOrText);

    // Asks whether another page of the same batch follows; nextPageAnswered() tells the answer, once.
    void askNextPage();

signals:
    // The user cancelled; the cancel flag is set already.
    void cancelRequested();
    // The text was confirmed and the window is closed.
    void confirmed();
    void nextPageAnswered(bool another);

protected:
    // Esc: cancels, confirms or declines, whatever the window offers.
    void reject() override;
    void closeEvent(QCloseEvent* event) override;

private:
    enum class Mode
    {
        Notice, // a text and the confirm button
        Batch,  // progress and the cancel button
        Cancelling,
        Question,
    };

    QWidget* makeButtons();
    void setMode(Mode mode);
    void showText();
    void followText();
    void cancel();
    void confirm();
    void answer(bool another);

    Mode m_mode = Mode::Notice;
    bool m_batchRuns = false;
    QString m_text; // what the scanner or the program said last
    StatusIcon* m_icon;
    QLabel* m_label;
    QProgressBar* m_progress;
    QPushButton* m_confirm = nullptr;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_continue = nullptr;
    QPushButton* m_finish = nullptr;
};
