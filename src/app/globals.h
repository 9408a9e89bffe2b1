// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Process-wide state of the main window; GUI thread only.
extern QString currentMode;   // "Scan" or "OCR": the function that the scanner's key 1 starts
extern QString scanAppendApp; // application that opens the files of the scan page's own function
extern QString fileAppendApp; // the same for the file page
extern int scan;              // a scan thread exists
extern int imageConnection;   // which page slot is connected to the scan thread's signal
extern int pdfConnection;
extern int ocrConnection;
extern int ScanorFile; // 0 the scan page is selected, 1 the file page
