// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheets.h"

#include "scannerlook.h"
#include "sheetpainter.h"
#include "texts.h"

namespace {

using Face = SheetPainter::Face;
using Style = SheetPainter::Style;

constexpr double kA4Width = 210;
constexpr double kA4Height = 297;
constexpr double kMargin = 25;
constexpr double kTextWidth = kA4Width - 2 * kMargin;
const QColor kOfficialRed(214, 24, 28);

Sheet scannedSheet(const QImage& front, const QImage& back, quint32 seed)
{
    return {scannerlook::scanned(front, seed), scannerlook::scanned(back, seed + 100)};
}

void pageNumber(SheetPainter& page, int number)
{
    page.centered(kA4Width / 2, 276, QStringLiteral("— %1 —").arg(number), {Face::Serif, 10.5});
}

Sheet letter()
{
    SheetPainter front(kA4Width, kA4Height);
    front.line(kMargin, 18, QStringLiteral("江城市地方文献馆"), {Face::Sans, 10.5});
    front.line(150, 18, QStringLiteral("二〇二六年九月十八日"), {Face::Sans, 10.5});
    front.rule(kMargin, kA4Width - kMargin, 25, 0.3, QColor(60, 60, 60));
    front.paragraphs(kMargin, 34, kTextWidth, texts::kLetter, {Face::Serif, 12.5});
    pageNumber(front, 1);

    SheetPainter back(kA4Width, kA4Height);
    const double below = back.paragraphs(kMargin, 30, kTextWidth, texts::kLetterBack, {Face::Serif, 12.5});
    back.line(140, below + 10, QStringLiteral("学生　方景行　敬上"), {Face::Serif, 12.5});
    back.line(140, below + 19, QStringLiteral("九月十八日于江城"), {Face::Serif, 12.5});
    pageNumber(back, 2);
    return scannedSheet(front.finish(), back.finish(), 1);
}

Sheet table()
{
    QList<QStringList> rows{texts::kTableHeads};
    for (int number = 1; number <= texts::kTableGoods.size(); ++number) {
        const QStringList goods = texts::kTableGoods.at(number - 1).split(QLatin1Char(','));
        const QString day = QStringLiteral("7月%1日").arg(number + 9);
        rows << QStringList{QString::number(number), goods.value(0), goods.value(1),
                            goods.value(2),          goods.value(3), day};
    }
    SheetPainter page(kA4Width, kA4Height);
    page.centered(kA4Width / 2, 22, QStringLiteral("第三季度办公用品领用登记表"), {Face::Sans, 18, true});
    page.line(kMargin, 38, QStringLiteral("填表单位：行政管理处"), {Face::Sans, 11});
    page.line(135, 38, QStringLiteral("编号：XZ-2026-0718"), {Face::Sans, 11});
    const double below = page.table(kMargin, 47, {15, 32, 37, 20, 31, 25}, rows, 10.5);
    page.line(kMargin, below + 6, QStringLiteral("经办人：孙晓岚"), {Face::Sans, 11});
    page.line(95, below + 6, QStringLiteral("审核人：郑国栋"), {Face::Sans, 11});
    const QImage front = page.finish();
    return scannedSheet(front, scannerlook::blankBack(front), 2);
}

Sheet redHeader()
{
    SheetPainter page(kA4Width, kA4Height);
    page.centered(kA4Width / 2, 32, QStringLiteral("云岭市水务局文件"),
                  {Face::Serif, 44, true, kOfficialRed});
    page.centered(kA4Width / 2, 66, QStringLiteral("云水发〔2026〕37号"), {Face::Serif, 14});
    page.rule(kMargin, kA4Width - kMargin, 77, 0.7, kOfficialRed);
    page.centered(kA4Width / 2, 86, QStringLiteral("关于进一步做好汛期水库巡查值守工作的通知"),
                  {Face::Serif, 18, true});
    const double below = page.paragraphs(kMargin, 103, kTextWidth, texts::kOfficial, {Face::Serif, 13}, 1.65);
    page.centered(155, below + 18, QStringLiteral("云岭市水务局"), {Face::Serif, 13});
    page.centered(155, below + 26, QStringLiteral("2026年7月16日"), {Face::Serif, 13});
    page.seal(155, below + 23, 20, QStringLiteral("云岭市水务局"));
    const QImage front = page.finish();
    return scannedSheet(front, scannerlook::blankBack(front), 3);
}

Sheet notice()
{
    SheetPainter page(kA4Width, kA4Height);
    page.centered(kA4Width / 2, 28, QStringLiteral("阅览室开放时间调整公告"), {Face::Sans, 22, true});
    const double below = page.paragraphs(kMargin, 50, kTextWidth, texts::kNotice, {Face::Sans, 12.5}, 1.8);
    page.line(145, below + 12, QStringLiteral("读者服务部"), {Face::Sans, 12.5});
    page.line(138, below + 21, QStringLiteral("2026年8月20日"), {Face::Sans, 12.5});
    const QImage front = page.finish();
    return scannedSheet(front, scannerlook::blankBack(front), 4);
}

// A smaller sheet (185 x 260 mm) that went through the feeder askew.
Sheet skewed()
{
    constexpr double width = 185;
    SheetPainter page(width, 260);
    page.centered(width / 2, 22, QStringLiteral("屋檐下的柿饼"), {Face::Serif, 20, true});
    page.paragraphs(20, 42, width - 40, texts::kEssay, {Face::Serif, 13}, 1.9);
    const QImage front = page.finish();
    const QImage back = scannerlook::blankBack(front);
    return scannedSheet(scannerlook::onDarkBed(front, 3), scannerlook::onDarkBed(back, -3), 5);
}

Sheet upsideDown()
{
    SheetPainter front(kA4Width, kA4Height);
    front.centered(kA4Width / 2, 26, QStringLiteral("办公会议纪要"), {Face::Serif, 22, true});
    front.paragraphs(kMargin, 46, kTextWidth, texts::kMinutes, {Face::Serif, 12.5});
    pageNumber(front, 1);

    SheetPainter back(kA4Width, kA4Height);
    back.paragraphs(kMargin, 30, kTextWidth, texts::kMinutesBack, {Face::Serif, 12.5});
    pageNumber(back, 2);
    return scannedSheet(front.finish().mirrored(true, true), back.finish().mirrored(true, true), 6);
}

} // namespace

std::vector<std::function<Sheet()>> sampleSheets()
{
    return {letter, table, redHeader, notice, skewed, upsideDown};
}
