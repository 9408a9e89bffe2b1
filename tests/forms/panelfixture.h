// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "config/factory.h"
#include "config/freshroot.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms-dialogs/driving.h"
#include "forms/recordinghost.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>
#include <memory>

// A panel of scanned pages with a window that has no scanner.
template <typename Panel>
class PanelFixture
{
public:
    std::unique_ptr<RecordingHost> host;
    std::unique_ptr<Panel> panel;

    void restart(const QString& page = "Scan")
    {
        panel.reset();
        host = std::make_unique<RecordingHost>();
        panel = std::make_unique<Panel>(page, *host);
    }
    void startAnew()
    {
        QVERIFY(freshRoot());
        QVERIFY(ensureFactorySettings());
        restart();
    }
    template <typename Control>
    Control* control(const char* name)
    {
        return ::control<Control>(*panel, name);
    }

    static void put(const QMap<QString, QVariant>& values)
    {
        const auto file = openMainSettings();
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            file->setValue(it.key(), it.value());
        QVERIFY(saveSettings(*file));
    }
    static QString stored(const QString& key) { return openMainSettings()->value(key).toString(); }
    static QStringList saved() { return QDir(defaultSaveFolder()).entryList(QDir::Files); }

    // A pressed key gives what the scanner is asked for.
    void scannerIsAskedFor(int resolution)
    {
        panel->scanButtonClicked();
        const ScanParameters& p = host->started;
        QCOMPARE((QVector<int>{p.resolution, p.source, p.paper, p.imageType, p.colorMode, p.option9,
                               p.rotation, p.edgeFill, p.option12, p.option13}),
                 (QVector<int>{resolution, 4, 2, 2, 1, 2, 1, 1, 1, 1}));
    }

    // Pages of one grey, as after a scan that is cancelled when the progress is shown for that time.
    void scan(int pages, char grey, int cancelAt)
    {
        QByteArray pnm = "P5\n400 560\n255\n";
        pnm.append(400 * 560, grey);
        for (int page = 1; page <= pages; ++page)
            QVERIFY(putFile(paths::pagePrefix() + QString("-000%1.pnm").arg(page), pnm));
        host->shown = 0;
        host->cancelAt = cancelAt;
        host->pagesLeft = false;
        panel->scanButtonClicked();
        host->scanOver();
    }

    // Texts of a signal's calls.
    static QStringList texts(const QSignalSpy& words)
    {
        QStringList all;
        for (const auto& word : words)
            all << word.first().toString();
        return all;
    }
};
