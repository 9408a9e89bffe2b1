// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/statefile.h"

#include "config/paths.h"

#include <QDebug>
#include <QFile>
#include <QSaveFile>

namespace state {

bool write(int code)
{
    const QString path = paths::stateFile();
    QSaveFile file(path);
    const QByteArray line = QByteArray::number(code).rightJustified(4, '0') + '\n';
    // flush(): commit() alone does not notice a full disk
    if (file.open(QIODevice::WriteOnly) && file.write(line) == line.size() && file.flush() && file.commit())
        return true;
    qWarning().noquote() << "cannot write the state file" << path << file.errorString();
    return false;
}

bool read(int& code)
{
    code = -1;
    QFile file(paths::stateFile());
    if (!file.open(QIODevice::ReadOnly))
        return false;
    // Longer than any code: a damaged file is not read as a whole.
    const QByteArray line = file.readLine(32).trimmed();
    bool isNumber = false;
    const int number = line.toInt(&isNumber);
    if (isNumber && number >= 0)
        code = number;
    return true;
}

int read()
{
    int code = -1;
    read(code);
    return code;
}

int pageCode(int page)
{
    return page < LastPage ? page : LastPage;
}

} // namespace state
