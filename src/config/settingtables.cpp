// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/installroot.h"
#include "config/settingtable.h"

#include <initializer_list>
#include <utility>

// The tables' contents: key, type, factory value and range of every setting, group by group.

namespace {

using Settings = std::vector<Setting>;
using FlagList = std::initializer_list<std::pair<const char*, bool>>;

constexpr double noLimit = std::numeric_limits<int>::max();

Setting flag(const char* key, bool factory)
{
    return {key, SettingType::Bool, factory};
}

Setting text(const char* key, const QString& factory)
{
    return {key, SettingType::Text, factory};
}

Setting integer(const char* key, int factory, double min, double max)
{
    return {key, SettingType::Int, factory, min, max};
}

Setting real(const char* key, double factory, double min, double max)
{
    return {key, SettingType::Double, factory, min, max};
}

Setting comboIndex(const char* key, int factory)
{
    return integer(key, factory, 0, noLimit);
}

void addFlags(Settings& settings, FlagList flags)
{
    for (const auto& [key, factory] : flags)
        settings.push_back(flag(key, factory));
}

void add(Settings& settings, const Settings& more)
{
    settings.insert(settings.end(), more.begin(), more.end());
}

Settings withoutFactoryEntry(Settings settings)
{
    for (Setting& setting : settings)
        setting.inFactoryFile = false;
    return settings;
}

Settings topLevel()
{
    const QString description = QStringLiteral("扫描并用指定的应用软件打开图像。");
    Settings all = {
        integer(keys::modeBtn, 0, -noLimit, noLimit), comboIndex(keys::ScanModel, 4),
        text(keys::scanDescirbe, description),        comboIndex(keys::FileModel, 4),
        text(keys::fileDescirbe, description),
    };
    add(all, withoutFactoryEntry({comboIndex(keys::paraTemplete, 0)}));
    return all;
}

// File names: prefix and counter ready to be switched on, stamps in the order year, month, day.
Settings naming()
{
    Settings all;
    addFlags(all, {{keys::dateAndtime, false}, {keys::system, true}, {keys::usr, false}});
    add(all, {integer(keys::year, 0, 0, 2), integer(keys::month, 1, 0, 2), integer(keys::date, 2, 0, 2),
              integer(keys::separator, 0, 0, 2)});
    addFlags(all, {{keys::timeType, true}, {keys::usrDefine, false}});
    add(all, {text(keys::name, QStringLiteral("image")), text(keys::start, QStringLiteral("1")),
              integer(keys::length, 1, 0, 18)});
    addFlags(all, {{keys::cover, false},
                   {keys::showConfirmBox, false},
                   {keys::messgBox, false},
                   {keys::finishStarApp, false}});
    all.push_back(text(keys::appName, QString()));
    // which of these controls can be used, with stamp and user-defined names off
    addFlags(all, {{keys::yearState, false},
                   {keys::monthState, false},
                   {keys::dateState, false},
                   {keys::separatorState, false},
                   {keys::systemState, false},
                   {keys::usrState, false},
                   {keys::timeTypeState, false},
                   {keys::nameState, false},
                   {keys::startState, false},
                   {keys::lengthState, false},
                   {keys::coverState, true},
                   {keys::messgBoxState, true},
                   {keys::finishStarAppNameState, false}});
    return withoutFactoryEntry(all);
}

// "Scan_Scan" and "File_Scan": the main window's own function.
Settings mainScan()
{
    Settings all = {comboIndex(keys::App, 0),       flag(keys::appStart, false),
                    comboIndex(keys::fileColor, 0), comboIndex(keys::fileGrey, 0),
                    comboIndex(keys::fileBW, 0),    comboIndex(keys::scanType, 1)};
    addFlags(all, {{keys::combine, false},
                   {keys::split, false},
                   {keys::handAdjust, false},
                   {keys::hRBtn, false},
                   {keys::frontRBtn, true},
                   {keys::backRBtn, false},
                   {keys::doubleRBtn, false},
                   {keys::vRBtn, true}});
    add(all, {comboIndex(keys::paperSize, 1), comboIndex(keys::scanMode, 3), comboIndex(keys::fileType, 2),
              comboIndex(keys::resolution, 3), integer(keys::lightness, 15, -100, 100),
              integer(keys::contrast, 35, -100, 100), real(keys::gamma, 1.2, 0.01, 10),
              comboIndex(keys::threshold, 0), comboIndex(keys::colorFilter, 0), comboIndex(keys::deScreen, 0),
              comboIndex(keys::filter, 0)});
    addFlags(all, {{keys::contiScan, false},
                   {keys::colorMatch, false},
                   {keys::autoCrowed, true},
                   {keys::autoCut, true},
                   {keys::autoRight, true},
                   {keys::delBlank, false},
                   {keys::imgMend, true},
                   {keys::outMutiImg, false},
                   {keys::fillHole, false},
                   {keys::delBackground, false},
                   {keys::delColor, false},
                   {keys::characenhance, false},
                   {keys::readFile, false}});
    // both rotation labels disabled: automatic orientation
    Settings states;
    addFlags(states, {{keys::handState, false},
                      {keys::horizontalState, false},
                      {keys::verticalState, false},
                      {keys::pageSetFront, false},
                      {keys::pageSetBack, false}});
    add(states,
        {integer(keys::pageSetFrontText, 0, 0, 3), integer(keys::pageSetBackText, 0, 0, 3),
         text(keys::resolutionText, QStringLiteral("300")), text(keys::selfResolution, QStringLiteral("300")),
         flag(keys::delBlankState, true), comboIndex(keys::saveFile, 0)});
    add(all, withoutFactoryEntry(states));
    add(all, naming());
    return all;
}

// The settings that the OCR and the PDF panel share, in the order written, up to the paper and ...
Settings panelPages()
{
    Settings all = {comboIndex(keys::App, 0), flag(keys::specifiedApp, false), comboIndex(keys::scanType, 1)};
    addFlags(all, {{keys::handAdjust, false},
                   {keys::hRBtn, false},
                   {keys::frontRBtn, true},
                   {keys::backRBtn, false},
                   {keys::split, false},
                   {keys::doubleRBtn, false},
                   {keys::combine, false},
                   {keys::vRBtn, true},
                   {keys::handState, false},
                   {keys::horizontalState, false},
                   {keys::verticalState, false}});
    add(all, {comboIndex(keys::paperSize, 0), comboIndex(keys::scanMode, 2)});
    return all;
}

// ... from the resolution on. `corrections`: crop and deskew are on.
Settings panelImage(int resolutionIndex, bool corrections)
{
    Settings all = {
        comboIndex(keys::resolution, resolutionIndex),
        text(keys::resolutionText, QStringLiteral("300")),
        text(keys::selfResolution, QStringLiteral("300")),
        integer(keys::lightness, 15, -100, 100),
        integer(keys::contrast, 35, -100, 100),
        integer(keys::gamma, 120, 1, 1000),
        comboIndex(keys::threshold, 0),
        comboIndex(keys::colorFilter, 0),
        comboIndex(keys::deScreen, 0),
        comboIndex(keys::filter, 0),
        integer(keys::pageSetFront, 0, 0, 3),
        integer(keys::pageSetBack, 0, 0, 3),
        text(keys::pageSetFrontText, QStringLiteral("正面旋转0°")),
        text(keys::pageSetBackText, QStringLiteral("反面旋转0°")),
    };
    addFlags(all, {{keys::contiScan, false},
                   {keys::colorMatch, false},
                   {keys::autoCrowed, false},
                   {keys::autoCut, corrections},
                   {keys::autoRight, corrections},
                   {keys::delBlank, false},
                   {keys::delBlankState, true},
                   {keys::imgMend, false},
                   {keys::outMutiImg, false},
                   {keys::fillHole, false},
                   {keys::delBackground, false},
                   {keys::delColor, false},
                   {keys::characenhance, false},
                   {keys::readFile, false},
                   {keys::frontRotateState, false},
                   {keys::backRotateState, false}});
    all.push_back(comboIndex(keys::noiseMode, 0));
    return all;
}

// The resolution combo begins with 300.
Settings ocr()
{
    Settings all = panelPages();
    all.push_back(comboIndex(keys::fileType, 1));
    add(all, panelImage(0, false));
    add(all, {comboIndex(keys::docType, 0), comboIndex(keys::saveFile, 0)});
    add(all, naming());
    return all;
}

// Formats: PDF, which every computer opens. Crop and deskew are on, since a document is read on the screen.
Settings pdf()
{
    Settings all = panelPages();
    add(all, {comboIndex(keys::fileColor, 1), comboIndex(keys::fileGrey, 1), comboIndex(keys::fileBW, 1)});
    add(all, panelImage(3, true));
    all.push_back(text(keys::fileName, QString()));
    addFlags(all, {{keys::splitState, true},
                   {keys::combineState, true},
                   {keys::autoCutState, true},
                   {keys::resolutinState, false}});
    all.push_back(comboIndex(keys::saveFile, 0));
    add(all, naming());
    return all;
}

// The panels that save pictures and show their folder. One format for all colour modes.
Settings folderPanel()
{
    Settings all = panelPages();
    all.push_back(comboIndex(keys::fileType, 0));
    add(all, panelImage(3, true));
    all.push_back(comboIndex(keys::saveFile, 0));
    add(all, naming());
    return all;
}

Settings copying()
{
    return {
        integer(keys::copies, 1, 1, 999), integer(keys::zoom, 100, 25, 400), // percent
        flag(keys::fitPaper, true),       comboIndex(keys::printPaper, 0),   comboIndex(keys::printColor, 0),
        comboIndex(keys::printDuplex, 0), flag(keys::collate, true),
    };
}

void addFolderPanels(std::vector<SettingTable>& tables)
{
    for (const char* page : {"Scan_", "File_"}) {
        for (const char* function : {"Copy", "Email", "File", "FTP"}) {
            const QString group = QLatin1String(page) + QLatin1String(function);
            tables.push_back({group, false, folderPanel()});
            tables.push_back(
                {group + QLatin1String("_FilePath"), true, {text(keys::savepath, defaultSaveFolder())}});
        }
        tables.push_back({QLatin1String(page) + QLatin1String("Copy_Print"), false, copying()});
    }
}

Settings wholeSet()
{
    return {
        integer(keys::delBlank, 8, 0, noLimit), // 0 and above 15: never blank
        integer(keys::delValue, 5, 0, 10),
        integer(keys::enhanceValue, 5, 0, 10),
        integer(keys::splitCount, 2, 0, noLimit),
        comboIndex(keys::fGrayDpi, 2),
        comboIndex(keys::fWBDpi, 2),
        real(keys::imgMendUp, 1, 0, 100), // mm: the shadow of the edge, not the text beside it
        real(keys::imgMendLeft, 1, 0, 100),
        flag(keys::imgMendIn, true),
        flag(keys::imgMendOut, false),
        flag(keys::imgMendLeftState, false), // off: left as wide as top
        integer(keys::imgMendcolorRed, 255, 0, 255),
        integer(keys::imgMendcolorGreen, 255, 0, 255),
        integer(keys::imgMendcolorBlue, 255, 0, 255),
        integer(keys::longShortRotate, 0, 0, 1),
        comboIndex(keys::sleepOrCount, 0),
        flag(keys::noSleep, false),
        flag(keys::sleep, true),
        flag(keys::xiumian, false),
        integer(keys::sleeptime, 15, 1, 1440), // minutes
        integer(keys::rollerLimit, 60000, 1, 65535),
        integer(keys::padLimit, 30000, 1, 65535),
    };
}

Settings deNoise()
{
    return {comboIndex(keys::noiseMode, 0),
            comboIndex(keys::noiseThreshold, 2), // levels 1 to 3, others do nothing

            integer(keys::WBThreshold, 130, 0, 255)};
}

// Turn codes: 0 none, 1 left, 2 upside down, 3 right.
Settings fixedTurns()
{
    return {integer(keys::singleRotate, 0, 0, 3), integer(keys::doubleRotate, 0, 0, 3)};
}

// Hundredths of a centimetre.
Settings customPaper()
{
    return {integer(keys::width, 2100, 100, 10000), integer(keys::height, 2970, 100, 10000),
            flag(keys::leftUp, true)};
}

// JPEG quality; the keys ending in Tif hold the PNG level.
Settings compression()
{
    const QString jpeg = QStringLiteral("85");
    const QString png = QStringLiteral("6");
    return {flag(keys::sameCompress, false), text(keys::colorTif, png), text(keys::colorJpg, jpeg),
            text(keys::grayTif, png),        text(keys::grayJpg, jpeg), text(keys::wbJpg, jpeg)};
}

} // namespace

