// SPDX-License-Identifier: GPL-3.0-or-later
#include "errorlog.h"

#include <QLoggingCategory>
#include <algorithm>
#include <poppler-qt5.h>

namespace reader {
namespace {

constexpr int kMostErrors = 50;

QStringList& errors()
{
    thread_local QStringList list;
    return list;
}

void gather(const QString& message, const QVariant&)
{
    if (errors().size() >= kMostErrors)
        return;
    errors() << message;
    qInfo("pdf: %s", qPrintable(message));
}

} // namespace

void gatherErrors()
{
    Poppler::setDebugErrorFunction(gather, {});
}

QStringList takeErrors()
{
    QStringList taken;
    taken.swap(errors());
    return taken;
}

bool tellOfDamage(const QStringList& errors)
{
    static const QStringList signs = {
        "flate",       "stream",      "JPEG",      "JPX",      "JBIG2",
        "CCITTFax",    "LZW",         "Illegal",   "illegal",  "Unknown operator",
        "End of file", "end of file", "Bad image", "Bad page", "Weird page contents",
        "wrong type",  "Too few",     "Bad inline"};
    return std::any_of(errors.begin(), errors.end(), [](const QString& error) {
        return std::any_of(signs.begin(), signs.end(),
                           [&](const QString& sign) { return error.contains(sign); });
    });
}

} // namespace reader
