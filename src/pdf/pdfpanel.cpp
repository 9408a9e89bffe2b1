// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/pdfpanel.h"

pdfpanel::pdfpanel(QWidget* parent)
    : FunctionPanel(QStringLiteral("PDF  Utility"),
                    tr("扫描文字稿件并将影像转换成可搜索pdf文件或pdf影像文件。"), parent)
{
}

void pdfpanel::scanButtonClicked()
{
    emit sendPDFProcessMessg(tr("PDF 功能尚未提供"));
    emit sendPDFProcessMessg(QStringLiteral("1234"));
}

void pdfpanel::scannerOnLineFlagslots(int code)
{
    constexpr int kOffline = 4;
    m_online = code != kOffline;
}
