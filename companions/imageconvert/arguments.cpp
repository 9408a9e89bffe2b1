// SPDX-License-Identifier: GPL-3.0-or-later
#include "arguments.h"

#include <QCommandLineParser>
#include <QHash>
#include <algorithm>
#include <cmath>

namespace companion {

namespace {

const QStringList kTypes{QStringLiteral("jpg"), QStringLiteral("tif"), QStringLiteral("png"),
                         QStringLiteral("bmp")};
const QStringList kOthers{QStringLiteral("dpi"), QStringLiteral("type"),   QStringLiteral("quality"),
                          QStringLiteral("out"), QStringLiteral("report"), QStringLiteral("jobs")};

const OperationKind* kindOf(const QString& name)
{
    const auto& kinds = operationKinds();
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [&](const OperationKind& k) { return name == QLatin1String(k.name); });
    return found == kinds.end() ? nullptr : &*found;
}

void defineOptions(QCommandLineParser& parser)
{
    for (const OperationKind& kind : operationKinds())
        parser.addOption({QString::fromLatin1(kind.name), {}, QString::fromLatin1(kind.values)});
    for (const QString& name : kOthers)
        parser.addOption({name, {}, name});
    parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, {}});
}

} // namespace

Arguments::Arguments(const QStringList& words)
{
    QCommandLineParser parser;
    defineOptions(parser);
    const bool understood = parser.parse(words);
    if (parser.isSet(QStringLiteral("help"))) {
        m_request.help = true;
        return;
    }
    if (!parser.unknownOptionNames().isEmpty())
        fail(tr("没有这个选项：%1").arg(parser.unknownOptionNames().join(QLatin1Char(' '))));
    if (!understood)
        fail(tr("命令行有误：%1").arg(parser.errorText()));

    QHash<QString, int> seen; // values are kept for each name in the order given
    for (const QString& name : parser.optionNames()) {
        const QString text = parser.values(name).value(seen[name]++);
        if (const OperationKind* kind = kindOf(name))
            readOperation(*kind, text);
        else
            readOther(name, text);
    }
    m_request.files = parser.positionalArguments();
    checkWhole();
}

void Arguments::readOperation(const OperationKind& kind, const QString& text)
{
    const QString option = QString::fromLatin1(kind.name);
    Operation operation{&kind, {}};
    if (!kind.ranges.empty()) {
        const QStringList parts = text.split(QLatin1Char(','));
        if (parts.size() != static_cast<int>(kind.ranges.size())) {
            fail(tr("--%1 需要 %2 个值（%3），得到“%4”")
                     .arg(option)
                     .arg(kind.ranges.size())
                     .arg(QString::fromLatin1(kind.values), text));
            return;
        }
        for (int i = 0; i < parts.size(); ++i)
            operation.values.push_back(number(option, parts[i], kind.ranges[static_cast<size_t>(i)]));
    }
    if (!kind.run &&
        (option == QLatin1String("append") ? m_request.append.has_value() : m_request.split.has_value()))
        fail(tr("--%1 只能给出一次").arg(option));
    else if (kind.run)
        m_request.operations.push_back(operation);
    else if (option == QLatin1String("append"))
        m_request.append = static_cast<int>(operation.values[0]);
    else
        m_request.split = {static_cast<int>(operation.values[0]), static_cast<int>(operation.values[1])};
}

void Arguments::readOther(const QString& name, const QString& text)
{
    if (name == QLatin1String("dpi")) {
        m_request.dpi = number(name, text, {1, 9600, false});
    } else if (name == QLatin1String("type")) {
        m_request.type = text.toLower();
        if (!kTypes.contains(m_request.type))
            fail(tr("--type 只能是 %1，得到“%2”").arg(kTypes.join(QStringLiteral("、")), text));
    } else if (name == QLatin1String("quality")) {
        m_request.quality = static_cast<int>(number(name, text, {1, 100}));
    } else if (name == QLatin1String("out")) {
        m_request.outFolder = text;
    } else if (name == QLatin1String("report")) {
        m_request.reportFile = text;
    } else if (name == QLatin1String("jobs")) {
        m_request.jobs = static_cast<int>(number(name, text, {1, 1024}));
    }
}

