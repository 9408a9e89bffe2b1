// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/functionpanel.h"

// The panel of the "OCR  Utility" function.
class ocrpanel : public FunctionPanel
{
    Q_OBJECT
public:
    explicit ocrpanel(QWidget* parent = nullptr);

    // Not available yet: says so and ends the job.
    void scanButtonClicked();

signals:
    void sendOCRProcessMessg(const QString& text);
};
