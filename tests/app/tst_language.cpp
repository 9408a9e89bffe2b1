// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/widget.h"
#include "config/freshroot.h"
#include "config/paths.h"
#include "config/progresswords.h"
#include "device/readbtn.h"
#include "device/scriptedusb.h"
#include "device/statefile.h"
#include "device/statetexts.h"
#include "language/language.h"

#include <QComboBox>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTextCodec>
#include <QTranslator>
#include <QtTest>

// The choice of the language, and what must not depend on it.
class TestLanguage : public QObject
{
    Q_OBJECT

private:
    void speak(const char* locale)
    {
        qDeleteAll(qApp->findChildren<QTranslator*>(QString(), Qt::FindDirectChildrenOnly));
        qputenv("LC_ALL", locale);
        qunsetenv("LANGUAGE");
        language::set(*qobject_cast<QApplication*>(qApp), {paths::translation()});
    }

    QString helpOf(const char* program, const char* locale)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LC_ALL", locale);
        process.setProcessEnvironment(environment);
        process.start(program, {"--help"});
        return process.waitForFinished() ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
    }

private slots:
    void initTestCase()
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("utf-8"));
        QVERIFY(freshRoot());
        // as installed: the toolkit's own file under the name that the program looks for
        const QString texts = QLibraryInfo::location(QLibraryInfo::TranslationsPath) + "/qtbase_zh_CN.qm";
        QVERIFY(QFile::copy(texts, paths::translation()));
    }

    void namedLocalesOfOtherLanguagesAreEnglish()
    {
        for (const char* locale :
             {"", "C", "C.UTF-8", "POSIX", "zh_CN.UTF-8", "zh_TW", "zh", "yue_HK", "nan_TW@latin"})
            QVERIFY2(!language::isEnglish(locale), locale);
        for (const char* locale : {"en_US", "en", "en_GB.UTF-8", "de_DE@euro", "ja_JP.eucJP", "sr_RS@latin"})
            QVERIFY2(language::isEnglish(locale), locale);
        QVERIFY(!language::isEnglish("en_US.UTF-8", "zh_CN:en"));
        QVERIFY(language::isEnglish("zh_CN.UTF-8", "en:zh_CN"));
        QVERIFY(!language::isEnglish("C", "en")); // without a named locale the list does not count
        QVERIFY(language::isEnglish("en_US", "C"));
    }

    void toolkitAndProgramSpeakTheSame()
    {
        const auto cancel = [] {
            QMessageBox box(QMessageBox::Question, {}, {}, QMessageBox::Cancel);
            return box.button(QMessageBox::Cancel)->text().remove('&');
        };
        speak("en_US.UTF-8");
        QCOMPARE(cancel(), QString("Cancel"));
        QCOMPARE(Widget::tr("就绪"), QString("Ready"));
        speak("C.UTF-8");
        QCOMPARE(cancel(), QString("取消"));
        QCOMPARE(Widget::tr("就绪"), QString("就绪"));
    }

    void viewerFollowsTheSameRule()
    {
        QVERIFY(helpOf(PDF_READER, "C").contains("显示 PDF 文件。"));
        QVERIFY(helpOf(PDF_READER, "de_DE.UTF-8").contains("Shows PDF files."));
    }

    // The status window tells states apart by their texts.
    void statesDifferInEnglish()
    {
        speak("en_US.UTF-8");
        QSet<QString> texts;
        for (int code = state::FingerWanted; code <= state::Cancelled; ++code)
            texts << state::text(code);
        QCOMPARE(texts.size(), state::Cancelled - state::FingerWanted + 1);
        QVERIFY(!texts.contains(QString()));
        QCOMPARE(state::text(state::Preparing), progress::preparing());
        QVERIFY(state::isFaultText(state::text(state::FeederEmpty)));
        QVERIFY(!state::isFaultText(state::text(state::Busy)));
    }

    void settingsAreStoredAlike()
    {
        QByteArrayList stored;
        for (const char* locale : {"zh_CN.UTF-8", "en_US.UTF-8"}) {
            QVERIFY(freshRoot());
            speak(locale);
            UsbScript usb;
            Widget window(std::make_unique<readBtn>(std::make_unique<ScriptedUsb>(usb),
                                                    ButtonWatch::Intervals{20, 20, 10}),
                          0);
            for (QComboBox* combo :
                 window.findChildren<QComboBox*>(QRegularExpression("^resolutionComboBox")))
                combo->setCurrentIndex(combo->count() - 1); // "custom"
            window.newTemplate("all");                      // the settings of every panel
            stored << fileContent(paths::templateFolder() + "all.conf");
        }
        QVERIFY(stored[0].contains("resolutionText=自定义") &&
                stored[0].contains("pageSetFrontText=正面旋转0"));
        QCOMPARE(stored[1], stored[0]);
    }
};

QTEST_MAIN(TestLanguage)
#include "tst_language.moc"
