// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/ocrpanel.h"

ocrpanel::ocrpanel(QWidget* parent)
    : FunctionPanel(QStringLiteral("OCR  Utility"), tr("扫描文字稿件并识别为可编辑的文字或 Word 文档。"), parent)
{
}

void ocrpanel::scanButtonClicked()
{
    emit sendOCRProcessMessg(tr("OCR 功能尚未提供"));
    emit sendOCRProcessMessg(QStringLiteral("1234"));
}
