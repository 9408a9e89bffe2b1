// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The names of groups and keys in the settings files, each standing here once. What the values mean, their
// types, ranges and factory values: settingtable.cpp.

namespace groups {
inline constexpr char topLevel[] = "";
inline constexpr char scanApp[] = "Scan_app";
inline constexpr char fileApp[] = "File_app";
inline constexpr char scanPdfApp[] = "Scan_PDF_app";
inline constexpr char filePdfApp[] = "File_PDF_app";
inline constexpr char wholeSet[] = "wholeSet";
inline constexpr char fileCompress[] = "File_Compress"; // serves both pages

inline constexpr char scanScan[] = "Scan_Scan";
inline constexpr char fileScan[] = "File_Scan";
inline constexpr char scanOcr[] = "Scan_OCR";
inline constexpr char fileOcr[] = "File_OCR";
inline constexpr char scanPdf[] = "Scan_PDF";
inline constexpr char filePdf[] = "File_PDF";

inline constexpr char scanDeNoise[] = "Scan_DeNoise";
inline constexpr char fileDeNoise[] = "File_DeNoise";
inline constexpr char scanOcrDeNoise[] = "Scan_OCR_DeNoise";
inline constexpr char fileOcrDeNoise[] = "File_OCR_DeNoise";

inline constexpr char scanFrontRotate[] = "Scan_Front_Rotate";
inline constexpr char scanBackRotate[] = "Scan_Back_Rotate";
inline constexpr char fileFrontRotate[] = "File_Front_Rotate";
inline constexpr char fileBackRotate[] = "File_Back_Rotate";

inline constexpr char scanScanPaperSize[] = "Scan_Scan_PaperSize";
inline constexpr char fileScanPaperSize[] = "File_Scan_PaperSize";
inline constexpr char scanOcrPaperSize[] = "Scan_OCR_PaperSize";
inline constexpr char fileOcrPaperSize[] = "File_OCR_PaperSize";
inline constexpr char scanPdfPaperSize[] = "Scan_PDF_PaperSize";
inline constexpr char filePdfPaperSize[] = "File_PDF_PaperSize";

// in the path file
inline constexpr char scanScanFilePath[] = "Scan_Scan_FilePath";
inline constexpr char fileScanFilePath[] = "File_Scan_FilePath";
inline constexpr char scanOcrFilePath[] = "Scan_OCR_FilePath";
inline constexpr char fileOcrFilePath[] = "File_OCR_FilePath";
inline constexpr char scanPdfFilePath[] = "Scan_PDF_FilePath";
inline constexpr char filePdfFilePath[] = "File_PDF_FilePath";
} // namespace groups

