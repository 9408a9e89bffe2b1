// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/textline.h"

QString doubtfulMarker()
{
    return QStringLiteral("ocrResultLowConf\n");
}

QString cleanedText(const QString& text)
{
    QString cleaned = text;
    cleaned.remove(QLatin1Char(' '));
    return cleaned.replace(QLatin1Char('o'), QStringLiteral("。"));
}
