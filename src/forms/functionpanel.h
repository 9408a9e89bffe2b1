// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// The common look of a function panel that has no form of its own yet: a title and its description line.
class FunctionPanel : public QWidget
{
    Q_OBJECT
public:
    FunctionPanel(const QString& title, const QString& description, QWidget* parent = nullptr);
};
