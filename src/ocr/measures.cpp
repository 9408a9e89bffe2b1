// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/measures.h"

#include <algorithm>

namespace {

QString formatted(float value)
{
    return QString::number(static_cast<double>(value), 'g', 6);
}

QString beforePoint(const QString& number)
{
    return number.left(number.indexOf(QLatin1Char('.'))); // -1, no point: all of it
}

QString whole(float value)
{
    return beforePoint(formatted(value));
}

} // namespace

QString getTop(int px)
{
    return whole(static_cast<float>(px) * 0.25F);
}

QString getLeft(int px)
{
    return getTop(px);
}

QString getWidth(int px)
{
    return whole(static_cast<float>(px) / 2.5F);
}

QString getHeight(int px)
{
    return whole(static_cast<float>(px) * 0.5F);
}

QString getFontSize(int px)
{
    struct Step
    {
        int from, to;
        const char* size;
    };
    constexpr Step kSteps[] = {
        {43, 47, "18"}, {51, 55, "21"}, {59, 63, "24"}, {69, 73, "28"}, {74, 78, "30"}};
    for (const Step& step : kSteps)
        if (px >= step.from && px <= step.to)
            return QLatin1String(step.size);
    return whole(static_cast<float>(px) * 0.4F);
}

QString getPSFontSize(int a, int b)
{
    return b == 0 ? QStringLiteral("0") : whole(static_cast<float>(a) / static_cast<float>(b));
}

QString getPSLineSpacing(int a, int n)
{
    return n < 2 ? QStringLiteral("0") : whole(static_cast<float>(a) / static_cast<float>(n - 1) * 1.2F);
}

QString getPresent(int a, int b)
{
    if (b == 0)
        return QStringLiteral("0");
    return beforePoint(formatted(static_cast<float>(a) * 100.0F / static_cast<float>(b)).left(2));
}

bool isDigitStr(const QString& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
}
