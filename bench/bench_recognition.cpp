// SPDX-License-Identifier: GPL-3.0-or-later
// What recognising a page costs, against the engine's own command on the same page in the same run.
//
//   bench_recognition [--repeat N] [--out DIR] PAGE...
//
// Per page and in all: wall and CPU seconds of both (the least of N alternating repeats), their ratios, and
// the most private memory that all children together had. Both texts are left as NAME.txt below DIR/boxes and
// DIR/engine. Ours finds the lines, reads them with nine children and loads the model once for all pages; the
// command loads it for each. Its OpenMP is off, which more than halves its time.
#include "recognition/boxreading.h"
#include "recognition/ocrengine.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Cost
{
    double wall = 1e9;
    double cpu = 1e9;

    void least(const Cost& other)
    {
        wall = std::min(wall, other.wall);
        cpu = std::min(cpu, other.cpu);
    }
};

double cpuSeconds(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + time.tv_usec / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// CPU of this process and of the children that were waited for.
template <typename Work>
Cost measured(Work work)
{
    const auto used = [] { return cpuSeconds(RUSAGE_SELF) + cpuSeconds(RUSAGE_CHILDREN); };
    QElapsedTimer timer;
    const double before = used();
    timer.start();
    work();
    return {static_cast<double>(timer.nsecsElapsed()) / 1e9, used() - before};
}

// Private memory of all children, in MB.
double childrenMb()
{
    QFile list(QStringLiteral("/proc/self/task/%1/children").arg(getpid()));
    if (!list.open(QIODevice::ReadOnly))
        return 0;
    double kb = 0;
    for (const QByteArray& pid : list.readAll().split(' ')) {
        QFile rollup(QStringLiteral("/proc/%1/smaps_rollup").arg(QString::fromLatin1(pid)));
        if (pid.isEmpty() || !rollup.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& line : rollup.readAll().split('\n'))
            if (line.startsWith("Private_"))
                kb += line.mid(line.indexOf(':') + 1).replace("kB", "").trimmed().toDouble();
    }
    return kb / 1024;
}

void runEngineCommand(const QString& page, const QString& text)
{
    const QByteArray in = QFile::encodeName(page), out = QFile::encodeName(text);
    const pid_t pid = fork();
    if (pid == 0) {
        setenv("OMP_THREAD_LIMIT", "1", 1);
        execlp("tesseract", "tesseract", in.constData(), out.constData(), "-l", "chi_sim", "--psm", "3",
               nullptr);
        _exit(127);
    }
    int status = 0;
    if (waitpid(pid, &status, 0) != pid || status != 0)
        std::fprintf(stderr, "the engine's command failed on %s\n", in.constData());
}

void readPage(OcrEngine& engine, const QString& page, const QString& text, double& mostMb)
{
    ReadingOptions options;
    options.traceTo = -1;
    QElapsedTimer sinceLook;
    sinceLook.start();
    options.idle = [&] {
        if (sinceLook.elapsed() < 100)
            return;
        mostMb = std::max(mostMb, childrenMb());
        sinceLook.restart();
    };
    if (!setEnginePage(*engine.handle(), page.toStdString())) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(page));
        return;
    }
    const PageReading reading = readBoxes(*engine.handle(), findTextLines(*engine.handle()), options);
    QFile out(text + QStringLiteral(".txt"));
    if (!out.open(QIODevice::WriteOnly))
        return;
    for (const BoxText& box : reading.boxes)
        out.write(QByteArray::fromStdString(box.text) + "\n");
}

void printRow(const char* name, const Cost& boxes, const Cost& engine)
{
    std::printf("%-20s  %7.2f %7.2f  %7.2f %7.2f  %6.2f %6.2f\n", name, boxes.wall, engine.wall, boxes.cpu,
                engine.cpu, boxes.wall / engine.wall, boxes.cpu / engine.cpu);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QStringList pages;
    QTemporaryDir scratch;
    QString folder = scratch.path();
    int repeats = 3;
    for (int i = 1; i < argc; ++i) {
        const QString word = QFile::decodeName(argv[i]);
        if (word == QLatin1String("--repeat") && i + 1 < argc)
            repeats = std::max(1, std::atoi(argv[++i]));
        else if (word == QLatin1String("--out") && i + 1 < argc)
            folder = QFile::decodeName(argv[++i]);
        else
            pages << word;
    }
    const QDir out(folder);
    Cost boxesAll{0, 0}, engineAll{0, 0};
    OcrEngine engine;
    if (pages.isEmpty() || !engine.isReady() || !out.mkpath(QStringLiteral("boxes")) ||
        !out.mkpath(QStringLiteral("engine"))) {
        std::fprintf(stderr, "usage: bench_recognition [--repeat N] [--out DIR] PAGE...\n");
        return 2;
    }
    // Loading the model counts as well.
    boxesAll = measured([&engine] { initEngine(*engine.handle()); });
    double mostMb = 0;
    std::printf("%-20s  wall s: ours, engine  CPU s: ours, engine  ratios\n", "page");
    for (const QString& page : qAsConst(pages)) {
        const QString name = QFileInfo(page).completeBaseName();
        Cost boxes, command;
        for (int repeat = 0; repeat < repeats; ++repeat) {
            boxes.least(measured([&] { readPage(engine, page, out.filePath("boxes/" + name), mostMb); }));
            command.least(measured([&] { runEngineCommand(page, out.filePath("engine/" + name)); }));
        }
        printRow(qPrintable(name), boxes, command);
        boxesAll = {boxesAll.wall + boxes.wall, boxesAll.cpu + boxes.cpu};
        engineAll = {engineAll.wall + command.wall, engineAll.cpu + command.cpu};
    }
    printRow("all", boxesAll, engineAll);
    std::printf("private memory of all children together: at most %.0f MB\n", mostMb);
    return 0;
}
