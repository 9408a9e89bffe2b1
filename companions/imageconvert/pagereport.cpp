// SPDX-License-Identifier: GPL-3.0-or-later
#include "pagereport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace companion {

namespace {

// Enough digits for a reader, none of binary noise.
double rounded(double value, int decimals)
{
    const double scale = std::pow(10, decimals);
    return std::round(value * scale) / scale;
}

QJsonValue orNull(const std::optional<double>& value, int decimals)
{
    return value ? QJsonValue(rounded(*value, decimals)) : QJsonValue();
}

QJsonValue orNull(const QString& text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonObject timesOf(const PageReport& report)
{
    QJsonObject times;
    for (const PageReport::Time& time : report.times)
        times[time.operation] = rounded(times[time.operation].toDouble() + time.ms, 2);
    return times;
}

} // namespace

QByteArray reportLine(const PageReport& report)
{
    const PageMeasures& measures = report.measures;
    const std::optional<QRect>& crop = measures.cropBox;
    const QJsonObject line{
        {QStringLiteral("file"), report.file},
        {QStringLiteral("out"), orNull(report.out)},
        {QStringLiteral("width"), report.width > 0 ? QJsonValue(report.width) : QJsonValue()},
        {QStringLiteral("height"), report.height > 0 ? QJsonValue(report.height) : QJsonValue()},
        {QStringLiteral("blank"), report.blank ? QJsonValue(*report.blank) : QJsonValue()},
        {QStringLiteral("blank_score"), orNull(measures.blankPercent, 4)},
        {QStringLiteral("crop"),
         crop ? QJsonValue(QJsonArray{crop->x(), crop->y(), crop->width(), crop->height()}) : QJsonValue()},
        {QStringLiteral("skew_deg"), orNull(measures.skewDeg, 3)},
        {QStringLiteral("turn"), report.turn ? QJsonValue(*report.turn) : QJsonValue()},
        {QStringLiteral("confidence"), orNull(report.confidence, 2)},
        {QStringLiteral("ms"), timesOf(report)},
        {QStringLiteral("error"), orNull(report.error)},
    };
    return QJsonDocument(line).toJson(QJsonDocument::Compact);
}

} // namespace companion
