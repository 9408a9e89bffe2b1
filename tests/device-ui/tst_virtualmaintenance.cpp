// SPDX-License-Identifier: GPL-3.0-or-later
// The maintenance page with the real libusb and the scanner in software; runs below `vscan run`.
#include "config/freshroot.h"
#include "device/usb_communicate.h"
#include "maintenancepage.h"
#include "virtual-scanner/daemonfixture.h"

#include <QMessageBox>

class VirtualMaintenanceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(freshRoot()); }
    void init() { vscan("clear"); }
    void countersAndStandby()
    {
        vscan("counters scan=0 roller=4660 pad=65535");
        FunctionalApp page;
        page.getScannerPrimiters();
        QCOMPARE(shown(page), QString("0, 4660, 65535, 正常"));
        inModal<QMessageBox>(
            [](QMessageBox& box) { QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton); });
        open(page);
        page.on_reset_btn_ruandian_clicked();
        QCOMPARE(shown(page), QString("0, 4660, 0, 正常"));
        for (int minutes : {59, 60, 90, 0}) {
            QCOMPARE(page.setSleepTime(minutes), 0);
            const QString counters = vscan("counters");
            QVERIFY2(QRegularExpression(QString("standby\\D+%1\\b").arg(minutes)).match(counters).hasMatch(),
                     qPrintable(counters));
        }
    }

    void unplugAndReplug()
    {
        vscan("counters scan=1 roller=2 pad=3");
        FunctionalApp page;
        vscan("unplug");
        page.getScannerPrimiters();
        QCOMPARE(shown(page), QString("off 0, off 0, off 0, 扫描仪连接断开"));
        QCOMPARE(page.setSleepTime(15), usb_communicate::DeviceNotFound);
        vscan("replug");
        page.getScannerPrimiters();
        QCOMPARE(shown(page), QString("1, 2, 3, 正常"));
        vscan("usb claim-busy 1"); // another program has the interface
        QCOMPARE(page.setSleepTime(15), usb_communicate::WriteFailed);
        vscan("usb claim-busy 0");
        QCOMPARE(page.setSleepTime(15), usb_communicate::Done);
    }

    void lateShortAndSilentReplies()
    {
        vscan("counters scan=1 roller=2 pad=3");
        FunctionalApp page;
        vscan("usb late 1 2500");
        page.getScannerPrimiters(); // the first reply must not pass for the second counter
        QCOMPARE(shown(page), QString("off 0, 2, 3, 扫描仪没有应答或应答不完整"));
        page.getScannerPrimiters();
        QCOMPARE(shown(page), QString("1, 2, 3, 正常"));
        vscan("counters scan=4 roller=5 pad=6");
        vscan("usb short 1 63");
        page.getScannerPrimiters();
        QCOMPARE(shown(page), QString("1, 5, 6, 扫描仪没有应答或应答不完整"));
        vscan("usb silent 1");
        page.getScannerPrimiters();
        QCOMPARE(shown(page), QString("off 1, 5, 6, 扫描仪没有应答或应答不完整"));
        vscan("usb stall 81");
        QVERIFY(page.setSleepTime(20) != usb_communicate::DeviceNotFound);
        vscan("usb ok");
        page.getScannerPrimiters();
        page.getScannerPrimiters(); // a stalled reply had been left
        QCOMPARE(shown(page), QString("4, 5, 6, 正常"));
    }

private:
    static QString vscan(const QString& words) { return DaemonFixture::output(words.split(' ')); }
    static QString shown(const FunctionalApp& page) { return fields(page).join(", ") + ", " + status(page); }
};

QTEST_MAIN(VirtualMaintenanceTest)
#include "tst_virtualmaintenance.moc"
