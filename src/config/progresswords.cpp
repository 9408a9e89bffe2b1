// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/progresswords.h"

#include <QCoreApplication>

namespace progress {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(progress)
};

} // namespace

QString preparing()
{
    return Texts::tr("正在准备扫描");
}

QString cancelled()
{
    return Texts::tr("取消扫描");
}

} // namespace progress
