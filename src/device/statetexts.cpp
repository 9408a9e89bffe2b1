// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/statetexts.h"

#include "config/progresswords.h"
#include "device/statefile.h"

#include <QCoreApplication>
#include <algorithm>
#include <iterator>

namespace state {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(state::Texts)
public:
    static QString fixed(int code);
};

QString Texts::fixed(int code)
{
    switch (code) {
    case FingerWanted:
        return tr("请将手指放入指纹模块");
    case FingerAccepted:
        return tr("指纹验证成功！");
    case FingerRejected:
        return tr("指纹验证失败！");
    case ClearingMemory:
        return tr("内存清除中……");
    case NoFingerprints:
        return tr("指纹库为空，请录入指纹，此次扫描取消！");
    case CommunicationError:
        return tr("扫描仪通信错误，请重启应用和扫描仪！");
    case FeederEmpty:
        return tr("ADF进纸器无纸,请将稿件放入ADF进纸器！\n\n如果取消扫描，请按机器上“清除”键取消扫描！");
    case Preparing:
        return progress::preparing();
    case JamOrCoverOpen:
        return tr("进纸失败或纸张超长！\n\n请检查纸张状态后重试");
    case Busy:
        return tr("扫描仪忙，请关闭其他扫描软件，然后重试！");
    case Cancelled:
        return progress::cancelled();
    default:
        return {};
    }
}

} // namespace

QString text(int code)
{
    if (code >= FirstPage && code <= LastPage)
        return Texts::tr("正在扫描第%1张图像").arg(code);
    if (code >= FirstUpload && code <= LastUpload)
        return Texts::tr("正在上传第%1张图像").arg(code - FirstUpload + 1);
    return Texts::fixed(code);
}

bool isFaultText(const QString& shown)
{
    const int faults[] = {NoFingerprints, CommunicationError, FeederEmpty, JamOrCoverOpen};
    return std::any_of(std::begin(faults), std::end(faults),
                       [&shown](int code) { return shown == Texts::fixed(code); });
}

} // namespace state
