// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/cancelflag.h"
#include "device/sane_scan.h"
#include "scriptedsane.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// Everything that is printed while it lives.
class PrintedText
{
public:
    PrintedText() : m_saved(dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        dup2(fileno(m_file.get()), STDOUT_FILENO);
    }
    ~PrintedText() { restore(); }
    QByteArray text()
    {
        restore();
        QByteArray all(64 * 1024, '\0');
        std::rewind(m_file.get());
        all.resize(int(std::fread(all.data(), 1, std::size_t(all.size()), m_file.get())));
        return all;
    }

private:
    void restore()
    {
        std::fflush(stdout);
        dup2(m_saved, STDOUT_FILENO);
    }
    FileHandle m_file{std::tmpfile()};
    int m_saved;
};

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

ScriptedFrame greyPage(char value = 'x')
{
    return frame(FrameFormat::Gray, 4, 2, 8, {QByteArray(8, value)});
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
    void cleanup() { cancelflag::clear(); }

    void pagesBecomeFiles();
    void frameTypes_data();
    void frameTypes();
    void splitSamplesStayWhole();
    void framesThatBreakTheChecks_data();
    void framesThatBreakTheChecks();
    void optionsInOrder();
    void valuesOutsideTheListsTouchNothing();
    void emptyFeeder();
    void badPageLeavesItsPartAndTheBatchGoesOn();
    void jamThatStaysEndsTheBatch();
    void noDocumentsInsideAPageLeavesNoFile();
    void glassIsOnePage();
    void automaticSource();
    void cancelInsideAPage();
    void folderThatCannotBeWritten();
    void fullDisk();
    void endlessFailuresEnd();
    void printedTexts();

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
    QByteArray content(const QString& name) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    Script m_script;
    sane_scan::Report m_report;
    bool m_bufferFreed = false;
    QScopedPointer<QTemporaryDir> m_folder;
};

void TestSaneScan::pagesBecomeFiles()
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

void TestSaneScan::frameTypes_data()
{
    QTest::addColumn<QList<int>>("channels"); // formats of the frames
    QTest::addColumn<int>("lines");
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("padding"); // bytes at the end of a line
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QByteArray>("expected");

    const auto row = [](const char* name, QList<int> channels, int lines, int depth, int padding,
                        QByteArray sent, QByteArray expected) {
        QTest::newRow(name) << channels << lines << depth << padding << sent << expected;
    };
    const QList<int> grey = {0}, rgb = {1};
    row("line art", grey, 2, 1, 0, "\x80\x40", "P4\n2 2\n\x80\x40");
    row("grey 16", grey, 1, 16, 0, "\x01\x02\x03\x04", "P5\n\n2 1\n65535\n\x02\x01\x04\x03");
    row("rgb 16", rgb, 1, 16, 0, "ABCDEFGHIJKL", "P6\n2 1\n65535\nBADCFEHGJILK");
    row("grey of unknown height", grey, -1, 8, 0, "abcdef", "P5\n\n2 3\n255\nabcdef");
    row("grey of unknown height, last line cut", grey, -1, 8, 0, "abcde", "P5\n\n2 2\n255\nabcd");
    row("rgb 16 of unknown height", rgb, -1, 16, 0, "ABCDEFGHIJKL", "P6\n2 1\n65535\nBADCFEHGJILK");
    row("padded lines", grey, 2, 8, 2, "ab--cd--", "P5\n\n2 2\n255\nabcd");
    row("channels", {2, 3, 4}, 1, 8, 0, "rRgGbB", "P6\n2 1\n255\nrgbRGB");
    row("channels of unknown height in another order", {4, 2, 3}, -1, 8, 0, "bBrRgG", "P6\n2 1\n255\nrgbRGB");
    row("red alone", {2}, 1, 8, 0, "rR", QByteArray("P6\n2 1\n255\nr\0\0R\0\0", 17));
}

void TestSaneScan::frameTypes()
{
    QFETCH(QList<int>, channels);
    QFETCH(int, lines);
    QFETCH(int, depth);
    QFETCH(int, padding);
    QFETCH(QByteArray, sent);
    QFETCH(QByteArray, expected);
    const int share = sent.size() / channels.size();
    for (int i = 0; i < channels.size(); ++i) {
        ScriptedFrame one = frame(FrameFormat(channels[i]), 2, lines, depth, {sent.mid(i * share, share)},
                                  i + 1 == channels.size());
        one.parameters.bytesPerLine += padding;
        m_script.frames.push_back(one);
    }
    QCOMPARE(scan(), SaneStatus::NoDocs);
    QCOMPARE(content("p-0001.pnm"), expected);
    QCOMPARE(m_report.pages, 1);
}

// 16-bit samples come in portions of any size; a sample's halves may be in different reads.
void TestSaneScan::splitSamplesStayWhole()
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