void Arguments::checkWhole()
{
    if (m_request.outFolder.isEmpty())
        fail(tr("缺少 --out：请给出输出文件夹"));
    if (m_request.files.isEmpty())
        fail(tr("没有输入文件"));
    if (m_request.append && m_request.files.size() % 2 != 0)
        fail(tr("--append 需要成对的文件，得到 %1 个").arg(m_request.files.size()));
}

double Arguments::number(const QString& option, const QString& text, const ValueRange& range)
{
    bool good = false;
    const double value = text.trimmed().toDouble(&good);
    good = good && value >= range.least && value <= range.most;
    if (good && range.whole)
        good = value == std::floor(value);
    if (good)
        return value;
    fail(
        (range.whole ? tr("--%1 的值应为 %2 到 %3 的整数，得到“%4”") : tr("--%1 的值应为 %2 到 %3，得到“%4”"))
            .arg(option)
            .arg(range.least)
            .arg(range.most)
            .arg(text));
    return range.least;
}

void Arguments::fail(const QString& message)
{
    if (m_error.isEmpty())
        m_error = message;
}

QString Arguments::help()
{
    return tr("用法：imageconvert [操作]... [选项]... --out 文件夹 文件...\n"
              "\n"
              "按给出的顺序对每个页面文件执行操作，结果以原文件名写入输出文件夹。\n"
              "\n"
              "操作：\n"
              "  --append D               两两合并（最先执行）：0 左右，1 上下；用第一个文件的名字\n"
              "  --gamma G                伽马，0.1 到 10；大于 1 变亮\n"
              "  --light-contrast B,C     亮度和对比度，-100 到 100（百分比）\n"
              "  --auto-crop              裁切到纸张边缘\n"
              "  --blank LEVEL            空白页灵敏度 1 到 15；空白页只报告，不写出\n"
              "  --blur 1|2               模糊，更模糊\n"
              "  --sharpen 1|2            锐利，更锐利\n"
              "  --rotate DEGREES         顺时针旋转的角度\n"
              "  --orient                 识别文字方向并转正\n"
              "  --auto-dense             自动色阶：纸变白，墨变黑\n"
              "  --deskew                 匡正倾斜的文字行\n"
              "  --del-background N       删除背景，强度 1 到 10，0 不变\n"
              "  --enhance N              字符增强，强度 1 到 10，0 不变\n"
              "  --red-file               红头文件：白纸、黑字、红头保留\n"
              "  --resolution X,SOURCE    从 SOURCE dpi 重采样到 X dpi\n"
              "  --paper W,H,LEFTUP       裁出宽 W 高 H 厘米：LEFTUP 1 从左上角，0 从正中\n"
              "  --in-border R,G,B,TOP,LEFT   在画面内补边，颜色 0 到 255，上下、左右毫米数\n"
              "  --out-border R,G,B,TOP,LEFT  在画面外补边\n"
              "  --gray                   转为灰阶\n"
              "  --wb THRESHOLD           转为黑白，阈值 0 到 255，越大越黑\n"
              "  --denoise N              去除黑白图像中约 N 像素以内的杂点\n"
              "  --split COUNT,D          拆成 COUNT 份（最后执行）：D 为 1 左右，0 上下；\n"
              "                           名字为 NAME-1、NAME-2……\n"
              "\n"
              "选项：\n"
              "  --dpi N                  输入文件的分辨率（文件中没有时应给出）\n"
              "  --type jpg|tif|png|bmp   输出格式，默认 jpg\n"
              "  --quality N              JPEG 质量 1 到 100，默认 85\n"
              "  --out DIR                输出文件夹，不存在时创建\n"
              "  --report FILE            报告：每页一行 JSON；“-”为标准输出\n"
              "  --jobs N                 同时处理的页数，不超过处理器核数，默认 1\n"
              "  -h, --help               显示本说明\n"
              "\n"
              "退出状态：0 全部成功；1 有文件失败（其余已处理）；2 命令行有误，未做任何处理；130 被中断。\n");
}

} // namespace companion
