// SPDX-License-Identifier: GPL-3.0-or-later
// bench_searchable pdf|ofd DIR PAGE...: writes DIR/bench.pdf or DIR/bench.ofd with the text of the page
// files. Started by documents.py.
#include "pdf/pagereader.h"
#include "pdf/searchableofd.h"
#include "pdf/searchablepdf.h"

#include <QFile>
#include <QGuiApplication>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <omp.h>

namespace {

// The most processor time that this thread takes between two turns of its event loop: how long a window in it
// would not answer on a quiet machine.
class LongestTurn
{
public:
    LongestTurn()
    {
        QObject::connect(&m_tick, &QTimer::timeout, &m_tick, [this] { look(); });
        m_tick.start(5);
    }
    ~LongestTurn()
    {
        look();
        std::printf("longest work in the window's thread: %.0f ms\n", m_longest);
    }

private:
    static double usedMs()
    {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }
    void look()
    {
        const double now = usedMs();
        m_longest = std::max(m_longest, now - m_last);
        m_last = now;
    }

    QTimer m_tick;
    double m_last = usedMs();
    double m_longest = 0;
};

bool writeText(const QString& type, const QString& folder, const QStringList& pages)
{
    const LongestTurn window;
    EnginePageReader reader;
    DocumentJob job;
    job.folder = folder;
    job.baseName = QStringLiteral("bench");
    const DocumentResult result = type == QLatin1String("pdf")
                                      ? SearchablePdf(reader, job).pdfOcrProcess(pages)
                                      : SearchableOfd(reader, job).ofdOcrProcess(pages);
    if (!result.saved)
        std::fprintf(stderr, "%s\n", qPrintable(result.problem));
    return result.saved;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 4) {
        std::fprintf(stderr, "usage: bench_searchable pdf|ofd DIR PAGE...\n");
        return 2;
    }
    QStringList pages;
    for (int i = 3; i < argc; ++i)
        pages.append(QFile::decodeName(argv[i]));
    omp_set_max_active_levels(0); // as the program does
    const QGuiApplication fonts(argc, argv);
    return writeText(QString::fromLatin1(argv[1]), QFile::decodeName(argv[2]), pages) ? 0 : 1;
}
