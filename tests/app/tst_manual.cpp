// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/windowfixture.h"
#include "forms/wholesetpanel.h"

#include <QMessageBox>

// The help button and F1, with a stand-in for the viewer that notes what it was given and stays open while
// there is a file "stay".
class TestManual : public WindowFixture
{
    Q_OBJECT

private:
    QString stay() const { return installRoot() + "stay"; }
    int opened() const { return fileContent(installRoot() + "calls").count('\n'); }

    bool installReader()
    {
        const QByteArray root = QFile::encodeName(installRoot());
        const QByteArray script = "#!/bin/sh\ncd '" + root +
                                  "' || exit 1\necho \"$@\" >> calls\n"
                                  "while [ -e stay ]; do sleep 0.05; done\necho > ended\n";
        return putFile(paths::pdfReader(), script) &&
               QFile::setPermissions(paths::pdfReader(),
                                     QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

private slots:
    void whatIsMissingIsSaid()
    {
        QTest::keyClick(m_window.get(), Qt::Key_F1);
        QTRY_VERIFY(status().contains("找不到 PDF 阅读器")); // a button pressed by a key takes its time
        QVERIFY(installReader());
        click(*m_window, "helpPushButton");
        QVERIFY(status().contains("找不到用户手册"));
        QString said; // a dialog hides the status line
        inModal<wholesetpanel>([&said](wholesetpanel& dialog) {
            inModal<QMessageBox>([&said](QMessageBox& box) {
                said = box.text();
                box.accept();
            });
            QTest::keyClick(&dialog, Qt::Key_F1);
            dialog.reject();
        });
        m_window->on_wholesetPushButton_clicked();
        QVERIFY(said.contains("找不到用户手册"));
        QCOMPARE(opened(), 0);
        QVERIFY(putFile(paths::manual(), "%PDF") && putFile(paths::pdfReader(), "no program"));
        click(*m_window, "helpPushButton");
        QTRY_VERIFY(status().contains("无法启动"));
    }

    void oneViewerIsOpenedFromAnyWindow()
    {
        QVERIFY(installReader() && putFile(paths::manual(), "%PDF") && putFile(stay(), ""));
        inModal<wholesetpanel>([this](wholesetpanel& dialog) {
            QTest::keyClick(control<QWidget>(dialog, "delValue"), Qt::Key_F1);
            QTRY_COMPARE(opened(), 1);
            QTest::keyClick(&dialog, Qt::Key_F1); // it is open
            dialog.reject();                      // and keeps no dialog open
        });
        m_window->on_wholesetPushButton_clicked();
        QCOMPARE(fileContent(installRoot() + "calls"), QFile::encodeName(paths::manual()) + '\n');
        QVERIFY(QFile::remove(stay()));
        QTRY_VERIFY(QFile::exists(installRoot() + "ended"));
        QVERIFY(putFile(stay(), ""));
        inModal<wholesetpanel>([this](wholesetpanel& dialog) {
            QTRY_VERIFY((QTest::keyClick(&dialog, Qt::Key_F1), opened() == 2));
            dialog.reject();
        });
        m_window->on_wholesetPushButton_clicked();
        QCOMPARE(opened(), 2);
    }

    void theButtonsSlotReturnsWhenTheViewerEnds()
    {
        QVERIFY(installReader() && putFile(paths::manual(), "%PDF") && putFile(stay(), ""));
        QTimer::singleShot(300, this, [this] { QFile::remove(stay()); });
        m_window->on_helpPushButton_clicked();
        QCOMPARE(opened(), 1);
        QVERIFY(!QFile::exists(stay()));
    }
};

QTEST_MAIN(TestManual)
#include "tst_manual.moc"
