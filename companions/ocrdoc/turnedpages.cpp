// SPDX-License-Identifier: GPL-3.0-or-later
#include "turnedpages.h"

#include "imageconvert/imageconvertfunction.h"
#include "imaging/orientation.h"

#include <QDebug>
#include <QFile>

namespace companion {

QString TurnedPages::upright(const QString& page)
{
    const QByteArray name = QFile::encodeName(page);
    const double angle = rotationAngle(getRealRotation(name.toStdString()));
    if (angle == 0 || !m_folder.isValid())
        return page;
    ImageConvertFunction library;
    MagickWand* image = library.getImage(name.constData());
    image = library.imageRotate(image, angle);
    library.imageCompress(image, QStringLiteral("png"),
                          QStringLiteral("1")); // soon read again: fast, not small
    const QString copy = m_folder.filePath(QStringLiteral("page%1.png").arg(++m_count));
    const bool written = library.writeImage(image, copy);
    library.destroyImage(image);
    if (!written)
        qWarning().noquote() << page << "could not be turned:" << library.lastError();
    return written ? copy : page;
}

} // namespace companion
