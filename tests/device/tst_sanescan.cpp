// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "device/cancelflag.h"
#include "device/sane_scan.h"
#include "scriptedsane.h"

#include <QTemporaryDir>
#include <QtTest>
#include <csignal>
#include <sys/resource.h>

namespace {

// No file of this process grows beyond the limit, as on a full disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_saved);
        const rlimit limit = {bytes, m_saved.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_saved);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_saved = {};
    void (*m_handler)(int);
};

ScriptedFrame greyPage(char value = 'x', SaneStatus end = SaneStatus::Eof)
{
    ScriptedFrame page = frame(FrameFormat::Gray, 4, 2, 8, {QByteArray(8, value)});
    page.end = end;
    return page;
}

} // namespace

class TestSaneScan : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        cancelflag::clear();
        m_folder.reset(new QTemporaryDir);
        m_script = {};
    }

    void pagesBecomeFiles()
    {
        QByteArray large(100000, '\0'); // several reads
        for (int i = 0; i < large.size(); ++i)
            large[i] = char(i * 7);
        m_script.frames = {greyPage('a'), frame(FrameFormat::Rgb, 100, 250, 8, {large.left(75000)}),
                           greyPage('c')};
        QCOMPARE(scan(), SaneStatus::NoDocs);
        QCOMPARE(files(), QStringList({"p-0001.pnm", "p-0002.pnm", "p-0003.pnm"}));
        QCOMPARE(content("p-0001.pnm"), QByteArray("P5\n\n4 2\n255\naaaaaaaa"));
        QCOMPARE(content("p-0002.pnm"), "P6\n100 250\n255\n" + large.left(75000));
        QCOMPARE(m_report.pages, 3);
        QCOMPARE(m_report.firstFault, SaneStatus::Good);
        QVERIFY(m_bufferFreed);
        QCOMPARE(sane_scan::device, nullptr);
    }

    void frameTypes()
    {
        const std::vector<int> grey = {0}, rgb = {1};
        const struct
        {
            std::vector<int> channels; // formats of the frames
            int lines, depth, padding; // padding: bytes at the end of a line
            QByteArray sent, expected;
        } rows[] = {
            {grey, 2, 1, 0, "\x80\x40", "P4\n2 2\n\x80\x40"},
            {grey, 1, 16, 0, "\x01\x02\x03\x04", "P5\n\n2 1\n65535\n\x02\x01\x04\x03"},
            {rgb, 1, 16, 0, "ABCDEFGHIJKL", "P6\n2 1\n65535\nBADCFEHGJILK"},
            {grey, -1, 8, 0, "abcdef", "P5\n\n2 3\n255\nabcdef"}, // of unknown height
            {grey, -1, 8, 0, "abcde", "P5\n\n2 2\n255\nabcd"},    // its last line is cut
            {rgb, -1, 16, 0, "ABCDEFGHIJKL", "P6\n2 1\n65535\nBADCFEHGJILK"},
            {grey, 2, 8, 2, "ab--cd--", "P5\n\n2 2\n255\nabcd"},
            {{2, 3, 4}, 1, 8, 0, "rRgGbB", "P6\n2 1\n255\nrgbRGB"},
            {{4, 2, 3}, -1, 8, 0, "bBrRgG", "P6\n2 1\n255\nrgbRGB"},
            {{2}, 1, 8, 0, "rR", QByteArray("P6\n2 1\n255\nr\0\0R\0\0", 17)},
        };
        for (const auto& [channels, lines, depth, padding, sent, expected] : rows) {
            init();
            const int share = sent.size() / int(channels.size());
            for (int i = 0; i < int(channels.size()); ++i) {
                ScriptedFrame one = frame(FrameFormat(channels[i]), 2, lines, depth,
                                          {sent.mid(i * share, share)}, i + 1 == int(channels.size()));
                one.parameters.bytesPerLine += padding;
                m_script.frames.push_back(one);
            }
            QCOMPARE(scan(), SaneStatus::NoDocs);
            QCOMPARE(content("p-0001.pnm"), expected);
            QCOMPARE(m_report.pages, 1);
        }
    }

    // 16-bit samples come in portions of any size; a sample's halves may be in different reads.
    void splitSamplesStayWhole()
    {
        const QByteArray sent = "abcdefghijkl", swapped = "badcfehgjilk";
        for (int first = 0; first <= sent.size(); ++first) {
            for (int second = first; second <= sent.size(); ++second) {
                m_script = {};
                std::vector<QByteArray> portions;
                for (const QByteArray& portion :
                     {sent.left(first), sent.mid(first, second - first), sent.mid(second)})
                    if (!portion.isEmpty())
                        portions.push_back(portion);
                m_script.frames = {frame(FrameFormat::Gray, 6, 1, 16, portions)};
                scan();
                QCOMPARE(content("p-0001.pnm"), "P5\n\n6 1\n65535\n" + swapped);
            }
        }
    }

    void framesThatBreakTheChecks()
    {
        const std::vector<ScriptedFrame> broken = {
            frame(FrameFormat::Gray, 4, 2, 4, {"data"}),
            frame(FrameFormat::Rgb, 4, 2, 1, {"data"}),
            frame(FrameFormat::Red, 4, 2, 16, {"data"}),
            frame(FrameFormat(11), 4, 2, 8, {"data"}),
            frame(FrameFormat::Gray, 0, 2, 8, {"data"}),
            frame(FrameFormat::Red, 4, 2, 8, {"datadata"}, false), // a grey frame cannot follow it
        };
        for (const ScriptedFrame& first : broken) {
            init();
            m_script.frames = {first, greyPage(), greyPage()};
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Assertion failed: parm\\."));
            scan();
            QCOMPARE(m_report.firstFault, SaneStatus::IoError);
            QVERIFY(files().contains("p-0001.pnm.part") && files().contains("p-0002.pnm"));
        }
    }

    void options()
    {
        scan();
        const QStringList sent = {
            "option 1=300",  "option 2=ADF Duplex", "option 4=A4",    "option 6=图片效果",
            "option 7=彩色", "option 9=关",         "option 10=正常", "option 11=无",
            "option 12=无",  "option 13=关",        "start"};
        QCOMPARE(m_script.calls.filter(QRegularExpression("^(option|start)")), sent);
        m_script = {};
        sane_scan session(std::make_unique<ScriptedSane>(m_script));
        session.setScanParam(250, 0, 8, -1, 4, 3, 5, 4, 11, 3); // outside the lists: touch nothing
        QCOMPARE(m_script.calls, QStringList());
        session.setScanParam(1200, 5, 7, 3, 3, 1, 4, 3, 10, 2);
        QCOMPARE(m_script.calls.size(), 10);
    }

    // Bad pages leave their .part and the batch goes on; the first fault is the one reported.
    void faults()
    {
        const auto bad = [](SaneStatus end) { return greyPage('b', end); };
        ScriptedFrame worse = greyPage();
        worse.parametersStatus = SaneStatus::IoError;
        m_script.frames = {greyPage('a'), bad(SaneStatus::Jammed), worse, greyPage('d')};
        m_script.frames[1].portions = {"bbb"};
        QCOMPARE(scan(), SaneStatus::NoDocs);
        QCOMPARE(files(), QStringList({"p-0001.pnm", "p-0002.pnm.part", "p-0003.pnm.part", "p-0004.pnm"}));
        QCOMPARE(content("p-0002.pnm.part"), QByteArray("P5\n\n4 2\n255\nbbb"));
        QCOMPARE(m_report.pages, 2);
        QCOMPARE(m_report.firstFault, SaneStatus::Jammed);

        init(); // the fault stays
        m_script.frames = {bad(SaneStatus::Jammed), greyPage()};
        m_script.starts = {SaneStatus::Good, SaneStatus::CoverOpen};
        QCOMPARE(scan(), SaneStatus::CoverOpen);
        QCOMPARE(m_report.firstFault, SaneStatus::Jammed);
        QCOMPARE(m_script.count("start"), 2);

        init(); // no documents inside a page: no fault and no file
        m_script.frames = {greyPage(), bad(SaneStatus::NoDocs), greyPage()};
        QCOMPARE(scan(), SaneStatus::NoDocs);
        QCOMPARE(files(), QStringList({"p-0001.pnm"}));
        QCOMPARE(m_report.firstFault, SaneStatus::Good);

        init(); // failing for ever ends
        m_script.frames.assign(1000, bad(SaneStatus::IoError));
        QCOMPARE(scan(), SaneStatus::IoError);
        QVERIFY(m_script.count("start") < 1000);
    }

    void sources()
    {
        QCOMPARE(scan(scansource::FeederFront), SaneStatus::NoDocs); // empty
        QCOMPARE(files(), QStringList());
        QCOMPARE(m_report.firstFault, SaneStatus::NoDocs);
        QCOMPARE(m_script.count("start"), 1);

        for (const SaneStatus end : {SaneStatus::Eof, SaneStatus::IoError}) { // the glass is one page
            init();
            m_script.frames = {greyPage('x', end), greyPage()};
            QCOMPARE(scan(scansource::Flatbed), end == SaneStatus::Eof ? SaneStatus::NoDocs : end);
            QCOMPARE(files().size(), 1);
            QCOMPARE(m_script.count("start"), 1);
        }

        for (const bool empty : {false, true}) { // an empty feeder: the glass
            init();
            if (empty)
                m_script.starts = {SaneStatus::NoDocs};
            m_script.frames = {greyPage(), greyPage()};
            QCOMPARE(scan(scansource::Automatic), SaneStatus::NoDocs);
            QCOMPARE(m_report.pages, empty ? 1 : 2);
            QCOMPARE(m_report.firstFault, SaneStatus::Good);
            QCOMPARE(m_script.calls.contains("option 2=Flatbed"), empty);
        }
    }

    void cancelInsideAPage()
    {
        int reads = 0;
        m_script.onRead = [&reads] {
            if (++reads == 4) // the first page takes two
                cancelflag::set();
        };
        m_script.frames = {greyPage(), frame(FrameFormat::Gray, 4, 2, 8, {"aa", "bb", "cc", "dd"}),
                           greyPage()};
        QCOMPARE(scan(), SaneStatus::Cancelled);
        QCOMPARE(reads, 4);
        QCOMPARE(files(), QStringList({"p-0001.pnm", "p-0002.pnm.part"}));
        QCOMPARE(m_report.firstFault, SaneStatus::Cancelled);
        QVERIFY(m_script.calls.contains("cancel"));
        QCOMPARE(m_script.count("start"), 2);
    }

    void fullDisk()
    {
        m_script.frames = {greyPage(), frame(FrameFormat::Gray, 100, 1000, 8, {QByteArray(100000, 'x')}),
                           greyPage()};
        {
            const FileSizeLimit limit(50000);
            scan();
        }
        QVERIFY(m_report.writeFailed);
        QCOMPARE(m_report.pages, 1);
        QCOMPARE(files(), QStringList({"p-0001.pnm", "p-0002.pnm.part"}));
        QCOMPARE(m_script.count("start"), 2); // no sheet is pulled through for nothing

        QVERIFY(QDir(m_folder->path()).removeRecursively());
        QCOMPARE(scan(), SaneStatus::AccessDenied);
        QVERIFY(m_report.writeFailed && m_report.pages == 0);
    }

private:
    SaneStatus scan(int source = scansource::FeederDuplex)
    {
        sane_scan session(std::make_unique<ScriptedSane>(m_script));
        SaneHandle handle = nullptr;
        session.init();
        session.open_device(m_script.devices.back(), handle);
        session.main_scan_set_param(300, source, 2, 2, 1, 2, 1, 1, 1, 1);
        const SaneStatus status = session.start_scan(handle, (m_folder->path() + "/p").toStdString());
        m_report = session.report();
        m_bufferFreed = sane_scan::buffer.empty() && sane_scan::buffer_size == 32768;
        session.close_device(handle);
        return status;
    }
    QStringList files() const { return QDir(m_folder->path()).entryList(QDir::Files, QDir::Name); }
    QByteArray content(const QString& name) const { return fileContent(m_folder->filePath(name)); }

    Script m_script;
    sane_scan::Report m_report;
    bool m_bufferFreed = false;
    QScopedPointer<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestSaneScan)
#include "tst_sanescan.moc"
