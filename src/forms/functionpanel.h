// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QVBoxLayout;

// The common look of a function panel that has no form of its own yet: a title and its description line.
class FunctionPanel : public QWidget
{
    Q_OBJECT
public:
    FunctionPanel(const QString& title, const QString& description, QWidget* parent = nullptr);

protected:
    // Puts a widget below what is there; one with a stretch takes the panel's spare height.
    void addContent(QWidget* content, int stretch = 0);

private:
    QVBoxLayout* m_layout;
};
