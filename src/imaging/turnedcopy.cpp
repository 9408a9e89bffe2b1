// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/turnedcopy.h"

#include "config/paths.h"
#include "imaging/pagepipeline.h"

#include <QDebug>
#include <QFile>

TurnedCopy::TurnedCopy(ImageConvertFunction& library, const QString& pageFile, bool turn)
    : m_path(pageFile), m_isCopy(turn)
{
    if (!turn)
        return;
    m_path = paths::tempFolder() +
             QStringLiteral("turned-%1.bmp").arg(pageNumber(pageFile), 4, 10, QLatin1Char('0'));
    ImageHandle image(library, library.getImage(QFile::encodeName(pageFile).constData()));
    if (image)
        image.reset(library.imageRotate(image.get(), 180));
    if (!image || !library.writeImage(image.get(), m_path)) {
        qWarning().noquote() << "cannot turn" << pageFile << ":" << library.lastError();
        m_path.clear();
    }
}

TurnedCopy::~TurnedCopy()
{
    if (m_isCopy && good())
        QFile::remove(m_path);
}
