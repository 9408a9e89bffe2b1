// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/ocrjob.h"

#include "output/savefolder.h"

#include "recognition/ocrengine.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

PageLoop::PageLoop(OcrJob job) : m_job(std::move(job))
{
    if (!m_job.run)
        m_job.run = [](const std::function<void()>& work) { work(); };
}

PageLoop::~PageLoop() = default;

QString PageLoop::path(const QString& extension) const
{
    return QDir::cleanPath(m_job.folder + QLatin1Char('/') + m_job.name + extension);
}

ReadingControl PageLoop::control() const
{
    ReadingControl control;
    control.cancelled = m_job.cancelled;
    control.traceTo = m_job.traceTo;
    return control;
}

// A fresh engine for each page. Called in the thread that will read, for which it switches OpenMP off.
bool PageLoop::readyEngine()
{
    if (m_engine)
        return initEngine(*m_engine->handle());
    auto engine = std::make_unique<OcrEngine>();
    if (engine->isReady())
        m_engine = std::move(engine);
    return m_engine != nullptr;
}

void PageLoop::overPages(const QStringList& files, const PageWork& work, OcrResult& result)
{
    for (int i = 0; i < files.size(); ++i) {
        if (m_job.cancelled && m_job.cancelled()) {
            result.cancelled = true;
            return;
        }
        if (m_job.progress)
            m_job.progress(tr("正在识别第%1张图像").arg(i + 1));
        PageNotes notes;
        bool ready = true;
        m_job.run([&] {
            QElapsedTimer timer;
            timer.start();
            ready = readyEngine();
            if (ready)
                work(files[i], i, m_engine->handle(), notes);
            notes.seconds = timer.nsecsElapsed() / 1e9;
        });
        if (!ready) {
            result.problem = tr("无法载入中文识别模型，请安装 tesseract-ocr-chi-sim");
            return;
        }
        if (!notes.readable)
            result.unread << files[i];
        if (notes.lostBoxes > 0)
            result.notices << tr("第%1页有 %2 处文字未能识别").arg(i + 1).arg(notes.lostBoxes);
        result.cancelled = notes.cancelled;
        result.pages << notes;
        if (result.cancelled)
            return;
    }
    if (!files.isEmpty() && result.unread.size() == files.size())
        result.problem = tr("页面图像无法读取");
}

QString PageLoop::cannotWrite(const QString& file, int error)
{
    return error == 0 ? tr("无法写入文件 %1").arg(file)
                      : tr("无法写入文件 %1：%2").arg(file, writeProblem(error));
}
