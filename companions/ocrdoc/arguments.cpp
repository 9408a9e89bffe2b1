// SPDX-License-Identifier: GPL-3.0-or-later
#include "arguments.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace companion {

namespace {

constexpr int kLargestPaper = 4;
const QStringList kKinds{QStringLiteral("txt"), QStringLiteral("doc"), QStringLiteral("pdf"),
                         QStringLiteral("ofd")}; // in the order of DocumentKind

} // namespace

Arguments::Arguments(const QStringList& words)
{
    QCommandLineParser parser;
    for (const QString& kind : kKinds)
        parser.addOption({kind, {}});
    for (const char* name : {"paper", "out", "report"})
        parser.addOption({QString::fromLatin1(name), {}, QString::fromLatin1(name)});
    parser.addOption({QStringLiteral("orient"), {}});
    parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, {}});
    const bool understood = parser.parse(words);
    m_request.help = parser.isSet(QStringLiteral("help"));
    if (m_request.help)
        return;
    if (!parser.unknownOptionNames().isEmpty())
        fail(tr("没有这个选项：%1").arg(parser.unknownOptionNames().join(QLatin1Char(' '))));
    else if (!understood)
        fail(tr("命令行有误：%1").arg(parser.errorText()));
    readKind(parser.optionNames());
    if (parser.isSet(QStringLiteral("paper")))
        readPaper(parser.value(QStringLiteral("paper")));
    m_request.orient = parser.isSet(QStringLiteral("orient"));
    m_request.out = parser.value(QStringLiteral("out"));
    m_request.reportFile = parser.value(QStringLiteral("report"));
    m_request.pages = parser.positionalArguments();
    checkWhole();
}

void Arguments::readKind(const QStringList& given)
{
    QStringList kinds;
    for (const QString& name : given)
        if (kKinds.contains(name))
            kinds << name;
    if (kinds.size() != 1)
        fail(tr("请给出 --txt、--doc、--pdf、--ofd 之一"));
    else
        m_request.kind = static_cast<DocumentKind>(kKinds.indexOf(kinds.first()));
}

void Arguments::readPaper(const QString& text)
{
    bool good = false;
    m_request.paperIndex = text.toInt(&good);
    if (!good || m_request.paperIndex < 0 || m_request.paperIndex > kLargestPaper)
        fail(tr("--paper 只能是 0 到 %1，得到“%2”").arg(kLargestPaper).arg(text));
}

void Arguments::checkWhole()
{
    const QString extension = kKinds[static_cast<int>(m_request.kind)];
    const QFileInfo out(m_request.out);
    if (m_request.out.isEmpty())
        fail(tr("缺少 --out：请给出输出文件"));
    else if (out.suffix() != extension || out.completeBaseName().isEmpty())
        fail(tr("输出文件的扩展名应为 .%1：%2").arg(extension, m_request.out));
    else if (!QFileInfo(out.absolutePath()).isDir())
        fail(tr("文件夹 %1 不存在").arg(out.absolutePath()));
    if (m_request.pages.isEmpty())
        fail(tr("没有输入文件"));
    for (const QString& page : m_request.pages)
        for (const QString& written : {m_request.out, m_request.reportFile})
            if (QFileInfo(page).exists() && QFileInfo(page) == QFileInfo(written))
                fail(tr("%1 会覆盖输入文件").arg(written));
}

void Arguments::fail(const QString& message)
{
    if (m_error.isEmpty())
        m_error = message;
}

QString Arguments::help()
{
    return tr("用法：ocrdoc --txt|--doc|--pdf|--ofd [选项] --out 文件 页面图像...\n"
              "识别页面图像中的简体中文，写成一个文档。\n\n"
              "  --txt           纯文本（仅保留最后一个有文字的页面）\n"
              "  --doc           Word 文档（Word 2003 XML）\n"
              "  --pdf           可搜索PDF（仅含文字）\n"
              "  --ofd           可搜索OFD（仅含文字）\n"
              "  --paper N       PDF 纸张：0 A4，1 Letter，2 A5，3 B5，4 Legal\n"
              "  --orient        先把页面转正\n"
              "  --out 文件      输出文件，已有的会被替换\n"
              "  --report 文件   每页一行 JSON：boxes、confidence、seconds；“-”为标准输出\n"
              "  -h, --help      显示本说明\n");
}

} // namespace companion
