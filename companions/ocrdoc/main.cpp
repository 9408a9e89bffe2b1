// SPDX-License-Identifier: GPL-3.0-or-later
// ocrdoc: documents of recognised page pictures; see docs/man/ocrdoc.1.
#include "arguments.h"
#include "documents.h"
#include "stopsignal.h"
#include "turnedpages.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTextCodec>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <unistd.h>

using namespace companion;

namespace {

constexpr int kFailed = 1, kWrongUse = 2;
void say(const QString& text)
{
    std::fprintf(stderr, "ocrdoc: %s\n", qPrintable(text));
}

QString trMain(const char* text)
{
    return QCoreApplication::translate("main", text);
}

// Only text in a PDF is drawn with fonts; none of the documents needs a display.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv)
{
    if (std::none_of(argv, argv + argc, [](const char* word) { return qstrcmp(word, "--pdf") == 0; }))
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

// Reports all pages and returns true when each of them is in the document.
bool reportPages(const Request& request, const Documents::Outcome& outcome, Report& report)
{
    bool good = outcome.pages.size() == request.pages.size();
    for (int i = 0; i < outcome.pages.size(); ++i) {
        PageLine line = outcome.pages[i];
        line.file = request.pages[i];
        report.add(line);
        if (!line.problem.isEmpty()) {
            good = false;
            say(line.file + QStringLiteral(": ") + line.problem);
        }
    }
    return good;
}

int run(const Request& request)
{
    Report report;
    if (!report.open(request.reportFile)) {
        say(trMain("报告 %1 无法写入").arg(request.reportFile));
        return kWrongUse;
    }
    TurnedPages turned;
    QStringList pages;
    for (const QString& page : request.pages)
        pages << (request.orient && !stopped ? turned.upright(page) : page);

    const bool terminal = isatty(STDERR_FILENO) != 0;
    const auto progress = [&](const QString& text) {
        if (terminal)
            std::fprintf(stderr, "%s / %d\n", qPrintable(text), static_cast<int>(pages.size()));
    };
    Documents documents(
        request, [] { return stopped.load(); }, progress);
    const Documents::Outcome outcome = documents.write(pages);

    bool good = reportPages(request, outcome, report) && outcome.saved;
    for (const QString& notice : outcome.notices)
        say(notice);
    if (!outcome.problem.isEmpty())
        say(outcome.problem);
    if (stopped)
        say(trMain("已取消"));
    if (!report.close()) {
        say(trMain("报告 %1 无法写入").arg(request.reportFile));
        good = false;
    }
    return good && !stopped ? 0 : kFailed;
}

} // namespace

int main(int argc, char* argv[])
{
    const auto application = makeApplication(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("utf-8"));
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, false);
    handleSignals();
    const Arguments arguments(QCoreApplication::arguments());
    if (arguments.request().help) {
        std::fputs(qPrintable(Arguments::help()), stdout);
        return 0;
    }
    if (!arguments.error().isEmpty()) {
        say(arguments.error() + QStringLiteral("\n") + trMain("用 ocrdoc --help 查看用法"));
        return kWrongUse;
    }
    return run(arguments.request());
}
