// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/searchableofd.h"

#include "config/leftovers.h"
#include "config/ofdparts.h"
#include "config/paths.h"
#include "pdf/ofdpackage.h"
#include "pdf/ofdunits.h"

#include <QCoreApplication>
#include <QDate>
#include <QDebug>
#include <QImageReader>
#include <QProcess>

namespace {

class SearchableOfdText
{
    Q_DECLARE_TR_FUNCTIONS(SearchableOfd)
public:
    static QString noPacker(const QString& program) { return tr("无法运行OFD打包程序“%1”").arg(program); }
    static QString packerFailed(const QString& file, const QString& reason)
    {
        return tr("无法生成“%1”：%2").arg(file, reason);
    }
    static QString diskFull() { return tr("磁盘空间不足"); }
    static QString packerDied() { return tr("打包程序异常退出"); }
};

// Size of the first picture that can be read at all; the page box follows it.
QSize firstPictureSize(const QStringList& pages)
{
    for (const QString& page : pages) {
        const QSize size = QImageReader(page).size();
        if (!size.isEmpty())
            return size;
    }
    return {};
}

} // namespace

SearchableOfd::SearchableOfd(PageReader& reader, DocumentJob job) : m_reading(reader, std::move(job), true) {}

DocumentResult SearchableOfd::ofdOcrProcess(const QStringList& pages)
{
    const QString file = m_reading.folder() + m_reading.job().baseName + ".ofd";
    const QString claimed = claimOfdFolder(m_reading.folder());
    if (!claimed.isEmpty()) {
        m_reading.fail(claimed);
        return m_reading.finish(file);
    }
    const QSize box = ofdPageBox(m_reading.job().paperIndex, firstPictureSize(pages));
    m_pageWidthMm = box.width();
    OfdPackage package(m_reading.folder(), box);
    const bool packed = writePages(pages, package) && pack();
    if (!packed)
        m_reading.fail(package.problem());
    removeOfdParts(m_reading.folder());
    return m_reading.finish(file);
}

QMap<int, zarnOFDLINERET> SearchableOfd::ofdOpenSource(const QString& imagePath)
{
    return ofdTextLines(m_reading.read(imagePath), m_pageWidthMm);
}

bool SearchableOfd::writePages(const QStringList& pages, OfdPackage& package)
{
    if (!package.begin(pages.size(), QDate::currentDate()))
        return false;
    for (int k = 0; k < pages.size(); ++k) {
        if (!m_reading.announce(k))
            return false;
        const QMap<int, zarnOFDLINERET> lines = ofdOpenSource(pages.at(k));
        if (m_reading.stopped() || !package.addPage(lines))
            return false;
    }
    return m_reading.anyPageRead(pages.size()) && package.end();
}

// Waits for the packer with the window alive. The arguments reach it as they are, no shell sees them.
bool SearchableOfd::pack()
{
    const QString program = paths::ofdPacker();
    const QString name = m_reading.job().baseName + ".ofd";
    QProcess packer;
    packer.setProcessChannelMode(QProcess::MergedChannels);
    packer.start(program, {m_reading.folder(), name});
    constexpr int kSliceMs = 20;
    while (packer.state() != QProcess::NotRunning && !packer.waitForFinished(kSliceMs))
        QCoreApplication::processEvents();
    if (packer.error() == QProcess::FailedToStart) {
        qWarning().noquote() << "cannot start" << program << packer.errorString();
        m_reading.fail(SearchableOfdText::noPacker(program));
        return false;
    }
    const QString said = QString::fromUtf8(packer.readAll()).trimmed();
    const bool ended = packer.exitStatus() == QProcess::NormalExit;
    if (ended && packer.exitCode() == 0)
        return true;
    qWarning().noquote() << program << "ended with" << packer.exitCode() << said;
    if (ended && packer.exitCode() == ofdparts::kPartsRemain)
        return true; // they are removed like those of a failure
    const QString reason = !ended                                     ? SearchableOfdText::packerDied()
                           : packer.exitCode() == ofdparts::kDiskFull ? SearchableOfdText::diskFull()
                                                                      : said;
    m_reading.fail(SearchableOfdText::packerFailed(name, reason));
    return false;
}
