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
    static const QStringList signs = {"stream",      "JPEG",      "JPX",        "JBIG2",   "CCITTFax",
                                      "Illegal",     "No font",   "wrong type", "Too few", "Unknown operator",
                                      "end of file", "Bad image", "Bad page",   "inline",  "Unterminated"};
    return std::any_of(errors.begin(), errors.end(), [](const QString& error) {
        return std::any_of(signs.begin(), signs.end(),
                           [&](const QString& sign) { return error.contains(sign, Qt::CaseInsensitive); });
    });
}

} // namespace reader
