// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/globals.h"

QString currentMode = QStringLiteral("Scan");
QString scanAppendApp;
QString fileAppendApp;
int scan = 0;
int imageConnection = 0;
int pdfConnection = 0;
int ocrConnection = 0;
int ScanorFile = 0;
