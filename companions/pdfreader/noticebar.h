// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace reader {

// One line of news above the pages, with or without something to do about it.
class NoticeBar : public QWidget
{
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent = nullptr);
    void tell(const QString& text, const QString& action = {});

signals:
    void actionChosen();

private:
    QLabel* m_text;
    QPushButton* m_action;
};

} // namespace reader