namespace keys {
#define QWD200_KEY(name) inline constexpr char name[] = #name

// top level
QWD200_KEY(modeBtn);      // 0 scan page, else file page
QWD200_KEY(ScanModel);    // function combo of the scan page
QWD200_KEY(scanDescirbe); // its description line
QWD200_KEY(FileModel);    // function combo of the file page
QWD200_KEY(fileDescirbe); // its description line
QWD200_KEY(paraTemplete); // index of the template to load at start; never written

// scan settings of the functions
QWD200_KEY(App);
QWD200_KEY(appStart);
QWD200_KEY(specifiedApp);
QWD200_KEY(fileColor);
QWD200_KEY(fileGrey);
QWD200_KEY(fileBW);
QWD200_KEY(scanType);
QWD200_KEY(combine);
QWD200_KEY(split);
QWD200_KEY(handAdjust);
QWD200_KEY(hRBtn);
QWD200_KEY(frontRBtn);
QWD200_KEY(backRBtn);
QWD200_KEY(doubleRBtn);
QWD200_KEY(vRBtn);
QWD200_KEY(paperSize);
QWD200_KEY(scanMode);
QWD200_KEY(fileType);
QWD200_KEY(docType);
QWD200_KEY(resolution);
QWD200_KEY(lightness);
QWD200_KEY(contrast);
QWD200_KEY(gamma); // a factor in Scan_Scan and File_Scan, hundredths elsewhere
QWD200_KEY(threshold);
QWD200_KEY(colorFilter);
QWD200_KEY(deScreen);
QWD200_KEY(filter);
QWD200_KEY(contiScan);
QWD200_KEY(colorMatch);
QWD200_KEY(autoCrowed);
QWD200_KEY(autoCut);
QWD200_KEY(autoRight);
QWD200_KEY(delBlank); // a switch; in wholeSet the sensitivity
QWD200_KEY(imgMend);
QWD200_KEY(outMutiImg);
QWD200_KEY(fillHole);
QWD200_KEY(delBackground);
QWD200_KEY(delColor);
QWD200_KEY(characenhance);
QWD200_KEY(readFile);
QWD200_KEY(handState);
QWD200_KEY(horizontalState);
QWD200_KEY(verticalState);
QWD200_KEY(pageSetFront); // Scan_Scan, File_Scan: label enabled; elsewhere the rotation's index
QWD200_KEY(pageSetBack);
QWD200_KEY(pageSetFrontText); // Scan_Scan, File_Scan: code 0 to 3; elsewhere the label's text
QWD200_KEY(pageSetBackText);
QWD200_KEY(frontRotateState);
QWD200_KEY(backRotateState);
QWD200_KEY(resolutionText);
QWD200_KEY(selfResolution);
QWD200_KEY(delBlankState);
QWD200_KEY(saveFile);
QWD200_KEY(fileName);
QWD200_KEY(splitState);
QWD200_KEY(combineState);
QWD200_KEY(autoCutState);
QWD200_KEY(resolutinState);

// naming, in the groups of the functions
QWD200_KEY(dateAndtime);
QWD200_KEY(system);
QWD200_KEY(usr);
QWD200_KEY(year);
QWD200_KEY(month);
QWD200_KEY(date);
QWD200_KEY(separator);
QWD200_KEY(timeType);
QWD200_KEY(usrDefine);
QWD200_KEY(name);
QWD200_KEY(start);
QWD200_KEY(length);
QWD200_KEY(cover);
QWD200_KEY(showConfirmBox);
QWD200_KEY(messgBox);
QWD200_KEY(finishStarApp);
QWD200_KEY(appName);
QWD200_KEY(yearState);
QWD200_KEY(monthState);
QWD200_KEY(dateState);
QWD200_KEY(separatorState);
QWD200_KEY(systemState);
QWD200_KEY(usrState);
QWD200_KEY(timeTypeState);
QWD200_KEY(nameState);
QWD200_KEY(startState);
QWD200_KEY(lengthState);
QWD200_KEY(coverState);
QWD200_KEY(messgBoxState);
QWD200_KEY(finishStarAppNameState);

// wholeSet
QWD200_KEY(delValue);
QWD200_KEY(enhanceValue);
QWD200_KEY(splitCount);
QWD200_KEY(fGrayDpi);
QWD200_KEY(fWBDpi);
QWD200_KEY(imgMendUp);
QWD200_KEY(imgMendLeft);
QWD200_KEY(imgMendIn);
QWD200_KEY(imgMendOut);
QWD200_KEY(imgMendLeftState);
QWD200_KEY(imgMendcolorRed);
QWD200_KEY(imgMendcolorGreen);
QWD200_KEY(imgMendcolorBlue);
QWD200_KEY(longShortRotate);
QWD200_KEY(sleepOrCount);
QWD200_KEY(noSleep);
QWD200_KEY(sleep);
QWD200_KEY(xiumian);
QWD200_KEY(sleeptime);
QWD200_KEY(rollerLimit); // counts at which a part is due for replacement
QWD200_KEY(padLimit);

// noise and threshold
QWD200_KEY(noiseMode);
QWD200_KEY(noiseThreshold);
QWD200_KEY(WBThreshold);

// fixed turns that the rotation dialog offers again
QWD200_KEY(singleRotate); // scans of one side
QWD200_KEY(doubleRotate); // scans of both sides

// custom paper
QWD200_KEY(width);
QWD200_KEY(height);
QWD200_KEY(leftUp);

// compression
QWD200_KEY(sameCompress);
QWD200_KEY(colorTif);
QWD200_KEY(colorJpg);
QWD200_KEY(grayTif);
QWD200_KEY(grayJpg);
QWD200_KEY(wbJpg);

// printing of copies (stored for the printing program of the user's choice; nothing here prints)
QWD200_KEY(copies);
QWD200_KEY(zoom);
QWD200_KEY(fitPaper);
QWD200_KEY(printPaper);
QWD200_KEY(printColor);
QWD200_KEY(printDuplex);
QWD200_KEY(collate);

// path file
QWD200_KEY(savepath);

#undef QWD200_KEY
} // namespace keys
