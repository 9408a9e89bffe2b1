// SPDX-License-Identifier: GPL-3.0-or-later
// pdfReader: shows a PDF document; see docs/man/pdfReader.1.
#include "language/language.h"
#include "readerwindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLibraryInfo>
#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr int kWrongUse = 2;

// The usage is printed without a display, too.
bool asksForHelp(int argc, char* argv[])
{
    return std::any_of(argv + 1, argv + argc, [](const char* argument) {
        return std::strcmp(argument, "-h") == 0 || std::strcmp(argument, "--help") == 0;
    });
}

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(pdfReader)
};

} // namespace

int main(int argc, char* argv[])
{
    if (asksForHelp(argc, argv))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // Factors between the whole ones are kept: rounding would make pages and letters coarse.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    QApplication::setApplicationName("pdfReader");
    QApplication::setWindowIcon(QIcon::fromTheme("cn.zarn.qwd200", QIcon::fromTheme("application-pdf")));
    // The toolkit's own texts: beside the program, else where the toolkit keeps them.
    language::set(application, {QCoreApplication::applicationDirPath() + "/qt_zh_CN.qm",
                                QLibraryInfo::location(QLibraryInfo::TranslationsPath) + "/qtbase_zh_CN.qm"});

    QCommandLineParser parser;
    parser.setApplicationDescription(Texts::tr("显示 PDF 文件。"));
    const QCommandLineOption help({"h", "help"}, Texts::tr("显示这个说明。"));
    parser.addOption(help);
    parser.addPositionalArgument("file", Texts::tr("要打开的 PDF 文件；没有时打开空窗口。"),
                                 Texts::tr("[文件]"));
    const bool understood = parser.parse(QCoreApplication::arguments());
    if (understood && parser.isSet(help)) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return 0;
    }
    if (!understood || parser.positionalArguments().size() > 1) {
        const QString problem = understood ? Texts::tr("只能打开一个文件") : parser.errorText();
        std::fprintf(stderr, "pdfReader: %s\n%s\n", qPrintable(problem),
                     qPrintable(Texts::tr("用 pdfReader --help 查看用法")));
        return kWrongUse;
    }
    reader::ReaderWindow window;
    window.show();
    if (!parser.positionalArguments().isEmpty())
        window.open(parser.positionalArguments().first());
    return QApplication::exec();
}