const std::vector<SettingTable>& settingTables()
{
    static const std::vector<SettingTable> all = [] {
        std::vector<SettingTable> tables = {
            {groups::topLevel, false, topLevel()},
            {groups::scanScan, false, mainScan()},
            {groups::fileScan, false, mainScan()},
            {groups::scanOcr, false, ocr()},
            {groups::fileOcr, false, ocr()},
            {groups::scanPdf, false, pdf()},
            {groups::filePdf, false, pdf()},
            {groups::wholeSet, false, wholeSet()},
            {groups::fileCompress, false, compression()},
        };
        for (const char* group :
             {groups::scanDeNoise, groups::fileDeNoise, groups::scanOcrDeNoise, groups::fileOcrDeNoise})
            tables.push_back({group, false, deNoise()});
        for (const char* group : {groups::scanFrontRotate, groups::scanBackRotate, groups::fileFrontRotate,
                                  groups::fileBackRotate})
            tables.push_back({group, false, fixedTurns()});
        for (const char* group :
             {groups::scanScanPaperSize, groups::fileScanPaperSize, groups::scanOcrPaperSize,
              groups::fileOcrPaperSize, groups::scanPdfPaperSize, groups::filePdfPaperSize})
            tables.push_back({group, false, customPaper()});
        for (const char* group : {groups::scanScanFilePath, groups::fileScanFilePath, groups::scanOcrFilePath,
                                  groups::fileOcrFilePath, groups::scanPdfFilePath, groups::filePdfFilePath})
            tables.push_back({group, true, {text(keys::savepath, defaultSaveFolder())}});
        addFolderPanels(tables);
        return tables;
    }();
    return all;
}
