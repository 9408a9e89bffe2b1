// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/documentfiles.h"
#include "imageconvert/drawnpages.h"
#include "imageconvert/imageconvertfunction.h"
#include "imageconvert/pagefile.h"
#include "imageconvert/picture.h"
#include "imageconvert/picturewriter.h"

#include <QDir>
#include <QFile>
#include <QtTest>
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace imageconvert;

// Bad pages, bad places and sudden ends: a document is whole or absent, and an older one stays.
class DocumentFaultsTest : public QObject
{
    Q_OBJECT

    DocumentFiles m_files;
    ImageConvertFunction m_library;

    QString page(const QString& name, int seed = 1) const
    {
        cv::Mat pixels(240, 320, CV_8UC1);
        drawn::addNoise(pixels = cv::Scalar::all(200), 20, seed);
        writePicture(pixels, QFile::encodeName(m_files.path(name)).toStdString(),
                     name.section('.', -1).toStdString(), 100, {});
        return m_files.path(name);
    }
    bool save(const QString& type, const QStringList& pages, const QString& folder,
              const DocumentOptions& options = {})
    {
        return type == "pdf" ? m_library.savePDF(pages, folder, "d", "pdf", options)
                             : m_library.saveOFD(pages, folder + '/', "d", 2, options);
    }
    static bool refused(const std::string& path)
    {
        try {
            inspectPage(path);
        } catch (const PictureError&) {
            return true;
        }
        return false;
    }
    // A folder with an older document in it.
    QString withOldDocument(const QString& type)
    {
        QDir(m_files.path("out")).removeRecursively();
        QDir(m_files.folder()).mkdir("out");
        m_files.put("out/d." + type, "the old file");
        return m_files.path("out");
    }
    bool onlyOldDocument(const QString& type) const
    {
        return m_files.everything("out") == QStringList{"d." + type} &&
               m_files.get("out/d." + type) == "the old file";
    }

private slots:
    void badPages_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("bad");
        QTest::addColumn<QString>("reason");
        for (const char* type : {"pdf", "ofd"})
            for (const auto& [bad, reason] : {std::pair{"missing.jpg", "No such file"},
                                              {"empty.jpg", "empty"},
                                              {"cut.jpg", "ends too early"},
                                              {"bit.png", "check sum"},
                                              {"folder.jpg", "not a file"},
                                              {"text.png", "not a known kind"},
                                              {"cut.pnm", "cut.pnm"}})
                QTest::addRow("%s %s", type, bad) << QString(type) << QString(bad) << QString(reason);
    }
    void badPages()
    {
        QFETCH(QString, type);
        QFETCH(QString, bad);
        QFETCH(QString, reason);
        const QString good = page("good.jpg");
        m_files.put("empty.jpg", {});
        m_files.put("text.png", "no picture at all");
        m_files.put("cut.jpg", m_files.get("good.jpg").chopped(500));
        QDir(m_files.folder()).mkdir("folder.jpg");
        page("whole.png");
        QByteArray bit = m_files.get("whole.png");
        bit[bit.size() / 2] = static_cast<char>(bit[bit.size() / 2] ^ 1);
        m_files.put("bit.png", bit);
        m_files.put("cut.pnm", "P5\n10 10\n255\nabc");

        const QString folder = withOldDocument(type);
        QVERIFY(!save(type, {good, m_files.path(bad), good}, folder));
        QCOMPARE(m_library.lastErrorPage(), m_files.path(bad));
        QVERIFY2(m_library.lastError().contains(reason) && m_library.lastError().contains(bad),
                 qPrintable(m_library.lastError()));
        QVERIFY(onlyOldDocument(type));
        QVERIFY(save(type, {good}, folder) && m_library.lastErrorPage().isEmpty());
        QVERIFY(m_files.get("out/d." + type).size() > m_files.get("good.jpg").size());
    }

    // No cut leaves a page that seems whole, and no wrong byte makes the reader run wild.
    void everyCutAndManyWrongBytes()
    {
        for (const QString name : {"small.jpg", "small.png"}) {
            page(name);
            const QByteArray whole = m_files.get(name);
            const std::string path = QFile::encodeName(m_files.path(name)).toStdString();
            for (int size = 0; size < whole.size(); size += size < 700 ? 1 : 101) {
                m_files.put(name, whole.left(size));
                QVERIFY2(refused(path), qPrintable(QStringLiteral("%1 cut to %2").arg(name).arg(size)));
            }
            for (int at = 2; at < 400; ++at) {
                QByteArray wrong = whole;
                wrong[at] = static_cast<char>(wrong[at] ^ 0xff);
                m_files.put(name, wrong);
                refused(path);
            }
        }
    }

    void pageThatChangesWhileTheDocumentIsWritten()
    {
        const QString first = page("first.jpg"), second = page("second.jpg");
        const QString folder = withOldDocument("pdf");
        DocumentOptions options;
        options.progress = [&](int done, int) {
            if (done == 1)
                m_files.put("second.jpg", "gone");
            return true;
        };
        QVERIFY(!save("pdf", {first, second}, folder, options));
        QCOMPARE(m_library.lastErrorPage(), second);
        QVERIFY(onlyOldDocument("pdf"));
    }

    void badPlacesAndNames()
    {
        const QString good = page("good.jpg");
        m_files.put("file", "x");
        for (const QString type : {"pdf", "ofd"}) {
            for (const QString& folder :
                 {m_files.path("missing"), m_files.path("file"), QStringLiteral("/proc")}) {
                QVERIFY(!save(type, {good}, folder));
                QVERIFY(!m_library.lastError().isEmpty() && m_library.lastErrorPage().isEmpty() &&
                        !m_library.lastErrorIsDiskFull());
            }
            QVERIFY(!save(type, {}, m_files.folder()));
        }
        for (const QString& name :
             {QStringLiteral("a/b"), QString(), QString(300, 'n'), QString::fromLatin1("nul\0x", 5)}) {
            QVERIFY(!m_library.savePDF({good}, m_files.folder(), name, "pdf"));
            QVERIFY(!m_library.saveOFD({good}, m_files.folder() + '/', name, 2));
        }
        const QString odd = QString::fromUtf8("-报告 'x\" $(id);*\n");
        QVERIFY(m_library.savePDF({good}, m_files.folder(), odd, "pdf") &&
                QFile::exists(m_files.path(odd + ".pdf")));
        QVERIFY(!m_library.savePDF({good}, m_files.folder(), "d", nullptr));
    }

    void fullDiskAndKill_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<bool>("kill");
        for (const char* type : {"pdf", "ofd"})
            for (bool kill : {false, true})
                QTest::addRow("%s %s", type, kill ? "killed" : "full") << QString(type) << kill;
    }
    void fullDiskAndKill()
    {
        QFETCH(QString, type);
        QFETCH(bool, kill);
        QStringList pages;
        for (int i = 0; i < 6; ++i)
            pages.append(page(QStringLiteral("p%1.jpg").arg(i), i));
        const QString folder = withOldDocument(type);
        const pid_t child = fork();
        if (child == 0) {
            const rlimit limit{60000, 60000};
            DocumentOptions options;
            if (kill)
                options.progress = [](int done, int) { return done < 3 || raise(SIGKILL) == 0; };
            else
                setrlimit(RLIMIT_FSIZE, &limit);
            const bool saved = save(type, pages, folder, options);
            _exit(saved ? 1 : m_library.lastErrorIsDiskFull() ? 0 : 2);
        }
        int status = -1;
        QCOMPARE(waitpid(child, &status, 0), child);
        QCOMPARE(WIFSIGNALED(status), kill);
        if (!kill)
            QCOMPARE(WEXITSTATUS(status), 0);
        QCOMPARE(m_files.get("out/d." + type), QByteArray("the old file"));
        QVERIFY(kill || onlyOldDocument(type)); // a killed writer may leave a hidden temporary file
        QVERIFY(save(type, pages, folder));
    }

    void progressAndCancel()
    {
        QStringList pages;
        for (int i = 0; i < 5; ++i)
            pages.append(page(QStringLiteral("p%1.jpg").arg(i), i));
        pages.append(page("p5.bmp")); // decoded and encoded while the document is written
        for (const QString type : {"pdf", "ofd"}) {
            QList<int> seen;
            DocumentOptions options;
            options.progress = [&](int done, int total) {
                if (done > 0)
                    seen.append(done);
                return total == pages.size();
            };
            const QString folder = withOldDocument(type);
            QVERIFY(save(type, pages, folder, options));
            QCOMPARE(seen.last(), pages.size());
            QVERIFY(seen.size() >= 3 && std::is_sorted(seen.begin(), seen.end()));
            withOldDocument(type);
            options.progress = [](int done, int) { return done < 2; };
            QVERIFY(!save(type, pages, folder, options));
            QVERIFY(m_library.lastError().contains("cancelled") && m_library.lastErrorPage().isEmpty());
            QVERIFY(onlyOldDocument(type));
        }
    }
};

QTEST_GUILESS_MAIN(DocumentFaultsTest)
#include "tst_documentfaults.moc"