void TestSaneScan::framesThatBreakTheChecks_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("depth");
    QTest::addColumn<QString>("condition");
    QTest::newRow("grey 4") << 0 << 4 << 4 << "parm.depth == 1 || parm.depth == 8 || parm.depth == 16";
    QTest::newRow("rgb 1") << 1 << 4 << 1 << "parm.depth == 8 || parm.depth == 16";
    QTest::newRow("red 16") << 2 << 4 << 16 << "parm.depth == 8";
    QTest::newRow("unknown format") << 11 << 4 << 8
                                    << "parm.format >= SANE_FRAME_GRAY && parm.format <= SANE_FRAME_BLUE";
    QTest::newRow("no width") << 0 << 0 << 8 << "parm.pixels_per_line > 0";
}

void TestSaneScan::framesThatBreakTheChecks()
{
    QFETCH(int, format);
    QFETCH(int, width);
    QFETCH(int, depth);
    QFETCH(QString, condition);
    m_script.frames = {frame(FrameFormat(format), width, 2, depth, {"data"}), greyPage()};
    QTest::ignoreMessage(QtWarningMsg, qPrintable("Assertion failed: " + condition));
    scan();
    QCOMPARE(m_report.firstFault, SaneStatus::IoError);
    QCOMPARE(files(), QStringList({"p-0001.pnm.part", "p-0002.pnm"}));

    // The same for a frame that cannot follow the first one of its page.
    m_script = {};
    m_script.frames = {frame(FrameFormat::Red, 4, 2, 8, {"datadata"}, false), greyPage()};
    QTest::ignoreMessage(QtWarningMsg,
                         "Assertion failed: parm.format >= SANE_FRAME_RED && parm.format <= SANE_FRAME_BLUE");
    scan();
    QCOMPARE(m_report.firstFault, SaneStatus::IoError);
}

void TestSaneScan::optionsInOrder()
{
    scan();
    const QStringList options = m_script.calls.filter("option");
    QCOMPARE(options, QStringList({"option 1=300", "option 2=ADF Duplex", "option 4=A4", "option 6=图片效果",
                                   "option 7=彩色", "option 9=关", "option 10=正常", "option 11=无",
                                   "option 12=无", "option 13=关"}));
    QVERIFY(m_script.calls.indexOf("start") > m_script.calls.indexOf("option 13=关"));
}

void TestSaneScan::valuesOutsideTheListsTouchNothing()
{
    sane_scan session(std::make_unique<ScriptedSane>(m_script));
    session.setScanParam(250, 0, 8, -1, 4, 3, 5, 4, 11, 3);
    QCOMPARE(m_script.calls, QStringList());
    session.setScanParam(1200, 5, 7, 3, 3, 1, 4, 3, 10, 2);
    QCOMPARE(m_script.calls,
             QStringList({"option 1=1200", "option 2=Automatic Document Feeder", "option 4=USER",
                          "option 6=文字和图片", "option 7=黑白", "option 9=开", "option 10=旋转180度",
                          "option 11=加黑边", "option 12=0.9", "option 13=开"}));
}

void TestSaneScan::emptyFeeder()
{
    QCOMPARE(scan(scansource::FeederFront), SaneStatus::NoDocs);
    QCOMPARE(files(), QStringList());
    QCOMPARE(m_report.firstFault, SaneStatus::NoDocs);
    QCOMPARE(m_script.count("start"), 1);
}

void TestSaneScan::badPageLeavesItsPartAndTheBatchGoesOn()
{
    ScriptedFrame bad = greyPage('b');
    bad.portions = {"bbb"};
    bad.end = SaneStatus::Jammed;
    ScriptedFrame worse = greyPage();
    worse.parametersStatus = SaneStatus::IoError;
    m_script.frames = {greyPage('a'), bad, worse, greyPage('d')};
    QCOMPARE(scan(), SaneStatus::NoDocs);
    QCOMPARE(files(), QStringList({"p-0001.pnm", "p-0002.pnm.part", "p-0003.pnm.part", "p-0004.pnm"}));
    QCOMPARE(content("p-0002.pnm.part"), QByteArray("P5\n\n4 2\n255\nbbb"));
    QCOMPARE(m_report.pages, 2);
    QCOMPARE(m_report.firstFault, SaneStatus::Jammed);
}

void TestSaneScan::jamThatStaysEndsTheBatch()
{
    ScriptedFrame bad = greyPage();
    bad.end = SaneStatus::Jammed;
    m_script.frames = {bad, greyPage()};
    m_script.starts = {SaneStatus::Good, SaneStatus::CoverOpen};
    QCOMPARE(scan(), SaneStatus::CoverOpen);
    QCOMPARE(files(), QStringList({"p-0001.pnm.part"}));
    QCOMPARE(m_report.firstFault, SaneStatus::Jammed); // not what followed from it
    QCOMPARE(m_script.count("start"), 2);
}

