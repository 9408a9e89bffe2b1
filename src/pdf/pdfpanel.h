// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/functionpanel.h"

// The panel of the "PDF  Utility" function.
class pdfpanel : public FunctionPanel
{
    Q_OBJECT
public:
    explicit pdfpanel(QWidget* parent = nullptr);

    // Not available yet: says so and ends the job.
    void scanButtonClicked();

signals:
    void sendPDFProcessMessg(const QString& text);
};
