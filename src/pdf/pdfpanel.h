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

public slots:
    // What the watcher of the scanner's keys reports: 4 off-line, 5 on-line.
    void scannerOnLineFlagslots(int code);

signals:
    void sendPDFProcessMessg(const QString& text);

private:
    bool m_online = false;
};
