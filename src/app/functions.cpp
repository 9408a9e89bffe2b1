// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/functions.h"

#include <QCoreApplication>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(Functions)
};

} // namespace

const QVector<Function>& scanPageFunctions()
{
    static const QVector<Function> functions{Function::Scan,  Function::Ocr,  Function::Pdf, Function::Copy,
                                             Function::Email, Function::File, Function::Ftp};
    return functions;
}

const QVector<Function>& filePageFunctions()
{
    static const QVector<Function> functions{Function::Pdf,   Function::Scan, Function::Ocr, Function::Copy,
                                             Function::Email, Function::File, Function::Ftp};
    return functions;
}

QString functionName(Function function)
{
    switch (function) {
    case Function::Scan:
        return QStringLiteral("Scan  Utility");
    case Function::Ocr:
        return QStringLiteral("OCR  Utility");
    case Function::Pdf:
        return QStringLiteral("PDF  Utility");
    case Function::Copy:
        return QStringLiteral("Copy  Utility");
    case Function::Email:
        return QStringLiteral("E-Mail  Utility");
    case Function::File:
        return QStringLiteral("File  Utility");
    case Function::Ftp:
        return QStringLiteral("FTP  Utility");
    }
    return {};
}

QString functionDescription(Function function, bool scanPage)
{
    switch (function) {
    case Function::Scan:
        return scanPage ? Texts::tr("扫描按键模板分为Scan Utility及OCR Utility，Scan "
                                    "Utility实现扫描并用指定的应用软件打开图像。")
                        : Texts::tr("扫描并用指定的应用软件打开图像。");
    case Function::Ocr:
        return Texts::tr("扫描文字稿件并识别为可编辑的文字或Word文档。");
    case Function::Pdf:
        return Texts::tr("扫描文字稿件并将影像转换成可搜索pdf文件或pdf影像文件。");
    case Function::Copy:
        return Texts::tr("扫描文件或图片，接着从您的打印机复印出来。");
    case Function::Email:
        return Texts::tr("扫描文件或图片，接着用您预设的电子邮件软件传送出去。");
    case Function::File:
        return Texts::tr("扫描并保存图像到您的存贮装置。");
    case Function::Ftp:
        return Texts::tr("扫描文件并上传至FTP服务器。");
    }
    return {};
}
