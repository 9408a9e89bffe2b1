// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// The picture beside the text of the status window: a sheet under the scan line, a warning, or a question.
class StatusIcon : public QWidget
{
public:
    enum class Kind
    {
        Scanning,
        Warning,
        Question,
    };

    explicit StatusIcon(QWidget* parent = nullptr);

    void setKind(Kind kind);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kind m_kind = Kind::Scanning;
};