void TestSaneScan::noDocumentsInsideAPageLeavesNoFile()
{
    ScriptedFrame nothing = greyPage();
    nothing.end = SaneStatus::NoDocs;
    m_script.frames = {greyPage(), nothing, greyPage()};
    QCOMPARE(scan(), SaneStatus::NoDocs);
    QCOMPARE(files(), QStringList({"p-0001.pnm"}));
    QCOMPARE(m_report.firstFault, SaneStatus::Good);
}

void TestSaneScan::glassIsOnePage()
{
    m_script.frames = {greyPage(), greyPage()};
    QCOMPARE(scan(scansource::Flatbed), SaneStatus::NoDocs);
    QCOMPARE(files(), QStringList({"p-0001.pnm"}));
    QCOMPARE(m_script.count("start"), 1);
    QCOMPARE(m_report.firstFault, SaneStatus::Good);

    m_script = {};
    ScriptedFrame bad = greyPage();
    bad.end = SaneStatus::IoError;
    m_script.frames = {bad, greyPage()};
    QCOMPARE(scan(scansource::Flatbed), SaneStatus::IoError);
    QCOMPARE(m_script.count("start"), 1);
}

void TestSaneScan::automaticSource()
{
    m_script.frames = {greyPage(), greyPage()};
    QCOMPARE(scan(scansource::Automatic), SaneStatus::NoDocs);
    QCOMPARE(m_report.pages, 2);
    QVERIFY(!m_script.calls.contains("option 2=Flatbed"));

    m_script = {};
    m_script.starts = {SaneStatus::NoDocs};
    m_script.frames = {greyPage('g'), greyPage()};
    QCOMPARE(scan(scansource::Automatic), SaneStatus::NoDocs);
    QCOMPARE(m_report.pages, 1);
    QCOMPARE(m_report.firstFault, SaneStatus::Good);
    QCOMPARE(m_script.calls.filter("option 2="),
             QStringList({"option 2=Automatic Document Feeder", "option 2=Flatbed"}));
    QCOMPARE(content("p-0001.pnm"), QByteArray("P5\n\n4 2\n255\ngggggggg"));
}

void TestSaneScan::cancelInsideAPage()
{
    int reads = 0;
    m_script.onRead = [&reads] {
        if (++reads == 4) // the first page takes two
            cancelflag::set();
    };
    m_script.frames = {greyPage(), frame(FrameFormat::Gray, 4, 2, 8, {"aa", "bb", "cc", "dd"}), greyPage()};
    QCOMPARE(scan(), SaneStatus::Cancelled);
    QCOMPARE(reads, 4);
    QCOMPARE(files(), QStringList({"p-0001.pnm", "p-0002.pnm.part"}));
    QCOMPARE(m_report.firstFault, SaneStatus::Cancelled);
    QVERIFY(m_script.calls.contains("cancel"));
    QCOMPARE(m_script.count("start"), 2);
}

void TestSaneScan::folderThatCannotBeWritten()
{
    m_script.frames = {greyPage()};
    QVERIFY(QDir(m_folder->path()).removeRecursively());
    QCOMPARE(scan(), SaneStatus::AccessDenied);
    QVERIFY(m_report.writeFailed);
    QCOMPARE(m_report.pages, 0);
}

void TestSaneScan::fullDisk()
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
}

void TestSaneScan::endlessFailuresEnd()
{
    ScriptedFrame bad = greyPage();
    bad.end = SaneStatus::IoError;
    m_script.frames.assign(1000, bad);
    QCOMPARE(scan(), SaneStatus::IoError);
    QVERIFY(m_script.count("start") < 1000);
}

void TestSaneScan::printedTexts()
{
    m_script.frames = {frame(FrameFormat::Red, 1, -1, 8, {"r"}, false),
                       frame(FrameFormat::Green, 1, -1, 8, {"g"})};
    PrintedText printed;
    scan();
    const QByteArray prefix = m_folder->path().toUtf8() + "/p-000";
    const QByteArray expected =
        "SANE version code: 16777216\n"
        "Name: test:0, vendor: Zarn, model: qwd200, type: sheet fed\n"
        "resolution=300\n\n\n\n\n"
        "do_scan start\ndo_scan part_path = " +
        prefix + "1.pnm.part\npath = " + prefix +
        "1.pnm\n"
        "sane_start end\nfirst_frame\nmust_buffer\nimage.width = 1, image.height = -1\n"
        "scan_it !first_fram sane_start\nscan_it !first_fram sane_start\nclean up \n"
        "sane scan_it over\nsane scan_it SANE_STATUS_GOOD   SANE_STATUS_EOF\n"
        "sane scan_it ofp == 1 || 0 == fclose(ofp)\n"
        "do_scan start\ndo_scan part_path = " +
        prefix + "2.pnm.part\npath = " + prefix +
        "2.pnm\n"
        "sane_start end\nsane_start return != SANE_STATUS_GOOD\nfreebuffer\n";
    QCOMPARE(printed.text(), expected);
}

QTEST_GUILESS_MAIN(TestSaneScan)
#include "tst_sanescan.moc"
