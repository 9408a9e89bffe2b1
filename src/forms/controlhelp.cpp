// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/controlhelp.h"

#include "forms/scanpagecontrols.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <initializer_list>
#include <utility>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ControlHelp)
};

void explain(std::initializer_list<std::pair<QWidget*, QString>> texts)
{
    for (const auto& [control, text] : texts) {
        if (control && control->toolTip().isEmpty())
            control->setToolTip(text);
    }
}

void markStoredOnly(const ScanPageControls& c)
{
    const QString text = Texts::tr("只保存这项设置，不改变图像");
    for (QWidget* control :
         std::initializer_list<QWidget*>{c.deScreen, c.colorFilter, c.fillHole, c.delColor, c.colorMatch})
        control->setToolTip(text);
    for (const int item : {1, 6}) // equalise and unsharp are offered, but no step does them
        c.filter->setItemData(item, text, Qt::ToolTipRole);
}

} // namespace

void explainControls(const ScanPageControls& c)
{
    explain({{c.source, Texts::tr("从平台还是进纸器扫描，扫描哪一面")},
             {c.front, Texts::tr("从进纸器只扫描正面")},
             {c.back, Texts::tr("从进纸器只扫描反面")},
             {c.duplex, Texts::tr("从进纸器扫描正反两面")},
             {c.colorMode, Texts::tr("黑白文件最小，灰阶适合照片和浅色字迹，彩色保留全部颜色")},
             {c.resolution, Texts::tr("每英寸的点数：数值越大越清楚，文件也越大；一般文件 300 即可")},
             {c.lightness, Texts::tr("数值越大，页面越亮；0 不改变")},
             {c.contrast, Texts::tr("数值越大，深浅差别越明显；0 不改变")},
             {c.gamma, Texts::tr("大于 1.00 时中间色调变亮，小于 1.00 时变暗")},
             {c.filter, Texts::tr("模糊可减轻颗粒，锐利使笔画边缘更清楚；均化和反锐利只保存，不改变图像")},
             {c.autoCut, Texts::tr("裁去纸张以外的部分，并扶正歪斜的纸张")},
             {c.autoRight, Texts::tr("把文字行歪斜的页面扶正（不超过约 10 度）")},
             {c.autoCrowed, Texts::tr("自动调整深浅，使纸张变白、字迹变黑")},
             {c.delBlank, Texts::tr("不保存空白页；灵敏度在“整体设定”中")},
             {c.delBackground, Texts::tr("把纸张的底色、污渍和透印变白；强度在“整体设定”中")},
             {c.characEnhance, Texts::tr("使笔画更黑更清楚；强度在“整体设定”中")},
             {c.redFile, Texts::tr("用于红头公文：底色变白，字迹变黑，红色保留")},
             {c.imgMend, Texts::tr("页面四周涂成一种颜色，盖住黑边和阴影；宽度和颜色在“补边设定”中")},
             {c.fileType, Texts::tr("当前颜色模式保存成的文件类型")},
             {c.appStart, Texts::tr("每保存一个文件，就用下面选择的应用程序打开")},
             {c.application, Texts::tr("打开所保存文件的应用程序")}});
    markStoredOnly(c);
}
