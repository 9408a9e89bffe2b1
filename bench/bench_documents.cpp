// SPDX-License-Identifier: GPL-3.0-or-later
// bench_documents pdf|ofd DIR PAGE...: writes DIR/bench.pdf or DIR/bench.ofd of the page files. Started by
// documents.py.
#include "imageconvert/imageconvertfunction.h"

#include <QFile>
#include <cstdio>
#include <cstring>

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: bench_documents pdf|ofd DIR PAGE...\n");
        return 2;
    }
    QStringList pages;
    for (int i = 3; i < argc; ++i)
        pages.append(QFile::decodeName(argv[i]));
    const QString folder = QFile::decodeName(argv[2]);
    ImageConvertFunction library;
    const bool saved = std::strcmp(argv[1], "pdf") == 0
                           ? library.savePDF(pages, folder, QStringLiteral("bench"), "pdf")
                           : library.saveOFD(pages, folder + QLatin1Char('/'), QStringLiteral("bench"), 2);
    if (!saved && !pages.isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(library.lastError()));
    return saved || pages.isEmpty() ? 0 : 1; // without pages: what loading the libraries costs
}
