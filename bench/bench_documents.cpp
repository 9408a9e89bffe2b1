// SPDX-License-Identifier: GPL-3.0-or-later
// bench_documents TYPE DIR PAGE...: writes DIR/bench.pdf or DIR/bench.ofd of the page files. TYPE: pdf, ofd
// (the pages' pictures), searchable-pdf, searchable-ofd (their text). Started by documents.py.
#include "imageconvert/imageconvertfunction.h"
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

bool writePictures(const QString& type, const QString& folder, const QStringList& pages)
{
    ImageConvertFunction library;
    const bool saved = type == QLatin1String("pdf")
                           ? library.savePDF(pages, folder, QStringLiteral("bench"), "pdf")
                           : library.saveOFD(pages, folder + QLatin1Char('/'), QStringLiteral("bench"), 2);
    if (!saved && !pages.isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(library.lastError()));
    return saved || pages.isEmpty(); // without pages: what loading the libraries costs
}

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
    const DocumentResult result = type == QLatin1String("searchable-pdf")
                                      ? SearchablePdf(reader, job).pdfOcrProcess(pages)
                                      : SearchableOfd(reader, job).ofdOcrProcess(pages);
    if (!result.saved)
        std::fprintf(stderr, "%s\n", qPrintable(result.problem));
    return result.saved;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: bench_documents pdf|ofd|searchable-pdf|searchable-ofd DIR PAGE...\n");
        return 2;
    }
    const QString type = QString::fromLatin1(argv[1]), folder = QFile::decodeName(argv[2]);
    QStringList pages;
    for (int i = 3; i < argc; ++i)
        pages.append(QFile::decodeName(argv[i]));
    if (!type.startsWith(QLatin1String("searchable-")))
        return writePictures(type, folder, pages) ? 0 : 1;
    omp_set_max_active_levels(0); // as the program does
    const QGuiApplication fonts(argc, argv);
    return writeText(type, folder, pages) ? 0 : 1;
}
