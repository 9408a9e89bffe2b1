// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <memory>

class QAbstractButton;
class QButtonGroup;

namespace Ui {
class RotateSet;
}

// How pages are turned. Turn codes: 0 none, 1 left 90°, 2 180°, 3 right 90°.
struct RotationChoice
{
    bool automatic = true; // by the page's text; the codes are kept but not used
    int front = 0;
    int back = 0;
};

enum class ScanSides
{
    Front,
    Back,
    Both
};

// The dialog behind the page-rotation button. It stores nothing: the caller takes choice() when it was
// accepted. Only the scanned side's turns are shown.
class RotateSet : public QDialog
{
    Q_OBJECT
public:
    RotateSet(const RotationChoice& choice, ScanSides sides, QWidget* parent = nullptr);
    ~RotateSet() override;

    RotationChoice choice() const;

private:
    void fill(QButtonGroup* group, const QList<QAbstractButton*>& buttons, bool back, int checked);

    std::unique_ptr<Ui::RotateSet> m_ui;
    QButtonGroup* m_front;
    QButtonGroup* m_back;
};
