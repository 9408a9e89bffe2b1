// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ofdparts.h"
#include "documents/documentfiles.h"

#include <QDir>
#include <QFile>
#include <QtTest>

// The packer as the program and a user at a terminal start it.
class ZipOfdTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DocumentFiles> m_files;
    const QString m_packer = qEnvironmentVariable("ZIP_OFD");

    QByteArray pack(const QStringList& arguments) const { return m_files->run(m_packer, arguments); }

private slots:
    void init()
    {
        m_files = std::make_unique<DocumentFiles>();
        QDir folder(m_files->folder());
        folder.mkpath("Doc_0/Pages/Page_0");
        folder.mkpath("Doc_0/Res");
        m_files->put("OFD.xml", "<entry/>");
        m_files->put("Doc_0/Document.xml", QByteArray(20000, 'x'));
        m_files->put("Doc_0/Pages/Page_0/Content.xml", "<page/>");
        m_files->put(ofdparts::kMark, "");
        m_files->put("d.ofd", "the old file");
        m_files->put("mine.txt", "the user's");
    }

    void packsAndCleansUp_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::newRow("as the writer says it") << "FOLDER/";
        QTest::newRow("plain") << "FOLDER";
        QTest::newRow("by hand") << ".";
        QTest::newRow("doubled slashes") << "FOLDER/.//";
    }
    void packsAndCleansUp()
    {
        QFETCH(QString, folder);
        QCOMPARE(pack({folder.replace("FOLDER", m_files->folder()), "d.ofd"}), QByteArray());
        QCOMPARE(m_files->everything(), (QStringList{"d.ofd", "mine.txt"}));
        QCOMPARE(m_files->run("unzip", {"-Z1", "d.ofd"}),
                 QByteArray("OFD.xml\nDoc_0/Document.xml\nDoc_0/Pages/Page_0/Content.xml\nDoc_0/Res/\n"));
        QCOMPARE(m_files->run("unzip", {"-p", "d.ofd", "Doc_0/Document.xml"}), QByteArray(20000, 'x'));
        QVERIFY(m_files->get("d.ofd").size() < 2000);
    }

    void failuresChangeNothing_data()
    {
        QTest::addColumn<QString>("prepare"); // a shell line
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("said");
        const QStringList usual{".", "d.ofd"};
        QTest::newRow("no entry file")
            << "rm OFD.xml" << usual << QByteArray("1 zip-ofd: there is no ./OFD.xml");
        QTest::newRow("no tree") << "rm -r Doc_0; touch Doc_0" << usual
                                 << QByteArray("1 zip-ofd: there is no folder");
        QTest::newRow("link out of the folder")
            << "ln -s /etc/passwd Doc_0/Res/x" << usual << QByteArray("Doc_0/Res/x is neither");
        QTest::newRow("slash in the name")
            << "mkdir sub" << QStringList{".", "sub/d.ofd"} << QByteArray("1 zip-ofd: \"sub/d.ofd\" is not");
        QTest::newRow("name of a part")
            << "true" << QStringList{".", "OFD.xml"} << QByteArray("name of one of its parts");
        QTest::newRow("a folder stands there")
            << "rm d.ofd; mkdir -p d.ofd/x" << usual << QByteArray("Is a directory");
        QTest::newRow("no such folder")
            << "true" << QStringList{"nowhere", "d.ofd"} << QByteArray("nowhere is not a folder");
        QTest::newRow("one argument") << "true" << QStringList{"."} << QByteArray("2 Usage");
        QTest::newRow("unknown option")
            << "true" << QStringList{"--kepe", ".", "d.ofd"} << QByteArray("2 zip-ofd: unknown option");
        QTest::newRow("full") << "head -c 90000 /dev/urandom >Doc_0/Res/a.jpg" << QStringList{"LIMIT"}
                              << QByteArray("4 zip-ofd: cannot write");
    }
    void failuresChangeNothing()
    {
        QFETCH(QString, prepare);
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, said);
        m_files->run("sh", {"-c", prepare});
        const QByteArray before =
            m_files->run("sh", {"-c", "find . -print0 | sort -z | xargs -0 ls -ld; cat d.ofd; true"});
        const QByteArray answer = arguments.first() == "LIMIT"
                                      ? m_files->run("sh", {"-c", "ulimit -f 8; exec \"$ZIP_OFD\" . d.ofd"})
                                      : pack(arguments);
        QVERIFY2(answer.startsWith("FAILED: ") && answer.contains(said), answer.constData());
        QCOMPARE(m_files->run("sh", {"-c", "find . -print0 | sort -z | xargs -0 ls -ld; cat d.ofd; true"}),
                 before);
    }

    void optionsAndPartsThatCannotBeRemoved()
    {
        QVERIFY(pack({"--help"}).startsWith("Usage: zip-ofd"));
        QCOMPARE(pack({"--keep", "--", ".", "-d.ofd"}), QByteArray());
        QVERIFY(m_files->everything().contains("Doc_0") && m_files->everything().contains("-d.ofd"));
        QVERIFY(m_files->run("unzip", {"-tq", "./-d.ofd"}).contains("No errors"));
        QFile::remove(m_files->path(ofdparts::kMark));
        QDir(m_files->folder()).mkpath(QString(ofdparts::kMark) + "/stuck"); // cannot be removed as a file
        const QByteArray answer = pack({".", "d.ofd"});
        QVERIFY2(answer.startsWith("FAILED: 3 ") && answer.contains("was written"), answer.constData());
        QVERIFY(m_files->run("unzip", {"-tq", "d.ofd"}).contains("No errors"));
    }
};

QTEST_GUILESS_MAIN(ZipOfdTest)
#include "tst_zipofd.moc"
