// SPDX-License-Identifier: GPL-3.0-or-later
#include "readersettings.h"

#include <QSettings>

namespace reader {
namespace {

const char *const kGeometry = "window/geometry", *const kSplitter = "window/splitter",
                  *const kSide = "window/sidePane", *const kMode = "zoom/mode",
                  *const kFactor = "zoom/factor", *const kFolder = "folder";

struct Store : QSettings
{
    Store() : QSettings(QSettings::IniFormat, QSettings::UserScope, "qwd200", "pdfReader") {}
};

} // namespace

ReaderSettings ReaderSettings::load()
{
    const Store stored;
    ReaderSettings settings;
    settings.geometry = stored.value(kGeometry).toByteArray();
    settings.splitter = stored.value(kSplitter).toByteArray();
    settings.sidePane = stored.value(kSide, true).toBool();
    const QString mode = stored.value(kMode).toString();
    settings.zoom.mode = mode == "page"     ? ZoomMode::Page
                         : mode == "factor" ? ZoomMode::Factor
                                            : ZoomMode::Width;
    const double factor = stored.value(kFactor, 1).toDouble();
    settings.zoom.factor = factor >= kLeastZoom && factor <= kMostZoom ? factor : 1;
    settings.folder = stored.value(kFolder).toString();
    return settings;
}

void ReaderSettings::save() const
{
    Store stored;
    stored.setValue(kGeometry, geometry);
    stored.setValue(kSplitter, splitter);
    stored.setValue(kSide, sidePane);
    stored.setValue(kMode, zoom.mode == ZoomMode::Page     ? "page"
                           : zoom.mode == ZoomMode::Factor ? "factor"
                                                           : "width");
    stored.setValue(kFactor, zoom.factor);
    stored.setValue(kFolder, folder);
}

} // namespace reader
