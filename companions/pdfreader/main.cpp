// SPDX-License-Identifier: GPL-3.0-or-later
// pdfReader: shows a PDF document; see docs/man/pdfReader.1.
#include "readerwindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QTranslator>
#include <cstdio>

namespace {

constexpr int kWrongUse = 2;

QString trMain(const char* text)
{
    return QCoreApplication::translate("main", text);
}

// In a locale that is not Chinese the fallback of the default font gives the Japanese forms of characters.
void useChineseFont()
{
    QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
    const QStringList families = QFontDatabase().families();
    for (const QString wanted :
         {"Noto Sans CJK SC", "Noto Sans SC", "Source Han Sans SC", "WenQuanYi Micro Hei"}) {
        if (!families.contains(wanted))
            continue;
        QFont font = QApplication::font();
        font.setFamily(wanted);
        QApplication::setFont(font);
        return;
    }
}

// The toolkit's own texts: beside the program, else where the toolkit keeps them.
void useChineseTexts(QTranslator& translator)
{
    if (translator.load("qt_zh_CN.qm", QCoreApplication::applicationDirPath()) ||
        translator.load("qtbase_zh_CN.qm", QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // Factors between the whole ones are kept: rounding would make pages and letters coarse.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    QApplication::setApplicationName("pdfReader");
    QApplication::setWindowIcon(QIcon::fromTheme("cn.zarn.qwd200", QIcon::fromTheme("application-pdf")));
    useChineseFont();
    QTranslator translator;
    useChineseTexts(translator);

    QCommandLineParser parser;
    parser.setApplicationDescription(trMain("显示 PDF 文件。"));
    const QCommandLineOption help({"h", "help"}, trMain("显示这个说明。"));
    parser.addOption(help);
    parser.addPositionalArgument("文件", trMain("要打开的 PDF 文件；没有时打开空窗口。"), "[文件]");
    const bool understood = parser.parse(QCoreApplication::arguments());
    if (understood && parser.isSet(help)) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return 0;
    }
    if (!understood || parser.positionalArguments().size() > 1) {
        const QString problem = understood ? trMain("只能打开一个文件") : parser.errorText();
        std::fprintf(stderr, "pdfReader: %s\n%s\n", qPrintable(problem),
                     qPrintable(trMain("用 pdfReader --help 查看用法")));
        return kWrongUse;
    }
    reader::ReaderWindow window;
    window.show();
    if (!parser.positionalArguments().isEmpty())
        window.open(parser.positionalArguments().first());
    return QApplication::exec();
}
