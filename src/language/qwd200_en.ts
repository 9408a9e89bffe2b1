<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>BeforeAfter</name>
    <message>
        <source>处理前</source>
        <translation>Before</translation>
    </message>
    <message>
        <source>处理后</source>
        <translation>After</translation>
    </message>
    <message>
        <source>正在生成预览</source>
        <translation>Making a preview</translation>
    </message>
    <message>
        <source>还没有扫描过页面，以示例页面代替。</source>
        <translation>No page has been scanned yet; a sample page is shown.</translation>
    </message>
    <message>
        <source>最近扫描的页面的一部分。</source>
        <translation>A part of the last scanned page.</translation>
    </message>
    <message>
        <source>无法生成预览，请检查磁盘空间。</source>
        <translation>No preview could be made. Check the disk space.</translation>
    </message>
    <message>
        <source>%1%2</source>
        <comment>two sentences</comment>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>BorderSketch</name>
    <message>
        <source>补边效果示意图</source>
        <translation>Sketch of the border</translation>
    </message>
</context>
<context>
    <name>CharacterMap</name>
    <message>
        <source>无法写入“%1”：%2</source>
        <translation>Cannot write &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>无法生成“%1”，磁盘空间可能不足</source>
        <translation>Cannot make &quot;%1&quot;; the disk may be full</translation>
    </message>
</context>
<context>
    <name>CompressSet</name>
    <message>
        <source>这一页的文件约 %1。</source>
        <translation>This page&apos;s file is about %1.</translation>
    </message>
    <message>
        <source>文件压缩</source>
        <translation>File Compression</translation>
    </message>
    <message>
        <source>JPEG 的质量越高，图像越接近原样，文件也越大；PNG 不损失图像，级别越高文件越小，保存越慢。</source>
        <translation>Higher JPEG quality keeps the image closer to the original and makes larger files. PNG loses nothing: higher levels give smaller files and take longer.</translation>
    </message>
    <message>
        <source>各种颜色使用相同的设置(&amp;S)</source>
        <translation>&amp;Same settings for all colors</translation>
    </message>
    <message>
        <source>灰阶和黑白图像也使用彩色图像的设置</source>
        <translation>Grayscale and black-and-white images use the settings of color images, too</translation>
    </message>
    <message>
        <source>彩色 JPEG 质量(&amp;J):</source>
        <translation>Color &amp;JPEG quality:</translation>
    </message>
    <message>
        <source>彩色 JPEG</source>
        <translation>Color JPEG</translation>
    </message>
    <message>
        <source>灰阶 JPEG 质量(&amp;G):</source>
        <translation>&amp;Gray JPEG quality:</translation>
    </message>
    <message>
        <source>灰阶 JPEG</source>
        <translation>Gray JPEG</translation>
    </message>
    <message>
        <source>黑白 JPEG 质量(&amp;B):</source>
        <translation>&amp;B/W JPEG quality:</translation>
    </message>
    <message>
        <source>黑白 JPEG</source>
        <translation>Black-and-white JPEG</translation>
    </message>
    <message>
        <source>彩色 PNG 级别(&amp;P):</source>
        <translation>Color &amp;PNG level:</translation>
    </message>
    <message>
        <source>彩色 PNG</source>
        <translation>Color PNG</translation>
    </message>
    <message>
        <source>灰阶 PNG 级别(&amp;N):</source>
        <translation>Gray P&amp;NG level:</translation>
    </message>
    <message>
        <source>灰阶 PNG</source>
        <translation>Gray PNG</translation>
    </message>
    <message>
        <source>1 至 100：数值越大，图像越清晰，文件越大</source>
        <translation>1 to 100: higher is sharper, with larger files</translation>
    </message>
    <message>
        <source>0 至 9：数值越大，文件越小，保存越慢；图像没有损失</source>
        <translation>0 to 9: higher gives smaller files and takes longer; images lose nothing</translation>
    </message>
    <message>
        <source>处理后（%1，%2）</source>
        <translation>After (%1, %2)</translation>
    </message>
</context>
<context>
    <name>ControlHelp</name>
    <message>
        <source>只保存这项设置，不改变图像</source>
        <translation>This setting is only stored; it does not change images</translation>
    </message>
    <message>
        <source>从平台还是进纸器扫描，扫描哪一面</source>
        <translation>Scan from the flatbed or the feeder, and which side</translation>
    </message>
    <message>
        <source>从进纸器只扫描正面</source>
        <translation>Scan only the fronts from the feeder</translation>
    </message>
    <message>
        <source>从进纸器只扫描反面</source>
        <translation>Scan only the backs from the feeder</translation>
    </message>
    <message>
        <source>从进纸器扫描正反两面</source>
        <translation>Scan both sides from the feeder</translation>
    </message>
    <message>
        <source>黑白文件最小，灰阶适合照片和浅色字迹，彩色保留全部颜色</source>
        <translation>Black/white gives the smallest files, gray suits photos and faint writing, color keeps all colors</translation>
    </message>
    <message>
        <source>每英寸的点数：数值越大越清楚，文件也越大；一般文件 300 即可</source>
        <translation>Dots per inch: higher is sharper with larger files; 300 is enough for most documents</translation>
    </message>
    <message>
        <source>数值越大，页面越亮；0 不改变</source>
        <translation>Higher makes the page brighter; 0 changes nothing</translation>
    </message>
    <message>
        <source>数值越大，深浅差别越明显；0 不改变</source>
        <translation>Higher makes a stronger difference between light and dark; 0 changes nothing</translation>
    </message>
    <message>
        <source>大于 1.00 时中间色调变亮，小于 1.00 时变暗</source>
        <translation>Above 1.00 midtones become brighter, below 1.00 darker</translation>
    </message>
    <message>
        <source>模糊可减轻颗粒，锐利使笔画边缘更清楚；均化和反锐利只保存，不改变图像</source>
        <translation>Blur softens grain, sharpen makes the edges of strokes clearer; equalize and unsharp mask are only stored and do not change images</translation>
    </message>
    <message>
        <source>裁去纸张以外的部分，并扶正歪斜的纸张</source>
        <translation>Cuts off what lies beside the paper and straightens a skewed sheet</translation>
    </message>
    <message>
        <source>把文字行歪斜的页面扶正（不超过约 10 度）</source>
        <translation>Straightens pages whose lines of text are skewed (up to about 10 degrees)</translation>
    </message>
    <message>
        <source>自动调整深浅，使纸张变白、字迹变黑</source>
        <translation>Adjusts the tone so that paper becomes white and text black</translation>
    </message>
    <message>
        <source>不保存空白页；灵敏度在“整体设定”中</source>
        <translation>Blank pages are not saved; the level is in &quot;General Settings&quot;</translation>
    </message>
    <message>
        <source>把纸张的底色、污渍和透印变白；强度在“整体设定”中</source>
        <translation>Turns paper color, stains and show-through white; the strength is in &quot;General Settings&quot;</translation>
    </message>
    <message>
        <source>使笔画更黑更清楚；强度在“整体设定”中</source>
        <translation>Makes strokes blacker and clearer; the strength is in &quot;General Settings&quot;</translation>
    </message>
    <message>
        <source>用于红头公文：底色变白，字迹变黑，红色保留</source>
        <translation>For official documents with a red header: the background becomes white, text black, red stays</translation>
    </message>
    <message>
        <source>页面四周涂成一种颜色，盖住黑边和阴影；宽度和颜色在“补边设定”中</source>
        <translation>Paints the page&apos;s edges in one color to cover black borders and shadows; width and color are under &quot;Border&quot;</translation>
    </message>
    <message>
        <source>当前颜色模式保存成的文件类型</source>
        <translation>The file type for the current color mode</translation>
    </message>
    <message>
        <source>每保存一个文件，就用下面选择的应用程序打开</source>
        <translation>Each saved file is opened with the application chosen below</translation>
    </message>
    <message>
        <source>打开所保存文件的应用程序</source>
        <translation>The application that opens saved files</translation>
    </message>
</context>
<context>
    <name>DesktopEntry</name>
    <message>
        <source>启动命令中有控制字符。</source>
        <translation>The start command contains control characters.</translation>
    </message>
    <message>
        <source>启动命令中的双引号没有成对出现。</source>
        <translation>The double quotes in the start command are not in pairs.</translation>
    </message>
    <message>
        <source>没有启动命令。</source>
        <translation>There is no start command.</translation>
    </message>
    <message>
        <source>启动命令中有未加引号的特殊字符。</source>
        <translation>The start command contains special characters without quotes.</translation>
    </message>
    <message>
        <source>启动命令中有未知的“%”代码。</source>
        <translation>The start command contains an unknown &quot;%&quot; code.</translation>
    </message>
    <message>
        <source>文件无法读取。</source>
        <translation>The file cannot be read.</translation>
    </message>
    <message>
        <source>文件不是应用程序的桌面条目。</source>
        <translation>The file is no desktop entry of an application.</translation>
    </message>
    <message>
        <source>此程序在终端中运行，不能用来打开扫描的文件。</source>
        <translation>This program runs in a terminal and cannot open scanned files.</translation>
    </message>
</context>
<context>
    <name>DesktopEntryDialog</name>
    <message>
        <source>从应用程序菜单导入</source>
        <translation>Import from Application Menu</translation>
    </message>
    <message>
        <source>选择一个应用程序，它的名称、图标和启动命令将填入应用程序的设置。</source>
        <translation>Choose an application: its name, icon and start command are filled in.</translation>
    </message>
    <message>
        <source>查找(&amp;F):</source>
        <translation>&amp;Find:</translation>
    </message>
    <message>
        <source>查找应用程序</source>
        <translation>Find application</translation>
    </message>
    <message>
        <source>应用程序</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>其他文件(&amp;B)...</source>
        <translation>Other file (&amp;B)...</translation>
    </message>
    <message>
        <source>选择其他位置的桌面条目（.desktop）文件</source>
        <translation>Choose a desktop entry (.desktop) in another place</translation>
    </message>
    <message>
        <source>“%1”中没有应用程序。</source>
        <translation>There are no applications in &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>选择桌面条目</source>
        <translation>Choose Desktop Entry</translation>
    </message>
    <message>
        <source>桌面条目 (*.desktop)</source>
        <translation>Desktop entries (*.desktop)</translation>
    </message>
    <message>
        <source>“%1”：%2</source>
        <translation>&quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>请选择一个应用程序。</source>
        <translation>Choose an application.</translation>
    </message>
</context>
<context>
    <name>DesktopNotifier</name>
    <message>
        <source>打开文件夹</source>
        <translation>Open Folder</translation>
    </message>
</context>
<context>
    <name>DocumentReading</name>
    <message>
        <source>正在识别第%1张图像</source>
        <translation>Recognizing image %1</translation>
    </message>
    <message>
        <source>、</source>
        <translation>, </translation>
    </message>
    <message>
        <source>图像%1等%2张无法读取，文档中留为空白页</source>
        <translation>Images %1 and others, %2 in all, cannot be read; their pages stay blank in the document</translation>
    </message>
    <message>
        <source>图像%1无法读取，文档中留为空白页</source>
        <translation>Image %1 cannot be read; its page stays blank in the document</translation>
    </message>
    <message>
        <source>有%1行文字未能识别</source>
        <translation>%1 line(s) of text could not be recognized</translation>
    </message>
    <message>
        <source>所有图像都无法读取</source>
        <translation>None of the images can be read</translation>
    </message>
    <message>
        <source>；</source>
        <translation>; </translation>
    </message>
</context>
<context>
    <name>EffectPreview</name>
    <message>
        <source>文件扫描示例：笔画、底色和杂点</source>
        <translation>Sample of a scanned document: strokes, background and specks</translation>
    </message>
</context>
<context>
    <name>EmailPanel</name>
    <message>
        <source>扫描文件或图片，接着用您预设的电子邮件软件传送出去。</source>
        <translation>Scans documents or pictures to be sent with your preset e-mail software.</translation>
    </message>
    <message>
        <source>扫描的图像保存到下面的文件夹。要发送时，把文件从列表拖到您的电子邮件软件中。</source>
        <translation>Scanned images are saved to the folder below. To send them, drag files from the list into your e-mail software.</translation>
    </message>
</context>
<context>
    <name>FolderModel</name>
    <message>
        <source>文件名不能为空</source>
        <translation>A file name must not be empty</translation>
    </message>
    <message>
        <source>文件名中不能有“/”或控制字符</source>
        <translation>A file name must not contain &quot;/&quot; or control characters</translation>
    </message>
    <message>
        <source>文件名不能以“.”开头，否则文件会被隐藏</source>
        <translation>A file name must not begin with &quot;.&quot;, which would hide the file</translation>
    </message>
    <message>
        <source>文件名太长</source>
        <translation>The file name is too long</translation>
    </message>
    <message>
        <source>文件夹中已有“%1”，没有重命名</source>
        <translation>&quot;%1&quot; is already in the folder; nothing was renamed</translation>
    </message>
    <message>
        <source>%1 字节</source>
        <translation>%1 bytes</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>大小</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>类型</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>修改日期</source>
        <translation>Date modified</translation>
    </message>
    <message>
        <source>无法重命名“%1”，请检查文件夹的写入权限</source>
        <translation>Cannot rename &quot;%1&quot;. Check the right to write in its folder</translation>
    </message>
</context>
<context>
    <name>FolderPanel</name>
    <message>
        <source>文件(&amp;1)</source>
        <translation>Files (&amp;1)</translation>
    </message>
    <message>
        <source>扫描设定(&amp;Z)</source>
        <translation>Scan settings (&amp;Z)</translation>
    </message>
    <message>
        <source>文件与扫描设定</source>
        <translation>Files and scan settings</translation>
    </message>
    <message>
        <source>拆分页面</source>
        <translation>Split pages</translation>
    </message>
    <message>
        <source>每一页切成两半，分别保存</source>
        <translation>Each page is cut in half and saved as two</translation>
    </message>
</context>
<context>
    <name>FolderRights</name>
    <message>
        <source>您没有写入 %1 的权限，无法扫描和保存设置。</source>
        <translation>You may not write to %1, so nothing can be scanned and no settings can be saved.</translation>
    </message>
    <message>
        <source>请管理员执行 sudo usermod -aG %1 %2，然后重新登录。</source>
        <translation>Ask your administrator to run sudo usermod -aG %1 %2, then log in again.</translation>
    </message>
    <message>
        <source>请联系管理员。</source>
        <translation>Ask your administrator.</translation>
    </message>
</context>
<context>
    <name>FolderView</name>
    <message>
        <source>新文件名</source>
        <translation>New file name</translation>
    </message>
    <message>
        <source>选择文件夹(&amp;H)...</source>
        <translation>C&amp;hoose Folder...</translation>
    </message>
    <message>
        <source>已保存的文件(&amp;N):</source>
        <translation>Saved files (&amp;N):</translation>
    </message>
    <message>
        <source>文件夹</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>排序(&amp;Q):</source>
        <translation>Sort by (&amp;Q):</translation>
    </message>
    <message>
        <source>文件的排序</source>
        <translation>Order of the files</translation>
    </message>
    <message>
        <source>日期，新的在前</source>
        <translation>Date, newest first</translation>
    </message>
    <message>
        <source>日期，旧的在前</source>
        <translation>Date, oldest first</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>大小，大的在前</source>
        <translation>Size, largest first</translation>
    </message>
    <message>
        <source>选择文件夹</source>
        <translation>Choose Folder</translation>
    </message>
    <message>
        <source>选择保存图像并在这里显示的文件夹</source>
        <translation>Choose the folder in which images are saved and which is shown here</translation>
    </message>
    <message>
        <source>已保存的文件</source>
        <translation>Saved files</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>重命名</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>移到回收站</source>
        <translation>Move to Trash</translation>
    </message>
    <message>
        <source>文件夹中没有文件。扫描的图像会出现在这里。</source>
        <translation>There are no files in this folder. Scanned images will appear here.</translation>
    </message>
    <message>
        <source>文件夹“%1”还不存在，第一次扫描时建立。</source>
        <translation>The folder &quot;%1&quot; does not exist yet; the first scan makes it.</translation>
    </message>
    <message>
        <source>一次最多打开 %1 个文件</source>
        <translation>At most %1 files can be opened at once</translation>
    </message>
    <message>
        <source>无法打开“%1”</source>
        <translation>Cannot open &quot;%1&quot;</translation>
    </message>
    <message>
        <source>已将 %1 个文件移到回收站</source>
        <translation>%1 file(s) moved to the trash</translation>
    </message>
    <message>
        <source>无法移到回收站：%1</source>
        <translation>Cannot move to the trash: %1</translation>
    </message>
    <message>
        <source>、</source>
        <comment>between file names</comment>
        <translation>, </translation>
    </message>
</context>
<context>
    <name>FunctionBatch</name>
    <message>
        <source>无法旋转页面文件 %1，文件已保留</source>
        <translation>The page file %1 cannot be turned; it is kept</translation>
    </message>
    <message>
        <source>取消扫描，已扫描的页面将与下一次任务一起处理</source>
        <translation>Scan canceled; the scanned pages go with the next job</translation>
    </message>
    <message>
        <source>取消扫描，%1 页未处理，将与下一次任务一起处理</source>
        <translation>Scan canceled; %1 page(s) not processed go with the next job</translation>
    </message>
    <message>
        <source>文档 %1 中 %2 页无法读取，页面已移至 %3</source>
        <translation>Document %1: %2 page(s) cannot be read and were moved to %3</translation>
    </message>
    <message>
        <source>文档 %1 未能保存：%2；页面已移至 %3</source>
        <translation>Document %1 could not be saved: %2; its pages were moved to %3</translation>
    </message>
    <message>
        <source>无法启动应用程序打开 %1</source>
        <translation>Cannot start the application that opens %1</translation>
    </message>
</context>
<context>
    <name>FunctionDialogs</name>
    <message>
        <source>杂点与阈值(&amp;N)...</source>
        <translation>Specks a&amp;nd Threshold...</translation>
    </message>
    <message>
        <source>黑白图像怎样产生</source>
        <translation>How black-and-white images are made</translation>
    </message>
    <message>
        <source>自定义纸张大小(&amp;P)...</source>
        <translation>Custom &amp;Paper Size...</translation>
    </message>
    <message>
        <source>纸张大小选择“自定义”时裁切成多大</source>
        <translation>The size to which pages are cut with the paper size &quot;Custom&quot;</translation>
    </message>
    <message>
        <source>输出图像(&amp;O)...</source>
        <translation>&amp;Output Images...</translation>
    </message>
    <message>
        <source>文件类型、另存的图像、双面翻页方式</source>
        <translation>File types, additional images, how two-sided originals are flipped</translation>
    </message>
    <message>
        <source>文件压缩(&amp;C)...</source>
        <translation>File &amp;Compression...</translation>
    </message>
    <message>
        <source>图像质量和文件大小</source>
        <translation>Image quality and file size</translation>
    </message>
</context>
<context>
    <name>FunctionForm</name>
    <message>
        <source>扫描设定</source>
        <translation>Scan Settings</translation>
    </message>
    <message>
        <source>来源与纸张(&amp;P)</source>
        <translation>Source and &amp;Paper</translation>
    </message>
    <message>
        <source>纸张来源:</source>
        <translation>Paper source:</translation>
    </message>
    <message>
        <source>纸张来源</source>
        <translation>Paper source</translation>
    </message>
    <message>
        <source>平台反射稿</source>
        <translation>Flatbed</translation>
    </message>
    <message>
        <source>ADF（正面）</source>
        <translation>ADF (front)</translation>
    </message>
    <message>
        <source>ADF（反面）</source>
        <translation>ADF (back)</translation>
    </message>
    <message>
        <source>ADF（双面）</source>
        <translation>ADF (duplex)</translation>
    </message>
    <message>
        <source>自动侦测</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>扫描面:</source>
        <translation>Scan side:</translation>
    </message>
    <message>
        <source>正面</source>
        <translation>Front</translation>
    </message>
    <message>
        <source>扫描正面</source>
        <translation>Scan the front</translation>
    </message>
    <message>
        <source>反面</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>扫描反面</source>
        <translation>Scan the back</translation>
    </message>
    <message>
        <source>双面</source>
        <translation>Duplex</translation>
    </message>
    <message>
        <source>扫描双面</source>
        <translation>Scan both sides</translation>
    </message>
    <message>
        <source>纸张大小:</source>
        <translation>Paper size:</translation>
    </message>
    <message>
        <source>纸张大小</source>
        <translation>Paper size</translation>
    </message>
    <message>
        <source>自定义...</source>
        <translation>Custom...</translation>
    </message>
    <message>
        <source>颜色模式:</source>
        <translation>Color mode:</translation>
    </message>
    <message>
        <source>颜色模式</source>
        <translation>Color mode</translation>
    </message>
    <message>
        <source>黑白</source>
        <translation>Black/White</translation>
    </message>
    <message>
        <source>灰阶</source>
        <translation>Gray</translation>
    </message>
    <message>
        <source>彩色</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>分辨率:</source>
        <translation>Resolution:</translation>
    </message>
    <message>
        <source>分辨率模式</source>
        <translation>Resolution mode</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>分辨率</source>
        <translation>Resolution</translation>
    </message>
    <message>
        <source>每英寸点数，50 至 1200；分辨率选“自定义”时可以输入</source>
        <translation>Dots per inch, 50 to 1200; can be typed when the resolution is &quot;Custom&quot;</translation>
    </message>
    <message>
        <source>自定义分辨率：50 至 1200 dpi</source>
        <translation>Custom resolution: 50 to 1200 dpi</translation>
    </message>
    <message>
        <source>dpi</source>
        <translation>dpi</translation>
    </message>
    <message>
        <source>连续扫描</source>
        <translation>Continuous scan</translation>
    </message>
    <message>
        <source>平台扫描时，每页之后询问是否继续扫描下一页</source>
        <translation>On the flatbed, ask after each page whether to scan another one</translation>
    </message>
    <message>
        <source>合并与拆分(&amp;L)</source>
        <translation>Merge and Sp&amp;lit</translation>
    </message>
    <message>
        <source>合并页面</source>
        <translation>Merge pages</translation>
    </message>
    <message>
        <source>把同一张纸的正面和反面合并为一幅图像（仅双面扫描）</source>
        <translation>Put front and back of a sheet into one image (duplex scans only)</translation>
    </message>
    <message>
        <source>手动调整合并效果</source>
        <translation>Merge by hand</translation>
    </message>
    <message>
        <source>选中时不合并页面，正反面各为一页</source>
        <translation>When checked, pages are not merged: front and back are a page each</translation>
    </message>
    <message>
        <source>方向:</source>
        <translation>Direction:</translation>
    </message>
    <message>
        <source>水平</source>
        <translation>Horizontal</translation>
    </message>
    <message>
        <source>水平方向</source>
        <translation>Horizontal direction</translation>
    </message>
    <message>
        <source>合并或拆分时左右相邻</source>
        <translation>Pages are merged or split side by side</translation>
    </message>
    <message>
        <source>垂直</source>
        <translation>Vertical</translation>
    </message>
    <message>
        <source>垂直方向</source>
        <translation>Vertical direction</translation>
    </message>
    <message>
        <source>合并或拆分时上下相邻</source>
        <translation>Pages are merged or split one above the other</translation>
    </message>
    <message>
        <source>色调(&amp;T)</source>
        <translation>&amp;Tone</translation>
    </message>
    <message>
        <source>亮度:</source>
        <translation>Brightness:</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brightness</translation>
    </message>
    <message>
        <source>亮度值</source>
        <translation>Brightness value</translation>
    </message>
    <message>
        <source>对比:</source>
        <translation>Contrast:</translation>
    </message>
    <message>
        <source>对比</source>
        <translation>Contrast</translation>
    </message>
    <message>
        <source>对比值</source>
        <translation>Contrast value</translation>
    </message>
    <message>
        <source>Gamma:</source>
        <translation>Gamma:</translation>
    </message>
    <message>
        <source>Gamma</source>
        <translation>Gamma</translation>
    </message>
    <message>
        <source>Gamma值</source>
        <translation>Gamma value</translation>
    </message>
    <message>
        <source>黑白阈值:</source>
        <translation>B/W threshold:</translation>
    </message>
    <message>
        <source>黑白阈值</source>
        <translation>Black-and-white threshold</translation>
    </message>
    <message>
        <source>仅用于黑白；自定义的数值在“更多”的“杂点与阈值”中</source>
        <translation>Only for black/white; a custom value is set under &quot;More&quot;, &quot;Specks and Threshold&quot;</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>滤镜:</source>
        <translation>Filter:</translation>
    </message>
    <message>
        <source>滤镜</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
    <message>
        <source>均化</source>
        <translation>Equalize</translation>
    </message>
    <message>
        <source>模糊</source>
        <translation>Blur</translation>
    </message>
    <message>
        <source>更模糊</source>
        <translation>Blur more</translation>
    </message>
    <message>
        <source>锐利</source>
        <translation>Sharpen</translation>
    </message>
    <message>
        <source>更锐利</source>
        <translation>Sharpen more</translation>
    </message>
    <message>
        <source>反锐利</source>
        <translation>Unsharp mask</translation>
    </message>
    <message>
        <source>去网纹:</source>
        <translation>Descreen:</translation>
    </message>
    <message>
        <source>去网纹</source>
        <translation>Descreen</translation>
    </message>
    <message>
        <source>报纸</source>
        <translation>Newspaper</translation>
    </message>
    <message>
        <source>精致杂志</source>
        <translation>Art magazine</translation>
    </message>
    <message>
        <source>滤色:</source>
        <translation>Dropout:</translation>
    </message>
    <message>
        <source>滤色</source>
        <translation>Color dropout</translation>
    </message>
    <message>
        <source>红色通道</source>
        <translation>Red channel</translation>
    </message>
    <message>
        <source>绿色通道</source>
        <translation>Green channel</translation>
    </message>
    <message>
        <source>蓝色通道</source>
        <translation>Blue channel</translation>
    </message>
    <message>
        <source>旋转(&amp;E)</source>
        <translation>Rotat&amp;e</translation>
    </message>
    <message>
        <source>手动旋转</source>
        <translation>Rotate by hand</translation>
    </message>
    <message>
        <source>关闭时自动判断每页的方向</source>
        <translation>When off, the direction of each page is found automatically</translation>
    </message>
    <message>
        <source>旋转设定(&amp;R)...</source>
        <translation>&amp;Rotation...</translation>
    </message>
    <message>
        <source>旋转设定</source>
        <translation>Rotation settings</translation>
    </message>
    <message>
        <source>正面旋转0°</source>
        <translation>Front 0°</translation>
    </message>
    <message>
        <source>正面旋转</source>
        <translation>Rotation of the front</translation>
    </message>
    <message>
        <source>反面旋转0°</source>
        <translation>Back 0°</translation>
    </message>
    <message>
        <source>反面旋转</source>
        <translation>Rotation of the back</translation>
    </message>
    <message>
        <source>影像处理(&amp;I)</source>
        <translation>&amp;Image Processing</translation>
    </message>
    <message>
        <source>自动裁切</source>
        <translation>Auto crop</translation>
    </message>
    <message>
        <source>自动匡正</source>
        <translation>Deskew</translation>
    </message>
    <message>
        <source>自动密集</source>
        <translation>Auto levels</translation>
    </message>
    <message>
        <source>删除空白页</source>
        <translation>Delete blank pages</translation>
    </message>
    <message>
        <source>删除背景</source>
        <translation>Remove background</translation>
    </message>
    <message>
        <source>字符增强</source>
        <translation>Enhance text</translation>
    </message>
    <message>
        <source>红头文件</source>
        <translation>Red-header document</translation>
    </message>
    <message>
        <source>填补装订孔</source>
        <translation>Fill punch holes</translation>
    </message>
    <message>
        <source>去除杂色</source>
        <translation>Remove stray colors</translation>
    </message>
    <message>
        <source>应用颜色匹配</source>
        <translation>Match colors</translation>
    </message>
    <message>
        <source>影像补边</source>
        <translation>Border fill</translation>
    </message>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>预览此功能的扫描结果</source>
        <translation>Preview what this function makes of a scan</translation>
    </message>
    <message>
        <source>去除杂点:</source>
        <translation>Remove specks:</translation>
    </message>
    <message>
        <source>去除杂点</source>
        <translation>Remove specks</translation>
    </message>
    <message>
        <source>用于黑白页面；自定义的级别在“更多”的“杂点与阈值”中</source>
        <translation>For black-and-white pages; a custom level is set under &quot;More&quot;, &quot;Specks and Threshold&quot;</translation>
    </message>
    <message>
        <source>输出多张图像</source>
        <translation>Multiple images</translation>
    </message>
    <message>
        <source>补边设定...</source>
        <translation>Border...</translation>
    </message>
    <message>
        <source>影像补边设定</source>
        <translation>Border Settings</translation>
    </message>
    <message>
        <source>补边的位置、宽度和颜色</source>
        <translation>Place, width and color of the border</translation>
    </message>
    <message>
        <source>更多...</source>
        <translation>More...</translation>
    </message>
    <message>
        <source>更多设定</source>
        <translation>More settings</translation>
    </message>
    <message>
        <source>杂点与阈值、纸张大小和输出图像</source>
        <translation>Specks and threshold, paper size and output images</translation>
    </message>
    <message>
        <source>输出(&amp;O)</source>
        <translation>&amp;Output</translation>
    </message>
    <message>
        <source>文件类型:</source>
        <translation>File type:</translation>
    </message>
    <message>
        <source>文件类型</source>
        <translation>File type</translation>
    </message>
    <message>
        <source>保存设定(&amp;B)...</source>
        <translation>Saving (&amp;B)...</translation>
    </message>
    <message>
        <source>保存文件夹与文件名设定</source>
        <translation>Folder and file names</translation>
    </message>
    <message>
        <source>保存到:</source>
        <translation>Save to:</translation>
    </message>
    <message>
        <source>保存文件夹</source>
        <translation>Save folder</translation>
    </message>
    <message>
        <source>浏览...</source>
        <translation>Browse...</translation>
    </message>
    <message>
        <source>选择保存文件夹</source>
        <translation>Choose Save Folder</translation>
    </message>
    <message>
        <source>汇出档案到指定应用程序</source>
        <translation>Export files to an application</translation>
    </message>
    <message>
        <source>指定的应用程序</source>
        <translation>Chosen application</translation>
    </message>
    <message>
        <source>列表在“保存设定”的文件名设置中编辑</source>
        <translation>The list is edited under &quot;Saving&quot;, in the file name settings</translation>
    </message>
    <message>
        <source>另存灰阶和黑白图像</source>
        <translation>Also save gray and black-and-white images</translation>
    </message>
    <message>
        <source>扫描的文件保存在这个文件夹；还不存在的文件夹会新建</source>
        <translation>Scanned files are saved in this folder; one that does not exist yet is made</translation>
    </message>
</context>
<context>
    <name>FunctionalApp</name>
    <message>
        <source>设备维护</source>
        <translation>Maintenance</translation>
    </message>
    <message>
        <source>待机调整(&amp;Y)</source>
        <translation>Standb&amp;y</translation>
    </message>
    <message>
        <source>扫描仪空闲一段时间后可以自动进入待机，节省电能。选好后点击“发送到扫描仪”，设置才会生效。选择“立即休眠”时，扫描仪一分钟后进入待机。</source>
        <translation>The scanner can go to standby after some idle time to save energy. Click &quot;Send to Scanner&quot; for a choice to take effect. With &quot;Sleep now&quot; the scanner goes to standby after one minute.</translation>
    </message>
    <message>
        <source>待机调整</source>
        <translation>Standby</translation>
    </message>
    <message>
        <source>不进入待机(&amp;N)</source>
        <translation>&amp;No standby</translation>
    </message>
    <message>
        <source>扫描仪一直保持就绪</source>
        <translation>The scanner is always ready</translation>
    </message>
    <message>
        <source>定时进入待机(&amp;T)</source>
        <translation>Standby after some &amp;time</translation>
    </message>
    <message>
        <source>空闲时间达到下面的分钟数后进入待机</source>
        <translation>Goes to standby after being idle for the minutes below</translation>
    </message>
    <message>
        <source>等待时间(&amp;W):</source>
        <translation>&amp;Wait:</translation>
    </message>
    <message>
        <source> 分钟</source>
        <translation> min</translation>
    </message>
    <message>
        <source>1 到 1440 分钟（24 小时）</source>
        <translation>1 to 1440 minutes (24 hours)</translation>
    </message>
    <message>
        <source>立即休眠(&amp;X)</source>
        <translation>Sleep now (&amp;X)</translation>
    </message>
    <message>
        <source>扫描仪在一分钟后进入待机</source>
        <translation>The scanner goes to standby within a minute</translation>
    </message>
    <message>
        <source>发送到扫描仪(&amp;S)</source>
        <translation>&amp;Send to Scanner</translation>
    </message>
    <message>
        <source>把待机设置发送到扫描仪</source>
        <translation>Send the standby choice to the scanner</translation>
    </message>
    <message>
        <source>计数器(&amp;J)</source>
        <translation>Counters (&amp;J)</translation>
    </message>
    <message>
        <source>扫描计数</source>
        <translation>Scans</translation>
    </message>
    <message>
        <source>扫描仪一共扫描了多少张，仅供了解使用情况。</source>
        <translation>How many sheets the scanner has scanned in all; for information only.</translation>
    </message>
    <message>
        <source>已扫描:</source>
        <translation>Scanned:</translation>
    </message>
    <message>
        <source>0</source>
        <translation>0</translation>
    </message>
    <message>
        <source>张</source>
        <translation>sheets</translation>
    </message>
    <message>
        <source>重置(&amp;E)</source>
        <translation>R&amp;eset</translation>
    </message>
    <message>
        <source>把“扫描计数”计数器重置为 0</source>
        <translation>Reset the counter &quot;Scans&quot; to 0</translation>
    </message>
    <message>
        <source>进纸滚轮</source>
        <translation>Feed roller</translation>
    </message>
    <message>
        <source>滚轮把纸逐张送入扫描仪，磨损后容易卡纸和打滑。更换滚轮后请重置计数。</source>
        <translation>The roller feeds sheets one by one; when worn, paper jams or slips. Reset the counter after replacing it.</translation>
    </message>
    <message>
        <source>已使用:</source>
        <translation>Used:</translation>
    </message>
    <message>
        <source>更换张数(&amp;L):</source>
        <translation>Rep&amp;lace after:</translation>
    </message>
    <message>
        <source> 张</source>
        <translation> sheets</translation>
    </message>
    <message>
        <source>达到这个张数时提示更换（1 到 65535）</source>
        <translation>At this number of sheets, replacing it is suggested (1 to 65535)</translation>
    </message>
    <message>
        <source>重置(&amp;R)</source>
        <translation>&amp;Reset</translation>
    </message>
    <message>
        <source>更换部件后，把“进纸滚轮”计数器重置为 0</source>
        <translation>Reset the counter &quot;Feed roller&quot; to 0 after replacing the part</translation>
    </message>
    <message>
        <source>进纸滚轮寿命</source>
        <translation>Life of the feed roller</translation>
    </message>
    <message>
        <source>软垫模组</source>
        <translation>Pad module</translation>
    </message>
    <message>
        <source>软垫把叠在一起的纸分开，磨损后容易一次进多张。更换软垫后请重置计数。</source>
        <translation>The pad separates stacked sheets; when worn, several are fed at once. Reset the counter after replacing it.</translation>
    </message>
    <message>
        <source>更换张数(&amp;I):</source>
        <translation>Replace after (&amp;I):</translation>
    </message>
    <message>
        <source>重置(&amp;P)</source>
        <translation>Reset (&amp;P)</translation>
    </message>
    <message>
        <source>更换部件后，把“软垫模组”计数器重置为 0</source>
        <translation>Reset the counter &quot;Pad module&quot; to 0 after replacing the part</translation>
    </message>
    <message>
        <source>软垫模组寿命</source>
        <translation>Life of the pad module</translation>
    </message>
    <message>
        <source>重新读取(&amp;F)</source>
        <translation>Read Again (&amp;F)</translation>
    </message>
    <message>
        <source>从扫描仪重新读取三个计数器</source>
        <translation>Read the three counters from the scanner again</translation>
    </message>
    <message>
        <source>扫描仪状态:</source>
        <translation>Scanner status:</translation>
    </message>
    <message>
        <source>尚未连接</source>
        <translation>Not connected yet</translation>
    </message>
    <message>
        <source>扫描仪状态</source>
        <translation>Scanner status</translation>
    </message>
    <message>
        <source>= %1 小时</source>
        <translation>= %1 h</translation>
    </message>
    <message>
        <source>= %1 小时 %2 分钟</source>
        <translation>= %1 h %2 min</translation>
    </message>
    <message>
        <source>扫描计数器</source>
        <translation>Scan counter</translation>
    </message>
    <message>
        <source>进纸滚轮计数器</source>
        <translation>Feed roller counter</translation>
    </message>
    <message>
        <source>软垫模组计数器</source>
        <translation>Pad module counter</translation>
    </message>
    <message>
        <source>重置%1</source>
        <translation>Reset: %1</translation>
    </message>
    <message>
        <source>%1的更换张数</source>
        <translation>%1: replace after</translation>
    </message>
    <message>
        <source>正在与扫描仪通信…</source>
        <translation>Talking to the scanner...</translation>
    </message>
    <message>
        <source>正在扫描，扫描结束后可以使用</source>
        <translation>Scanning; available when the scan has ended</translation>
    </message>
    <message>
        <source>空闲</source>
        <translation>Idle</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>扫描仪没有应答或应答不完整</source>
        <translation>The scanner did not answer, or not completely</translation>
    </message>
    <message>
        <source>还可使用约 %1 张</source>
        <translation>Good for about %1 more sheets</translation>
    </message>
    <message>
        <source>未读到计数</source>
        <translation>Counter not read</translation>
    </message>
    <message>
        <source>⚠ 需要更换</source>
        <translation>⚠ Replace now</translation>
    </message>
    <message>
        <source>⚠ 即将需要更换</source>
        <translation>⚠ Replace soon</translation>
    </message>
    <message>
        <source>%1将重置为0。
该动作不可撤销，确定要继续吗？
点击【OK】重置计数器，或者点击【取消】退出</source>
        <translation>%1: will be reset to 0.
This cannot be undone. Continue?
Click [OK] to reset the counter, or [Cancel] to leave</translation>
    </message>
    <message>
        <source>正常，待机设置已发送到扫描仪</source>
        <translation>Normal; the standby choice was sent to the scanner</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>没有访问扫描仪的权限</source>
        <translation>No right to access the scanner</translation>
    </message>
    <message>
        <source>扫描仪连接断开</source>
        <translation>Scanner disconnected</translation>
    </message>
    <message>
        <source>扫描仪没有应答</source>
        <translation>The scanner does not answer</translation>
    </message>
    <message>
        <source>连接错误</source>
        <translation>Connection error</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Functions</name>
    <message>
        <source>扫描按键模板分为Scan Utility及OCR Utility，Scan Utility实现扫描并用指定的应用软件打开图像。</source>
        <translation>The scan-key templates are Scan Utility and OCR Utility; Scan Utility scans and opens the images with the chosen application.</translation>
    </message>
    <message>
        <source>扫描并用指定的应用软件打开图像。</source>
        <translation>Scans and opens the images with the chosen application.</translation>
    </message>
    <message>
        <source>扫描文字稿件并识别为可编辑的文字或Word文档。</source>
        <translation>Scans text documents and recognizes them as text that can be edited, or as Word documents.</translation>
    </message>
    <message>
        <source>扫描文字稿件并将影像转换成可搜索pdf文件或pdf影像文件。</source>
        <translation>Scans text documents and turns the images into searchable PDF or PDF image files.</translation>
    </message>
    <message>
        <source>扫描文件或图片，接着从您的打印机复印出来。</source>
        <translation>Scans documents or pictures to be copied with your printer.</translation>
    </message>
    <message>
        <source>扫描文件或图片，接着用您预设的电子邮件软件传送出去。</source>
        <translation>Scans documents or pictures to be sent with your preset e-mail software.</translation>
    </message>
    <message>
        <source>扫描并保存图像到您的存贮装置。</source>
        <translation>Scans images and saves them to your storage device.</translation>
    </message>
    <message>
        <source>扫描文件并上传至FTP服务器。</source>
        <translation>Scans documents to be uploaded to an FTP server.</translation>
    </message>
</context>
<context>
    <name>Manual</name>
    <message>
        <source>PDF 阅读器 %1 无法启动</source>
        <translation>The PDF reader %1 cannot be started</translation>
    </message>
    <message>
        <source>找不到 PDF 阅读器 %1，请重新安装程序</source>
        <translation>The PDF reader %1 is missing; install the program again</translation>
    </message>
    <message>
        <source>找不到用户手册 %1，请重新安装程序</source>
        <translation>The manual %1 is missing; install the program again</translation>
    </message>
</context>
<context>
    <name>NamingFields</name>
    <message>
        <source>起始编号必须是数字。</source>
        <translation>The first number must be digits.</translation>
    </message>
</context>
<context>
    <name>NoiseSet</name>
    <message>
        <source>杂点与阈值</source>
        <translation>Specks and Threshold</translation>
    </message>
    <message>
        <source>只用于黑白扫描：阈值决定多深的颜色变成黑色，去除杂点会擦掉零散的小黑点。</source>
        <translation>Only for black-and-white scans: the threshold decides how dark a color must be to become black; removing specks erases small scattered dots.</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
    <message>
        <source>%1 级：不超过 %2 点</source>
        <translation>Level %1: up to %2 dots</translation>
    </message>
    <message>
        <source>黑白阈值(&amp;T):</source>
        <translation>B/W &amp;threshold:</translation>
    </message>
    <message>
        <source>自动时使用中等的阈值，适合大多数文件</source>
        <translation>Automatic uses a medium threshold, which suits most documents</translation>
    </message>
    <message>
        <source>自定义阈值(&amp;V):</source>
        <translation>Custom &amp;value:</translation>
    </message>
    <message>
        <source>数值越大，变成黑色的内容越多；太大时底色也会变黑，太小时笔画会断开</source>
        <translation>Higher turns more to black; too high blackens the background, too low breaks strokes</translation>
    </message>
    <message>
        <source>去除杂点(&amp;N):</source>
        <translation>Remove specks (&amp;N):</translation>
    </message>
    <message>
        <source>自动时去除不超过 3 点的杂点；笔画旁边的点会保留</source>
        <translation>Automatic removes specks of up to 3 dots; dots beside strokes stay</translation>
    </message>
    <message>
        <source>杂点级别(&amp;L):</source>
        <translation>Speck &amp;level:</translation>
    </message>
    <message>
        <source>自定义时去除多大的杂点（300 dpi 下的点数）；1 级去除得最多</source>
        <translation>How large specks Custom removes (dots at 300 dpi); level 1 removes most</translation>
    </message>
    <message>
        <source>处理后（黑白）</source>
        <translation>After (black/white)</translation>
    </message>
</context>
<context>
    <name>NoticeBoard</name>
    <message>
        <source>已保存 %1 个文件到 %2</source>
        <translation>%1 file(s) saved to %2</translation>
    </message>
    <message>
        <source>没有扫描到页面</source>
        <translation>No page was scanned</translation>
    </message>
    <message>
        <source>没有保存文件</source>
        <translation>No file was saved</translation>
    </message>
    <message>
        <source>已删除 %1 张空白页</source>
        <translation>%1 blank page(s) deleted</translation>
    </message>
    <message>
        <source>%1 个问题：%2</source>
        <translation>%1 problems: %2</translation>
    </message>
    <message>
        <source>；</source>
        <comment>between sentences</comment>
        <translation>; </translation>
    </message>
    <message>
        <source>预览完成</source>
        <translation>Preview finished</translation>
    </message>
</context>
<context>
    <name>OfdPackage</name>
    <message>
        <source>无法写入“%1”：%2</source>
        <translation>Cannot write &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>“%1”不是本程序的临时文件，为避免覆盖，未生成OFD文件；请移走它或更换保存文件夹</source>
        <translation>&quot;%1&quot; is no temporary file of this program. So as not to overwrite it, no OFD file was made; move it away or choose another save folder</translation>
    </message>
    <message>
        <source>无法删除遗留的临时文件“%1”</source>
        <translation>Cannot delete the leftover temporary file &quot;%1&quot;</translation>
    </message>
    <message>
        <source>无法创建文件夹</source>
        <translation>Cannot make the folder</translation>
    </message>
</context>
<context>
    <name>OutputSet</name>
    <message>
        <source>输出图像</source>
        <translation>Output Images</translation>
    </message>
    <message>
        <source>扫描一页得到哪些图像，以及双面稿件的反面怎样放置。</source>
        <translation>Which images a scanned page gives, and how the backs of two-sided originals lie.</translation>
    </message>
    <message>
        <source>双面稿件的反面在文档中怎样放置。</source>
        <translation>How the backs of two-sided originals lie in documents.</translation>
    </message>
    <message>
        <source>输出多张图像(&amp;M)</source>
        <translation>&amp;Multiple images</translation>
    </message>
    <message>
        <source>长边翻页（反面不旋转）</source>
        <translation>Long edge (back not turned)</translation>
    </message>
    <message>
        <source>短边翻页（反面旋转 180 度）</source>
        <translation>Short edge (back turned 180°)</translation>
    </message>
    <message>
        <source>双面翻页方式(&amp;L):</source>
        <translation>F&amp;lip two-sided on:</translation>
    </message>
    <message>
        <source>只用于 PDF 和 OCR：短边翻页的稿件，反面旋转 180 度后与正面方向一致</source>
        <translation>Only for PDF and OCR: with originals flipped on the short edge, the back is turned 180° to match the front</translation>
    </message>
    <message>
        <source>文件类型</source>
        <translation>File type</translation>
    </message>
    <message>
        <source>彩色(&amp;R):</source>
        <translation>Colo&amp;r:</translation>
    </message>
    <message>
        <source>彩色图像保存成的文件类型</source>
        <translation>File type of color images</translation>
    </message>
    <message>
        <source>灰阶(&amp;G):</source>
        <translation>&amp;Gray:</translation>
    </message>
    <message>
        <source>灰阶图像保存成的文件类型</source>
        <translation>File type of gray images</translation>
    </message>
    <message>
        <source>黑白(&amp;B):</source>
        <translation>&amp;Black/White:</translation>
    </message>
    <message>
        <source>黑白图像保存成的文件类型</source>
        <translation>File type of black-and-white images</translation>
    </message>
    <message>
        <source>另存的图像</source>
        <translation>Additional Images</translation>
    </message>
    <message>
        <source>每一页除了原来的图像，再保存颜色更少的图像</source>
        <translation>Save images with fewer colors besides the usual one of each page</translation>
    </message>
    <message>
        <source>灰阶图像分辨率(&amp;Y):</source>
        <translation>Gra&amp;y resolution:</translation>
    </message>
    <message>
        <source>另存的灰阶图像的分辨率</source>
        <translation>Resolution of additional gray images</translation>
    </message>
    <message>
        <source>黑白图像分辨率(&amp;H):</source>
        <translation>B/W resolution (&amp;H):</translation>
    </message>
    <message>
        <source>另存的黑白图像的分辨率</source>
        <translation>Resolution of additional black-and-white images</translation>
    </message>
    <message>
        <source>每一页保存一张图像。</source>
        <translation>One image is saved for each page.</translation>
    </message>
    <message>
        <source>彩色扫描另存灰阶（%1）和黑白（%2）各一张，
灰阶扫描另存黑白（%2）一张，黑白扫描不另存。</source>
        <translation>Color scans also give a gray (%1) and a black-and-white (%2) image,
gray scans a black-and-white one (%2), black-and-white scans none.</translation>
    </message>
</context>
<context>
    <name>PageLoop</name>
    <message>
        <source>正在识别第%1张图像</source>
        <translation>Recognizing image %1</translation>
    </message>
    <message>
        <source>无法载入中文识别模型，请安装 tesseract-ocr-chi-sim</source>
        <translation>Cannot load the Chinese recognition model; install tesseract-ocr-chi-sim</translation>
    </message>
    <message>
        <source>第%1页有 %2 处文字未能识别</source>
        <translation>Page %1: %2 place(s) of text could not be recognized</translation>
    </message>
    <message>
        <source>页面图像无法读取</source>
        <translation>The page image cannot be read</translation>
    </message>
    <message>
        <source>无法写入文件 %1</source>
        <translation>Cannot write the file %1</translation>
    </message>
    <message>
        <source>无法写入文件 %1：%2</source>
        <translation>Cannot write the file %1: %2</translation>
    </message>
</context>
<context>
    <name>PagePipeline</name>
    <message>
        <source>无法保存 %1：磁盘空间不足</source>
        <translation>Cannot save %1: the disk is full</translation>
    </message>
    <message>
        <source>无法保存 %1：无法写入该文件夹</source>
        <translation>Cannot save %1: no right to write in its folder</translation>
    </message>
    <message>
        <source>无法启动应用程序打开 %1</source>
        <translation>Cannot start the application that opens %1</translation>
    </message>
    <message>
        <source>%1 无法拆分，原始页面已保留</source>
        <translation>%1 cannot be split; the original page is kept</translation>
    </message>
    <message>
        <source>无法合并 %1 和 %2，原始页面已保留</source>
        <translation>%1 and %2 cannot be merged; the original pages are kept</translation>
    </message>
    <message>
        <source>无法读取页面文件 %1，文件已保留</source>
        <translation>The page file %1 cannot be read; it is kept</translation>
    </message>
</context>
<context>
    <name>PageReader</name>
    <message>
        <source>缺少中文识别模型（chi_sim），无法识别文字</source>
        <translation>The Chinese recognition model (chi_sim) is missing; text cannot be recognized</translation>
    </message>
</context>
<context>
    <name>PaperSizeSet</name>
    <message>
        <source> 毫米</source>
        <translation> mm</translation>
    </message>
    <message>
        <source>自定义纸张大小</source>
        <translation>Custom Paper Size</translation>
    </message>
    <message>
        <source>页面按 A4（210 × 297 毫米）扫描，再裁切成这里设定的大小；不能超过 A4。</source>
        <translation>Pages are scanned as A4 (210 × 297 mm) and cut to the size set here, which cannot exceed A4.</translation>
    </message>
    <message>
        <source>从左上角开始(&amp;U)</source>
        <translation>From the &amp;upper left corner</translation>
    </message>
    <message>
        <source>在页面中间(&amp;M)</source>
        <translation>In the &amp;middle of the page</translation>
    </message>
    <message>
        <source>选择常用大小</source>
        <translation>Choose a common size</translation>
    </message>
    <message>
        <source>身份证 85.6 × 54</source>
        <translation>ID card 85.6 × 54</translation>
    </message>
    <message>
        <source>名片 90 × 54</source>
        <translation>Business card 90 × 54</translation>
    </message>
    <message>
        <source>A6 105 × 148</source>
        <translation>A6 105 × 148</translation>
    </message>
    <message>
        <source>大 32 开 140 × 203</source>
        <translation>Large 32mo 140 × 203</translation>
    </message>
    <message>
        <source>16 开 184 × 260</source>
        <translation>16mo 184 × 260</translation>
    </message>
    <message>
        <source>常用大小(&amp;S):</source>
        <translation>Common &amp;sizes:</translation>
    </message>
    <message>
        <source>把常用的大小填入下面的宽度和高度</source>
        <translation>Fills a common size into width and height below</translation>
    </message>
    <message>
        <source>宽度(&amp;W):</source>
        <translation>&amp;Width:</translation>
    </message>
    <message>
        <source>裁切出的页面的宽度，A4 的宽度是 210 毫米</source>
        <translation>Width of the cut page; A4 is 210 mm wide</translation>
    </message>
    <message>
        <source>高度(&amp;H):</source>
        <translation>&amp;Height:</translation>
    </message>
    <message>
        <source>裁切出的页面的高度，A4 的高度是 297 毫米</source>
        <translation>Height of the cut page; A4 is 297 mm high</translation>
    </message>
    <message>
        <source>保留扫描图像左上角的部分</source>
        <translation>Keep the upper left part of the scan</translation>
    </message>
    <message>
        <source>保留扫描图像正中间的部分</source>
        <translation>Keep the middle of the scan</translation>
    </message>
    <message>
        <source>裁切位置:</source>
        <translation>Keep:</translation>
    </message>
    <message>
        <source>这个大小不裁切：保留 A4 整页。宽度要小于 210 毫米，或高度小于 297 毫米。</source>
        <translation>This size cuts nothing: the whole A4 page is kept. The width must be below 210 mm or the height below 297 mm.</translation>
    </message>
    <message>
        <source>页面将裁切为 %1 × %2 毫米。</source>
        <translation>Pages are cut to %1 × %2 mm.</translation>
    </message>
    <message>
        <source>超过 A4 的一边按 A4 计算：页面将裁切为 %1 × %2 毫米。</source>
        <translation>A side beyond A4 counts as A4: pages are cut to %1 × %2 mm.</translation>
    </message>
</context>
<context>
    <name>PaperSketch</name>
    <message>
        <source>裁切位置示意图</source>
        <translation>Sketch of where pages are cut</translation>
    </message>
</context>
<context>
    <name>PrefixDialog</name>
    <message>
        <source>确认文件名前缀</source>
        <translation>Confirm File Name Prefix</translation>
    </message>
    <message>
        <source>前缀(&amp;P):</source>
        <translation>&amp;Prefix:</translation>
    </message>
    <message>
        <source>文件名开头的文字，编号接在它后面</source>
        <translation>The beginning of the file name; the number follows it</translation>
    </message>
    <message>
        <source>文件名:</source>
        <translation>File name:</translation>
    </message>
    <message>
        <source>请确认这一批文件的前缀，然后开始扫描。</source>
        <translation>Confirm the prefix of this batch&apos;s files, then the scan begins.</translation>
    </message>
    <message>
        <source>请确认刚保存的文件的前缀。改动前缀后，这一批文件会随之改名。</source>
        <translation>Confirm the prefix of the files just saved. If you change it, the files of this batch are renamed.</translation>
    </message>
</context>
<context>
    <name>PreviewPicture</name>
    <message>
        <source>文件无法读取</source>
        <translation>the file cannot be read</translation>
    </message>
    <message>
        <source>文件不存在</source>
        <translation>the file does not exist</translation>
    </message>
    <message>
        <source>文件是空的</source>
        <translation>the file is empty</translation>
    </message>
    <message>
        <source>图像尺寸过大</source>
        <translation>the image is too large</translation>
    </message>
    <message>
        <source>文件已损坏或不是图像文件</source>
        <translation>the file is damaged or no image</translation>
    </message>
</context>
<context>
    <name>PreviewWidget</name>
    <message>
        <source>页面图像</source>
        <translation>Page image</translation>
    </message>
    <message>
        <source>按住 Ctrl 并转动滚轮可缩放，拖动或用方向键可移动</source>
        <translation>Zoom with Ctrl and the wheel; drag or use the arrow keys to move</translation>
    </message>
    <message>
        <source>上一页(&amp;P)</source>
        <translation>&amp;Previous Page</translation>
    </message>
    <message>
        <source>显示上一页</source>
        <translation>Show the previous page</translation>
    </message>
    <message>
        <source>下一页(&amp;N)</source>
        <translation>&amp;Next Page</translation>
    </message>
    <message>
        <source>显示下一页</source>
        <translation>Show the next page</translation>
    </message>
    <message>
        <source>放大(&amp;I)</source>
        <translation>Zoom &amp;In</translation>
    </message>
    <message>
        <source>放大页面</source>
        <translation>Enlarge the page</translation>
    </message>
    <message>
        <source>缩小(&amp;U)</source>
        <translation>Zoom O&amp;ut</translation>
    </message>
    <message>
        <source>缩小页面</source>
        <translation>Reduce the page</translation>
    </message>
    <message>
        <source>适合窗口(&amp;F)</source>
        <translation>&amp;Fit Window</translation>
    </message>
    <message>
        <source>整页显示在窗口中</source>
        <translation>Show the whole page in the window</translation>
    </message>
    <message>
        <source>100%(&amp;1)</source>
        <translation>&amp;100%</translation>
    </message>
    <message>
        <source>按原始像素显示</source>
        <translation>Show the original pixels</translation>
    </message>
    <message>
        <source>关闭(&amp;C)</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>关闭预览</source>
        <translation>Close the preview</translation>
    </message>
    <message>
        <source>未识别到文字</source>
        <translation>No text recognized</translation>
    </message>
    <message>
        <source>预览 - %1</source>
        <translation>Preview - %1</translation>
    </message>
    <message>
        <source>无法显示页面“%1”：%2。</source>
        <translation>Cannot show the page &quot;%1&quot;: %2.</translation>
    </message>
    <message>
        <source>第 %1 页，共 %2 页</source>
        <translation>Page %1 of %2</translation>
    </message>
    <message>
        <source>%1 × %2 像素</source>
        <translation>%1 × %2 pixels</translation>
    </message>
    <message>
        <source>显示比例 %1%</source>
        <translation>Zoom %1%</translation>
    </message>
    <message>
        <source>&#x3000;</source>
        <comment>between two facts about a picture</comment>
        <translation> · </translation>
    </message>
</context>
<context>
    <name>RotateSet</name>
    <message>
        <source>页面旋转</source>
        <translation>Page Rotation</translation>
    </message>
    <message>
        <source>扫描后的页面可以按文字方向自动转正，也可以每页都固定旋转同样的角度。</source>
        <translation>Scanned pages can be turned upright by their text, or each by the same fixed angle.</translation>
    </message>
    <message>
        <source>自动判断方向(&amp;A)</source>
        <translation>Find the direction &amp;automatically</translation>
    </message>
    <message>
        <source>识别页面上的少量文字，把页面转正；没有文字的页面保持不变</source>
        <translation>Recognizes a little of the page&apos;s text and turns the page upright; pages without text stay as they are</translation>
    </message>
    <message>
        <source>固定旋转(&amp;F)</source>
        <translation>&amp;Fixed rotation</translation>
    </message>
    <message>
        <source>每一页都按下面选择的角度旋转</source>
        <translation>Each page is turned by the angle chosen below</translation>
    </message>
    <message>
        <source>正面</source>
        <translation>Front</translation>
    </message>
    <message>
        <source>不旋转页面</source>
        <translation>Do not turn the page</translation>
    </message>
    <message>
        <source>把页面向左（逆时针）转 90 度</source>
        <translation>Turn the page left (counterclockwise) by 90 degrees</translation>
    </message>
    <message>
        <source>把页面倒转 180 度</source>
        <translation>Turn the page upside down</translation>
    </message>
    <message>
        <source>把页面向右（顺时针）转 90 度</source>
        <translation>Turn the page right (clockwise) by 90 degrees</translation>
    </message>
    <message>
        <source>反面</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>文</source>
        <comment>the letter on a sheet that shows its turn</comment>
        <translation>A</translation>
    </message>
</context>
<context>
    <name>SaveFolder</name>
    <message>
        <source>没有写入权限</source>
        <translation>no right to write</translation>
    </message>
    <message>
        <source>文件系统为只读</source>
        <translation>the file system is read-only</translation>
    </message>
    <message>
        <source>磁盘空间不足</source>
        <translation>the disk is full</translation>
    </message>
    <message>
        <source>路径中有同名文件</source>
        <translation>a file of this name is in the path</translation>
    </message>
    <message>
        <source>路径过长</source>
        <translation>the path is too long</translation>
    </message>
    <message>
        <source>系统错误 %1</source>
        <translation>system error %1</translation>
    </message>
    <message>
        <source>无法创建保存文件夹“%1”：%2</source>
        <translation>Cannot make the save folder &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>保存文件夹“%1”无法写入：%2</source>
        <translation>Cannot write to the save folder &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>保存文件夹“%1”不是完整路径</source>
        <translation>The save folder &quot;%1&quot; is no full path</translation>
    </message>
</context>
<context>
    <name>ScanPageLogic</name>
    <message>
        <source>正面旋转0°</source>
        <translation>Front 0°</translation>
    </message>
    <message>
        <source>正面左转90°</source>
        <translation>Front left 90°</translation>
    </message>
    <message>
        <source>正面旋转180°</source>
        <translation>Front 180°</translation>
    </message>
    <message>
        <source>正面右转90°</source>
        <translation>Front right 90°</translation>
    </message>
    <message>
        <source>反面旋转0°</source>
        <translation>Back 0°</translation>
    </message>
    <message>
        <source>反面左转90°</source>
        <translation>Back left 90°</translation>
    </message>
    <message>
        <source>反面旋转180°</source>
        <translation>Back 180°</translation>
    </message>
    <message>
        <source>反面右转90°</source>
        <translation>Back right 90°</translation>
    </message>
    <message>
        <source>请输入 50 至 1200 之间的分辨率</source>
        <translation>Enter a resolution between 50 and 1200</translation>
    </message>
    <message>
        <source>按 A4 扫描，再裁切到自定义的尺寸</source>
        <translation>Scanned as A4, then cut to the custom size</translation>
    </message>
    <message>
        <source>扫描的范围；“自定义”按 A4 扫描，再裁切到设定的大小</source>
        <translation>The area that is scanned; &quot;Custom&quot; scans A4 and cuts it to the size set</translation>
    </message>
</context>
<context>
    <name>SearchableOfd</name>
    <message>
        <source>无法运行OFD打包程序“%1”</source>
        <translation>Cannot run the OFD packer &quot;%1&quot;</translation>
    </message>
    <message>
        <source>无法生成“%1”：%2</source>
        <translation>Cannot make &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>磁盘空间不足</source>
        <translation>the disk is full</translation>
    </message>
    <message>
        <source>打包程序异常退出</source>
        <translation>the packer ended abnormally</translation>
    </message>
</context>
<context>
    <name>SearchablePdf</name>
    <message>
        <source>临时文件夹“%1”无法写入</source>
        <translation>Cannot write to the temporary folder &quot;%1&quot;</translation>
    </message>
</context>
<context>
    <name>TemplateArchive</name>
    <message>
        <source>文件不存在或无法读取</source>
        <translation>the file does not exist or cannot be read</translation>
    </message>
    <message>
        <source>文件太大，不是模板文件</source>
        <translation>the file is too large to be a template</translation>
    </message>
    <message>
        <source>文件已损坏，或不是模板文件</source>
        <translation>the file is damaged or no template</translation>
    </message>
    <message>
        <source>其中的设置文件太大</source>
        <translation>the settings file in it is too large</translation>
    </message>
    <message>
        <source>文件已损坏，无法解压</source>
        <translation>the file is damaged and cannot be unpacked</translation>
    </message>
    <message>
        <source>其中的文件名不是模板的文件名</source>
        <translation>the file names in it are not those of a template</translation>
    </message>
    <message>
        <source>临时文件无法写入，请检查磁盘空间</source>
        <translation>the temporary file cannot be written; check the disk space</translation>
    </message>
    <message>
        <source>其中的设置文件已损坏</source>
        <translation>the settings file in it is damaged</translation>
    </message>
    <message>
        <source>其中的设置文件不属于本程序</source>
        <translation>the settings file in it is not this program&apos;s</translation>
    </message>
    <message>
        <source>模板的文件不存在或已损坏</source>
        <translation>the template&apos;s files are missing or damaged</translation>
    </message>
</context>
<context>
    <name>TemplateMark</name>
    <message>
        <source>当前设置与模板“%1”不同。点“载入”恢复，点“保存”另存。</source>
        <translation>The settings differ from the template &quot;%1&quot;. &quot;Load&quot; restores it, &quot;Save&quot; makes another.</translation>
    </message>
    <message>
        <source>选择模板后点“载入”，用它的设置替换当前设置</source>
        <translation>Choose a template and click &quot;Load&quot; to replace the settings by its own</translation>
    </message>
</context>
<context>
    <name>TemplateName</name>
    <message>
        <source>保存模板</source>
        <translation>Save Template</translation>
    </message>
    <message>
        <source>模板名称</source>
        <translation>Template name</translation>
    </message>
    <message>
        <source>模板保存两页的全部设置，载入后即可恢复。名称最多 64 个字，不含空格。</source>
        <translation>A template keeps all settings of both pages; loading it restores them. Its name has at most 64 characters and no blanks.</translation>
    </message>
    <message>
        <source>模板名称(&amp;N):</source>
        <translation>Template &amp;name:</translation>
    </message>
    <message>
        <source>名称含有“_”：下次启动后列表中只显示“_”之前的部分，无法再载入。</source>
        <translation>The name contains &quot;_&quot;: after the next start the list shows only what stands before it, and the template cannot be loaded.</translation>
    </message>
    <message>
        <source>模板名称不能包含空格或特殊字符</source>
        <translation>A template name must not contain blanks or special characters</translation>
    </message>
    <message>
        <source>模板“%1”已存在，要覆盖吗？</source>
        <translation>The template &quot;%1&quot; exists. Overwrite it?</translation>
    </message>
</context>
<context>
    <name>TextDocument</name>
    <message>
        <source>未识别到文字</source>
        <translation>No text recognized</translation>
    </message>
    <message>
        <source>纯文本仅保留最后一页</source>
        <translation>plain text keeps only the last page</translation>
    </message>
</context>
<context>
    <name>Widget</name>
    <message>
        <source>QWD200 扫描</source>
        <translation>QWD200 Scan</translation>
    </message>
    <message>
        <source>功能与模板</source>
        <translation>Function and Template</translation>
    </message>
    <message>
        <source>扫描页(&amp;S)</source>
        <translation>&amp;Scan page</translation>
    </message>
    <message>
        <source>扫描页</source>
        <translation>Scan page</translation>
    </message>
    <message>
        <source>扫描按键模板：窗口的扫描按钮和扫描仪的扫描键使用的设置</source>
        <translation>Scan-key templates: the settings for the window&apos;s scan button and the scanner&apos;s scan key</translation>
    </message>
    <message>
        <source>文件页(&amp;F)</source>
        <translation>&amp;File page</translation>
    </message>
    <message>
        <source>文件页</source>
        <translation>File page</translation>
    </message>
    <message>
        <source>文件模板：生成文档的功能使用的设置</source>
        <translation>File templates: the settings for functions that make documents</translation>
    </message>
    <message>
        <source>功能(&amp;U):</source>
        <translation>F&amp;unction:</translation>
    </message>
    <message>
        <source>扫描页的功能</source>
        <translation>Function of the scan page</translation>
    </message>
    <message>
        <source>文件页的功能</source>
        <translation>Function of the file page</translation>
    </message>
    <message>
        <source>模板(&amp;M):</source>
        <translation>Te&amp;mplate:</translation>
    </message>
    <message>
        <source>扫描模板</source>
        <translation>Scan template</translation>
    </message>
    <message>
        <source>保存(&amp;W)</source>
        <translation>Save (&amp;W)</translation>
    </message>
    <message>
        <source>保存模板</source>
        <translation>Save Template</translation>
    </message>
    <message>
        <source>把两页的全部设置保存为一个模板</source>
        <translation>Save all settings of both pages as a template</translation>
    </message>
    <message>
        <source>载入(&amp;J)</source>
        <translation>Load (&amp;J)</translation>
    </message>
    <message>
        <source>载入模板</source>
        <translation>Load template</translation>
    </message>
    <message>
        <source>用选中的模板替换全部设置</source>
        <translation>Replace all settings by those of the chosen template</translation>
    </message>
    <message>
        <source>删除(&amp;X)</source>
        <translation>Delete (&amp;X)</translation>
    </message>
    <message>
        <source>删除模板</source>
        <translation>Delete template</translation>
    </message>
    <message>
        <source>删除选中的模板；默认模板不能删除</source>
        <translation>Delete the chosen template; the default one cannot be deleted</translation>
    </message>
    <message>
        <source>更多(&amp;Y)</source>
        <translation>More (&amp;Y)</translation>
    </message>
    <message>
        <source>更多模板操作</source>
        <translation>More about templates</translation>
    </message>
    <message>
        <source>导入、导出模板，恢复默认模板</source>
        <translation>Import or export templates, restore the default one</translation>
    </message>
    <message>
        <source>整体设定(&amp;G)...</source>
        <translation>&amp;General Settings...</translation>
    </message>
    <message>
        <source>整体设定</source>
        <translation>General Settings</translation>
    </message>
    <message>
        <source>背景、空白页、拆分等对所有功能有效的设置，以及扫描仪的维护</source>
        <translation>Settings for all functions, such as background, blank pages and splitting, and the scanner&apos;s maintenance</translation>
    </message>
    <message>
        <source>扫描页的功能说明</source>
        <translation>Description of the scan page&apos;s function</translation>
    </message>
    <message>
        <source>扫描按键模板分为Scan Utility及OCR Utility，Scan Utility实现扫描并用指定的应用软件打开图像。</source>
        <translation>The scan-key templates are Scan Utility and OCR Utility; Scan Utility scans and opens the images with the chosen application.</translation>
    </message>
    <message>
        <source>文件页的功能说明</source>
        <translation>Description of the file page&apos;s function</translation>
    </message>
    <message>
        <source>扫描文字稿件并将影像转换成可搜索pdf文件或pdf影像文件。</source>
        <translation>Scans text documents and turns the images into searchable PDF or PDF image files.</translation>
    </message>
    <message>
        <source>功能提示</source>
        <translation>Hint about the function</translation>
    </message>
    <message>
        <source>图像保存到文件夹后，请用电子邮件软件发送。</source>
        <translation>When the images are saved to the folder, send them with your e-mail software.</translation>
    </message>
    <message>
        <source>来源与纸张(&amp;P)</source>
        <translation>Source and &amp;Paper</translation>
    </message>
    <message>
        <source>纸张来源:</source>
        <translation>Paper source:</translation>
    </message>
    <message>
        <source>纸张来源</source>
        <translation>Paper source</translation>
    </message>
    <message>
        <source>平台反射稿</source>
        <translation>Flatbed</translation>
    </message>
    <message>
        <source>ADF（正面）</source>
        <translation>ADF (front)</translation>
    </message>
    <message>
        <source>ADF（反面）</source>
        <translation>ADF (back)</translation>
    </message>
    <message>
        <source>ADF（双面）</source>
        <translation>ADF (duplex)</translation>
    </message>
    <message>
        <source>自动侦测</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>扫描面:</source>
        <translation>Scan side:</translation>
    </message>
    <message>
        <source>正面</source>
        <translation>Front</translation>
    </message>
    <message>
        <source>扫描正面</source>
        <translation>Scan the front</translation>
    </message>
    <message>
        <source>反面</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>扫描反面</source>
        <translation>Scan the back</translation>
    </message>
    <message>
        <source>双面</source>
        <translation>Duplex</translation>
    </message>
    <message>
        <source>扫描双面</source>
        <translation>Scan both sides</translation>
    </message>
    <message>
        <source>纸张大小:</source>
        <translation>Paper size:</translation>
    </message>
    <message>
        <source>纸张大小</source>
        <translation>Paper size</translation>
    </message>
    <message>
        <source>自定义...</source>
        <translation>Custom...</translation>
    </message>
    <message>
        <source>颜色模式:</source>
        <translation>Color mode:</translation>
    </message>
    <message>
        <source>颜色模式</source>
        <translation>Color mode</translation>
    </message>
    <message>
        <source>黑白</source>
        <translation>Black/White</translation>
    </message>
    <message>
        <source>灰阶</source>
        <translation>Gray</translation>
    </message>
    <message>
        <source>彩色</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>分辨率:</source>
        <translation>Resolution:</translation>
    </message>
    <message>
        <source>分辨率模式</source>
        <translation>Resolution mode</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>分辨率</source>
        <translation>Resolution</translation>
    </message>
    <message>
        <source>每英寸点数，50 至 1200；分辨率选“自定义”时可以输入</source>
        <translation>Dots per inch, 50 to 1200; can be typed when the resolution is &quot;Custom&quot;</translation>
    </message>
    <message>
        <source>自定义分辨率：50 至 1200 dpi</source>
        <translation>Custom resolution: 50 to 1200 dpi</translation>
    </message>
    <message>
        <source>dpi</source>
        <translation>dpi</translation>
    </message>
    <message>
        <source>连续扫描</source>
        <translation>Continuous scan</translation>
    </message>
    <message>
        <source>平台扫描时，每页之后询问是否继续扫描下一页</source>
        <translation>On the flatbed, ask after each page whether to scan another one</translation>
    </message>
    <message>
        <source>合并与拆分(&amp;L)</source>
        <translation>Merge and Sp&amp;lit</translation>
    </message>
    <message>
        <source>合并页面</source>
        <translation>Merge pages</translation>
    </message>
    <message>
        <source>把同一张纸的正面和反面合并为一幅图像（仅双面扫描）</source>
        <translation>Put front and back of a sheet into one image (duplex scans only)</translation>
    </message>
    <message>
        <source>拆分页面:</source>
        <translation>Split pages:</translation>
    </message>
    <message>
        <source>拆分页面</source>
        <translation>Split pages</translation>
    </message>
    <message>
        <source>把每一页拆分成几幅图像</source>
        <translation>Split each page into several images</translation>
    </message>
    <message>
        <source>方向:</source>
        <translation>Direction:</translation>
    </message>
    <message>
        <source>水平</source>
        <translation>Horizontal</translation>
    </message>
    <message>
        <source>水平方向</source>
        <translation>Horizontal direction</translation>
    </message>
    <message>
        <source>合并或拆分时左右相邻</source>
        <translation>Pages are merged or split side by side</translation>
    </message>
    <message>
        <source>垂直</source>
        <translation>Vertical</translation>
    </message>
    <message>
        <source>垂直方向</source>
        <translation>Vertical direction</translation>
    </message>
    <message>
        <source>合并或拆分时上下相邻</source>
        <translation>Pages are merged or split one above the other</translation>
    </message>
    <message>
        <source>色调(&amp;T)</source>
        <translation>&amp;Tone</translation>
    </message>
    <message>
        <source>亮度:</source>
        <translation>Brightness:</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brightness</translation>
    </message>
    <message>
        <source>亮度值</source>
        <translation>Brightness value</translation>
    </message>
    <message>
        <source>对比:</source>
        <translation>Contrast:</translation>
    </message>
    <message>
        <source>对比</source>
        <translation>Contrast</translation>
    </message>
    <message>
        <source>对比值</source>
        <translation>Contrast value</translation>
    </message>
    <message>
        <source>Gamma:</source>
        <translation>Gamma:</translation>
    </message>
    <message>
        <source>Gamma</source>
        <translation>Gamma</translation>
    </message>
    <message>
        <source>Gamma值</source>
        <translation>Gamma value</translation>
    </message>
    <message>
        <source>黑白阈值:</source>
        <translation>B/W threshold:</translation>
    </message>
    <message>
        <source>黑白阈值</source>
        <translation>Black-and-white threshold</translation>
    </message>
    <message>
        <source>仅用于黑白；自定义的数值在“更多”的“杂点与阈值”中</source>
        <translation>Only for black/white; a custom value is set under &quot;More&quot;, &quot;Specks and Threshold&quot;</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>滤镜:</source>
        <translation>Filter:</translation>
    </message>
    <message>
        <source>滤镜</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
    <message>
        <source>均化</source>
        <translation>Equalize</translation>
    </message>
    <message>
        <source>模糊</source>
        <translation>Blur</translation>
    </message>
    <message>
        <source>更模糊</source>
        <translation>Blur more</translation>
    </message>
    <message>
        <source>锐利</source>
        <translation>Sharpen</translation>
    </message>
    <message>
        <source>更锐利</source>
        <translation>Sharpen more</translation>
    </message>
    <message>
        <source>反锐利</source>
        <translation>Unsharp mask</translation>
    </message>
    <message>
        <source>去网纹:</source>
        <translation>Descreen:</translation>
    </message>
    <message>
        <source>去网纹</source>
        <translation>Descreen</translation>
    </message>
    <message>
        <source>报纸</source>
        <translation>Newspaper</translation>
    </message>
    <message>
        <source>杂志</source>
        <translation>Magazine</translation>
    </message>
    <message>
        <source>画册</source>
        <translation>Picture book</translation>
    </message>
    <message>
        <source>滤色:</source>
        <translation>Dropout:</translation>
    </message>
    <message>
        <source>滤色</source>
        <translation>Color dropout</translation>
    </message>
    <message>
        <source>红色</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>绿色</source>
        <translation>Green</translation>
    </message>
    <message>
        <source>蓝色</source>
        <translation>Blue</translation>
    </message>
    <message>
        <source>旋转(&amp;E)</source>
        <translation>Rotat&amp;e</translation>
    </message>
    <message>
        <source>手动旋转</source>
        <translation>Rotate by hand</translation>
    </message>
    <message>
        <source>关闭时自动判断每页的方向</source>
        <translation>When off, the direction of each page is found automatically</translation>
    </message>
    <message>
        <source>旋转设定(&amp;R)...</source>
        <translation>&amp;Rotation...</translation>
    </message>
    <message>
        <source>旋转设定</source>
        <translation>Rotation settings</translation>
    </message>
    <message>
        <source>正面旋转0°</source>
        <translation>Front 0°</translation>
    </message>
    <message>
        <source>正面旋转</source>
        <translation>Rotation of the front</translation>
    </message>
    <message>
        <source>反面旋转0°</source>
        <translation>Back 0°</translation>
    </message>
    <message>
        <source>反面旋转</source>
        <translation>Rotation of the back</translation>
    </message>
    <message>
        <source>影像处理(&amp;I)</source>
        <translation>&amp;Image Processing</translation>
    </message>
    <message>
        <source>自动裁切</source>
        <translation>Auto crop</translation>
    </message>
    <message>
        <source>自动匡正</source>
        <translation>Deskew</translation>
    </message>
    <message>
        <source>自动密集</source>
        <translation>Auto levels</translation>
    </message>
    <message>
        <source>删除空白页</source>
        <translation>Delete blank pages</translation>
    </message>
    <message>
        <source>删除背景</source>
        <translation>Remove background</translation>
    </message>
    <message>
        <source>字符增强</source>
        <translation>Enhance text</translation>
    </message>
    <message>
        <source>红头文件</source>
        <translation>Red-header document</translation>
    </message>
    <message>
        <source>填补孔洞</source>
        <translation>Fill holes</translation>
    </message>
    <message>
        <source>去除颜色</source>
        <translation>Drop color</translation>
    </message>
    <message>
        <source>颜色匹配</source>
        <translation>Match colors</translation>
    </message>
    <message>
        <source>影像补边</source>
        <translation>Border fill</translation>
    </message>
    <message>
        <source>补边设定...</source>
        <translation>Border...</translation>
    </message>
    <message>
        <source>影像补边设定</source>
        <translation>Border Settings</translation>
    </message>
    <message>
        <source>补边的位置、宽度和颜色</source>
        <translation>Place, width and color of the border</translation>
    </message>
    <message>
        <source>输出多张图像</source>
        <translation>Multiple images</translation>
    </message>
    <message>
        <source>另存灰阶和黑白图像</source>
        <translation>Also save gray and black-and-white images</translation>
    </message>
    <message>
        <source>更多...</source>
        <translation>More...</translation>
    </message>
    <message>
        <source>更多设定</source>
        <translation>More settings</translation>
    </message>
    <message>
        <source>杂点与阈值、纸张大小、输出图像和文件压缩</source>
        <translation>Specks and threshold, paper size, output images and compression</translation>
    </message>
    <message>
        <source>输出(&amp;O)</source>
        <translation>&amp;Output</translation>
    </message>
    <message>
        <source>文件类型:</source>
        <translation>File type:</translation>
    </message>
    <message>
        <source>文件类型</source>
        <translation>File type</translation>
    </message>
    <message>
        <source>保存设定(&amp;B)...</source>
        <translation>Saving (&amp;B)...</translation>
    </message>
    <message>
        <source>保存文件夹与文件名设定</source>
        <translation>Folder and file names</translation>
    </message>
    <message>
        <source>启动应用程序打开图像</source>
        <translation>Open images with an application</translation>
    </message>
    <message>
        <source>应用程序:</source>
        <translation>Application:</translation>
    </message>
    <message>
        <source>应用程序</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>新增</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>新增应用程序</source>
        <translation>Add application</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>编辑应用程序</source>
        <translation>Edit Application</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>删除应用程序</source>
        <translation>Delete application</translation>
    </message>
    <message>
        <source>彩色文件类型</source>
        <translation>File type for color</translation>
    </message>
    <message>
        <source>灰阶文件类型</source>
        <translation>File type for gray</translation>
    </message>
    <message>
        <source>黑白文件类型</source>
        <translation>File type for black/white</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>就绪</source>
        <translation>Ready</translation>
    </message>
    <message>
        <source>进度</source>
        <translation>Progress</translation>
    </message>
    <message>
        <source>帮助 (F1)</source>
        <translation>Help (F1)</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>打开用户手册</source>
        <translation>Open the manual</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>默认值(&amp;D)</source>
        <translation>&amp;Defaults</translation>
    </message>
    <message>
        <source>默认值</source>
        <translation>Defaults</translation>
    </message>
    <message>
        <source>把扫描页的设置恢复为出厂值</source>
        <translation>Set the scan page&apos;s settings back to factory values</translation>
    </message>
    <message>
        <source>预览(&amp;V)</source>
        <translation>Pre&amp;view</translation>
    </message>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>扫描并显示，不保存</source>
        <translation>Scan and show, save nothing</translation>
    </message>
    <message>
        <source>应用(&amp;A)</source>
        <translation>&amp;Apply</translation>
    </message>
    <message>
        <source>应用</source>
        <translation>Apply</translation>
    </message>
    <message>
        <source>保存设置</source>
        <translation>Save Settings</translation>
    </message>
    <message>
        <source>确定(&amp;K)</source>
        <translation>O&amp;K</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>保存设置并隐藏窗口</source>
        <translation>Save the settings and hide the window</translation>
    </message>
    <message>
        <source>取消(&amp;C)</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>取消扫描；空闲时放弃更改并隐藏窗口</source>
        <translation>Cancels a scan; when idle, drops changes and hides the window</translation>
    </message>
    <message>
        <source>扫描</source>
        <translation>Scan</translation>
    </message>
    <message>
        <source>开始扫描 (Ctrl+Enter)</source>
        <translation>Start scanning (Ctrl+Enter)</translation>
    </message>
    <message>
        <source>Ctrl+Return</source>
        <translation>Ctrl+Return</translation>
    </message>
    <message>
        <source>托盘图标</source>
        <translation>Tray icon</translation>
    </message>
    <message>
        <source>通知类型</source>
        <translation>Kind of notification</translation>
    </message>
    <message>
        <source>状态监视器启动</source>
        <translation>Status Monitor Started</translation>
    </message>
    <message>
        <source>状态监视器启动成功！</source>
        <translation>The status monitor has been started!</translation>
    </message>
    <message>
        <source>没有访问扫描仪的权限</source>
        <translation>No right to access the scanner</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>扫描任务正在进行，确定要取消任务并退出吗？</source>
        <translation>A scan job is running. Cancel it and quit?</translation>
    </message>
    <message>
        <source>正在扫描第%1张图像</source>
        <translation>Scanning image %1</translation>
    </message>
    <message>
        <source>上次未完成的页面已移至 %1</source>
        <translation>Unfinished pages of last time were moved to %1</translation>
    </message>
    <message>
        <source>未找到扫描仪</source>
        <translation>No scanner found</translation>
    </message>
    <message>
        <source>，已扫描的 %1 页已处理</source>
        <translation>; the %1 page(s) already scanned were processed</translation>
    </message>
    <message>
        <source>扫描仪通信错误，请重启应用和扫描仪！</source>
        <translation>Scanner communication error. Restart the application and the scanner!</translation>
    </message>
    <message>
        <source>扫描仪忙，请关闭其他扫描软件，然后重试！</source>
        <translation>The scanner is busy. Close other scanning software and try again!</translation>
    </message>
    <message>
        <source>ADF进纸器无纸,请将稿件放入ADF进纸器！</source>
        <translation>The feeder (ADF) is empty. Put the documents into it!</translation>
    </message>
    <message>
        <source>进纸失败或纸张超长！请检查纸张状态后重试</source>
        <translation>Feed failure, or the paper is too long! Check the paper and try again</translation>
    </message>
    <message>
        <source>页面文件无法写入，请检查磁盘空间</source>
        <translation>Page files cannot be written; check the disk space</translation>
    </message>
    <message>
        <source>无法重命名 %1</source>
        <translation>Cannot rename %1</translation>
    </message>
    <message>
        <source>扫描仪离线</source>
        <translation>Scanner Off-line</translation>
    </message>
    <message>
        <source>扫描仪断开或进入休眠！</source>
        <translation>Scanner disconnected or asleep!</translation>
    </message>
    <message>
        <source>扫描仪在线</source>
        <translation>Scanner On-line</translation>
    </message>
    <message>
        <source>扫描仪链接成功！</source>
        <translation>Scanner connected!</translation>
    </message>
    <message>
        <source>正在维护扫描仪，请稍候再扫描</source>
        <translation>The scanner is being maintained; scan a little later</translation>
    </message>
    <message>
        <source>取消扫描，已扫描的页面将与下一次任务一起处理</source>
        <translation>Scan canceled; the scanned pages go with the next job</translation>
    </message>
    <message>
        <source>%1，已扫描的页面已保留</source>
        <translation>%1; the scanned pages are kept</translation>
    </message>
    <message>
        <source>正在处理第%1张图像</source>
        <translation>Processing image %1</translation>
    </message>
    <message>
        <source>取消扫描，%1 页未处理，将与下一次任务一起处理</source>
        <translation>Scan canceled; %1 page(s) not processed go with the next job</translation>
    </message>
    <message>
        <source>无法启动程序 %1</source>
        <translation>Cannot start the program %1</translation>
    </message>
    <message>
        <source>正在取消…</source>
        <translation>Canceling...</translation>
    </message>
    <message>
        <source>设置无法保存，请检查 %1 的写入权限</source>
        <translation>The settings cannot be saved; check the right to write in %1</translation>
    </message>
    <message>
        <source>扫描仪空闲</source>
        <translation>The scanner is idle</translation>
    </message>
    <message>
        <source>导入模板(&amp;I)...</source>
        <translation>&amp;Import Template...</translation>
    </message>
    <message>
        <source>导出模板(&amp;E)...</source>
        <translation>&amp;Export Template...</translation>
    </message>
    <message>
        <source>恢复默认模板(&amp;R)...</source>
        <translation>&amp;Restore Default Template...</translation>
    </message>
    <message>
        <source>模板名称不能包含空格或特殊字符</source>
        <translation>A template name must not contain blanks or special characters</translation>
    </message>
    <message>
        <source>已保存模板“%1”</source>
        <translation>Template &quot;%1&quot; saved</translation>
    </message>
    <message>
        <source>模板“%1”的文件不存在（名称含“_”的模板在列表中只显示“_”之前的部分）。</source>
        <translation>The files of the template &quot;%1&quot; do not exist (of a name with &quot;_&quot; the list shows only what stands before it).</translation>
    </message>
    <message>
        <source>模板“%1”的文件已损坏。</source>
        <translation>The files of the template &quot;%1&quot; are damaged.</translation>
    </message>
    <message>
        <source>仍要载入吗？载入后所有设置将恢复为空或默认的值。</source>
        <translation>Load it all the same? All settings become empty or default values.</translation>
    </message>
    <message>
        <source>已载入模板“%1”</source>
        <translation>Template &quot;%1&quot; loaded</translation>
    </message>
    <message>
        <source>模板“%1”无法载入，请检查磁盘空间和 %2 的写入权限</source>
        <translation>The template &quot;%1&quot; cannot be loaded; check the disk space and the right to write in %2</translation>
    </message>
    <message>
        <source>请勿删除默认模板</source>
        <translation>The default template cannot be deleted</translation>
    </message>
    <message>
        <source>模板“%1”无法删除，请检查 %2 的写入权限</source>
        <translation>The template &quot;%1&quot; cannot be deleted; check the right to write in %2</translation>
    </message>
    <message>
        <source>已删除模板“%1”，当前设置保持不变</source>
        <translation>Template &quot;%1&quot; deleted; the settings stay as they are</translation>
    </message>
    <message>
        <source>“%1”来自名称含“_”的模板，无法在列表中删除</source>
        <translation>&quot;%1&quot; comes from a template with &quot;_&quot; in its name and cannot be deleted in the list</translation>
    </message>
    <message>
        <source>已删除模板“%1”，载入“%2”</source>
        <translation>Template &quot;%1&quot; deleted, &quot;%2&quot; loaded</translation>
    </message>
    <message>
        <source>模板“%1”无法导出：%2</source>
        <translation>The template &quot;%1&quot; cannot be exported: %2</translation>
    </message>
    <message>
        <source>导出模板</source>
        <translation>Export Template</translation>
    </message>
    <message>
        <source>模板文件 (*.zip)</source>
        <translation>Template files (*.zip)</translation>
    </message>
    <message>
        <source>模板“%1”已导出到 %2</source>
        <translation>Template &quot;%1&quot; exported to %2</translation>
    </message>
    <message>
        <source>无法写入 %1，请检查磁盘空间和写入权限</source>
        <translation>Cannot write %1; check the disk space and the right to write</translation>
    </message>
    <message>
        <source>导入模板</source>
        <translation>Import Template</translation>
    </message>
    <message>
        <source>无法导入 %1：%2</source>
        <translation>Cannot import %1: %2</translation>
    </message>
    <message>
        <source>此模板在扫描后可能启动下列程序：
%1

确定要导入吗？</source>
        <translation>After a scan this template may start these programs:
%1

Import it?</translation>
    </message>
    <message>
        <source>已导入模板“%1”，点“载入”使用它的设置</source>
        <translation>Template &quot;%1&quot; imported; click &quot;Load&quot; to use its settings</translation>
    </message>
    <message>
        <source>默认模板“%1”将恢复为出厂设置并载入，当前未保存到其他模板的设置会丢失。继续吗？</source>
        <translation>The default template &quot;%1&quot; goes back to factory settings and is loaded; settings that are in no other template are lost. Continue?</translation>
    </message>
    <message>
        <source>扫描任务正在进行，请等任务结束后再使用模板</source>
        <translation>A scan job is running; use templates when it has ended</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>显示窗体</source>
        <translation>Show Window</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>请双击或右键打开主界面</source>
        <translation>Double-click or right-click to open the main window</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>扫描仪尚未连接</source>
        <translation>The scanner is not connected yet</translation>
    </message>
</context>
<context>
    <name>WordDocument</name>
    <message>
        <source>未识别到文字</source>
        <translation>No text recognized</translation>
    </message>
</context>
<context>
    <name>append</name>
    <message>
        <source>应用程序</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>扫描后可以用这里登记的应用程序打开文件。文件名会自动加在参数之后；程序留空时，用系统默认的程序打开。</source>
        <translation>Applications entered here can open files after a scan. The file name is added behind the arguments; without a program, the system&apos;s default one opens the file.</translation>
    </message>
    <message>
        <source>预设(&amp;S):</source>
        <translation>Pre&amp;set:</translation>
    </message>
    <message>
        <source>预设的应用程序</source>
        <translation>Preset applications</translation>
    </message>
    <message>
        <source>选择一个已安装的常用程序，自动填写下面的名称、程序和参数</source>
        <translation>Choose an installed program to fill in name, program and arguments below</translation>
    </message>
    <message>
        <source>从菜单导入(&amp;I)...</source>
        <translation>&amp;Import from Menu...</translation>
    </message>
    <message>
        <source>从系统的应用程序菜单中选择一个程序</source>
        <translation>Choose a program from the system&apos;s application menu</translation>
    </message>
    <message>
        <source>名称(&amp;N):</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>显示在应用程序列表中的名称</source>
        <translation>The name shown in the list of applications</translation>
    </message>
    <message>
        <source>例如：图像查看器</source>
        <translation>For example: Image viewer</translation>
    </message>
    <message>
        <source>程序(&amp;P):</source>
        <translation>&amp;Program:</translation>
    </message>
    <message>
        <source>程序的路径，或可以直接运行的命令名；留空则使用系统默认程序</source>
        <translation>Path of the program or a command that can be run; empty: the system&apos;s default program</translation>
    </message>
    <message>
        <source>例如：/usr/bin/eog</source>
        <translation>For example: /usr/bin/eog</translation>
    </message>
    <message>
        <source>浏览(&amp;B)...</source>
        <translation>&amp;Browse...</translation>
    </message>
    <message>
        <source>在文件夹中选择程序</source>
        <translation>Choose the program in a folder</translation>
    </message>
    <message>
        <source>参数(&amp;A):</source>
        <translation>&amp;Arguments:</translation>
    </message>
    <message>
        <source>启动程序时附加的参数，可留空；含空格的参数请用双引号括起来</source>
        <translation>Further arguments for the program, may be empty; put arguments with blanks in double quotes</translation>
    </message>
    <message>
        <source>系统默认程序</source>
        <translation>System default program</translation>
    </message>
    <message>
        <source>图像查看器 Eye of GNOME</source>
        <translation>Image viewer Eye of GNOME</translation>
    </message>
    <message>
        <source>图像查看器 Eye of MATE</source>
        <translation>Image viewer Eye of MATE</translation>
    </message>
    <message>
        <source>图像查看器 Gwenview</source>
        <translation>Image viewer Gwenview</translation>
    </message>
    <message>
        <source>图像查看器 Ristretto</source>
        <translation>Image viewer Ristretto</translation>
    </message>
    <message>
        <source>图像编辑 GIMP</source>
        <translation>Image editor GIMP</translation>
    </message>
    <message>
        <source>画图 KolourPaint</source>
        <translation>Painting KolourPaint</translation>
    </message>
    <message>
        <source>LibreOffice 绘图</source>
        <translation>LibreOffice Draw</translation>
    </message>
    <message>
        <source>LibreOffice 文档</source>
        <translation>LibreOffice Writer</translation>
    </message>
    <message>
        <source>文档查看器 Evince</source>
        <translation>Document viewer Evince</translation>
    </message>
    <message>
        <source>文档查看器 Okular</source>
        <translation>Document viewer Okular</translation>
    </message>
    <message>
        <source>文档查看器 Atril</source>
        <translation>Document viewer Atril</translation>
    </message>
    <message>
        <source>图像查看器 ImageMagick</source>
        <translation>Image viewer ImageMagick</translation>
    </message>
    <message>
        <source>添加应用程序</source>
        <translation>Add Application</translation>
    </message>
    <message>
        <source>编辑应用程序</source>
        <translation>Edit Application</translation>
    </message>
    <message>
        <source>（请选择）</source>
        <translation>(choose)</translation>
    </message>
    <message>
        <source>选择程序</source>
        <translation>Choose Program</translation>
    </message>
    <message>
        <source>请输入应用程序的名称。</source>
        <translation>Enter a name for the application.</translation>
    </message>
    <message>
        <source>列表中已有名为“%1”的应用程序。</source>
        <translation>There is already an application named &quot;%1&quot; in the list.</translation>
    </message>
    <message>
        <source>名称中不能有控制字符。</source>
        <translation>The name must not contain control characters.</translation>
    </message>
</context>
<context>
    <name>commandline</name>
    <message>
        <source>程序和参数中不能有控制字符。</source>
        <translation>Program and arguments must not contain control characters.</translation>
    </message>
    <message>
        <source>有参数时必须指定程序。</source>
        <translation>With arguments, a program must be named.</translation>
    </message>
    <message>
        <source>参数中的双引号没有成对出现。</source>
        <translation>The double quotes in the arguments are not in pairs.</translation>
    </message>
    <message>
        <source>不能通过命令解释器（sh -c）启动，请直接指定程序。</source>
        <translation>Starting through a shell (sh -c) is not allowed; name the program itself.</translation>
    </message>
    <message>
        <source>找不到程序“%1”，或者它不能运行。</source>
        <translation>The program &quot;%1&quot; was not found or cannot be run.</translation>
    </message>
</context>
<context>
    <name>copyPanel</name>
    <message>
        <source>扫描文件或图片，接着从您的打印机复印出来。</source>
        <translation>Scans documents or pictures to be copied with your printer.</translation>
    </message>
    <message>
        <source>扫描的图像保存到下面的文件夹。要复印时，选中文件后打开，再从打开的程序中打印。</source>
        <translation>Scanned images are saved to the folder below. To copy them, open the chosen files and print from the program that shows them.</translation>
    </message>
    <message>
        <source>复印属性...</source>
        <translation>Copy Properties...</translation>
    </message>
    <message>
        <source>份数、纸张、缩放等打印时的要求</source>
        <translation>Copies, paper, scaling and other wishes for printing</translation>
    </message>
</context>
<context>
    <name>copyfaxproperty</name>
    <message>
        <source>复印属性</source>
        <translation>Copy Properties</translation>
    </message>
    <message>
        <source>这些设置只保存下来，随模板一起载入，供您打印时参考；本程序把图像保存到文件夹，不直接打印。</source>
        <translation>These settings are only stored and loaded with templates, for your reference when printing; the program saves images to the folder and does not print.</translation>
    </message>
    <message>
        <source>份数(&amp;N):</source>
        <translation>&amp;Number of copies:</translation>
    </message>
    <message>
        <source>每一页打印多少份</source>
        <translation>How many copies of each page to print</translation>
    </message>
    <message>
        <source> 份</source>
        <translation> ×</translation>
    </message>
    <message>
        <source>纸张(&amp;P):</source>
        <translation>&amp;Paper:</translation>
    </message>
    <message>
        <source>打印机中的纸张</source>
        <translation>The paper in the printer</translation>
    </message>
    <message>
        <source>颜色(&amp;L):</source>
        <translation>Co&amp;lor:</translation>
    </message>
    <message>
        <source>打印时使用的颜色</source>
        <translation>The color used for printing</translation>
    </message>
    <message>
        <source>彩色</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>黑白</source>
        <translation>Black/White</translation>
    </message>
    <message>
        <source>纸的一面还是两面都打印</source>
        <translation>Print on one side of the paper or on both</translation>
    </message>
    <message>
        <source>单面</source>
        <translation>One-sided</translation>
    </message>
    <message>
        <source>双面，沿长边翻转</source>
        <translation>Two-sided, flip on long edge</translation>
    </message>
    <message>
        <source>双面，沿短边翻转</source>
        <translation>Two-sided, flip on short edge</translation>
    </message>
    <message>
        <source>缩放到纸张大小(&amp;F)</source>
        <translation>&amp;Fit to paper size</translation>
    </message>
    <message>
        <source>图像放大或缩小到正好占满纸张</source>
        <translation>Images are scaled to fill the paper</translation>
    </message>
    <message>
        <source>缩放比例(&amp;Z):</source>
        <translation>Scaling (&amp;Z):</translation>
    </message>
    <message>
        <source>不缩放到纸张大小时使用的比例</source>
        <translation>The scale when images are not fitted to the paper</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>逐份打印(&amp;T)</source>
        <translation>Colla&amp;te</translation>
    </message>
    <message>
        <source>打印多份时，一份打印完再打印下一份</source>
        <translation>With several copies, finish one before printing the next</translation>
    </message>
    <message>
        <source>灰阶</source>
        <translation>Gray</translation>
    </message>
    <message>
        <source>双面(&amp;S):</source>
        <translation>&amp;Sides:</translation>
    </message>
</context>
<context>
    <name>dialogparts</name>
    <message>
        <source>确定(&amp;O)</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>取消(&amp;C)</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>应用(&amp;A)</source>
        <translation>&amp;Apply</translation>
    </message>
    <message>
        <source>默认值(&amp;D)</source>
        <translation>&amp;Defaults</translation>
    </message>
    <message>
        <source>前缀中不能有“/”。</source>
        <translation>The prefix must not contain &quot;/&quot;.</translation>
    </message>
    <message>
        <source>前缀中不能有控制字符。</source>
        <translation>The prefix must not contain control characters.</translation>
    </message>
    <message>
        <source>前缀不能以“.”开头，否则文件会被隐藏。</source>
        <translation>The prefix must not begin with &quot;.&quot;, which would hide the file.</translation>
    </message>
    <message>
        <source>前缀太长。</source>
        <translation>The prefix is too long.</translation>
    </message>
    <message>
        <source>设置无法保存，请检查磁盘空间和权限。</source>
        <translation>The settings cannot be saved; check disk space and rights.</translation>
    </message>
    <message>
        <source>选择保存文件夹</source>
        <translation>Choose Save Folder</translation>
    </message>
</context>
<context>
    <name>documentText</name>
    <message>
        <source>［图片］</source>
        <translation>[picture]</translation>
    </message>
</context>
<context>
    <name>fileNameSet</name>
    <message>
        <source>文件名设置</source>
        <translation>File Names</translation>
    </message>
    <message>
        <source>决定保存的文件叫什么名字：可以用日期和时间、自定义的前缀和编号，或者两者都用。</source>
        <translation>What saved files are called: date and time, your own prefix and a number, or both.</translation>
    </message>
    <message>
        <source>日期和时间</source>
        <translation>Date and time</translation>
    </message>
    <message>
        <source>文件名中包含扫描的日期和时间</source>
        <translation>The file name has the date and time of the scan</translation>
    </message>
    <message>
        <source>使用操作系统设置</source>
        <translation>System format</translation>
    </message>
    <message>
        <source>固定格式，例如 2026-11-15-06:14:46-123</source>
        <translation>Fixed format, for example 2026-11-15-06:14:46-123</translation>
    </message>
    <message>
        <source>用户定义:</source>
        <translation>User-defined:</translation>
    </message>
    <message>
        <source>按下面的顺序和分隔符排列日期和时间</source>
        <translation>Date and time in the order and with the separator below</translation>
    </message>
    <message>
        <source>顺序(&amp;S):</source>
        <translation>Order (&amp;S):</translation>
    </message>
    <message>
        <source>日期的第一个字段</source>
        <translation>First part of the date</translation>
    </message>
    <message>
        <source>yyyy</source>
        <translation>yyyy</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>dd</source>
        <translation>dd</translation>
    </message>
    <message>
        <source>日期的第二个字段</source>
        <translation>Second part of the date</translation>
    </message>
    <message>
        <source>日期的第三个字段</source>
        <translation>Third part of the date</translation>
    </message>
    <message>
        <source>(例如：年=yyyy/yy，月=mm，日=dd)</source>
        <translation>(e.g. year=yyyy/yy, month=mm, day=dd)</translation>
    </message>
    <message>
        <source>分隔符:</source>
        <translation>Separator:</translation>
    </message>
    <message>
        <source>写在年、月、日、时、分、秒之间的符号</source>
        <translation>Stands between year, month, day, hour, minute and second</translation>
    </message>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
    <message>
        <source>-</source>
        <translation>-</translation>
    </message>
    <message>
        <source>.</source>
        <translation>.</translation>
    </message>
    <message>
        <source>24小时制</source>
        <translation>24-hour clock</translation>
    </message>
    <message>
        <source>关闭时用 12 小时制，并在末尾加 AM 或 PM</source>
        <translation>When off: 12 hours, with AM or PM at the end</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>文件名中包含前缀和编号</source>
        <translation>The file name has a prefix and a number</translation>
    </message>
    <message>
        <source>前缀:</source>
        <translation>Prefix:</translation>
    </message>
    <message>
        <source>文件名开头的文字，不能含有“/”</source>
        <translation>The beginning of the file name; no &quot;/&quot;</translation>
    </message>
    <message>
        <source>起始:</source>
        <translation>First number:</translation>
    </message>
    <message>
        <source>下一个文件的编号，每保存一个文件加一</source>
        <translation>The number of the next file, one more after each</translation>
    </message>
    <message>
        <source>位数:</source>
        <translation>Digits:</translation>
    </message>
    <message>
        <source>不补零</source>
        <translation>No zeros</translation>
    </message>
    <message>
        <source>编号不足这个位数时前面补零</source>
        <translation>Shorter numbers get zeros in front</translation>
    </message>
    <message>
        <source>覆盖相同名称的文件</source>
        <translation>Overwrite files of the same name</translation>
    </message>
    <message>
        <source>关闭时，同名文件保留，新文件名后加 -1、-2……</source>
        <translation>When off, a file that exists is kept and the new one&apos;s name gets -1, -2, ...</translation>
    </message>
    <message>
        <source>跳出提示对话框以确认文件的前缀名</source>
        <translation>Ask for the file name&apos;s prefix in a dialog</translation>
    </message>
    <message>
        <source>每次扫描之前先询问前缀</source>
        <translation>The prefix is asked for before each scan</translation>
    </message>
    <message>
        <source>每次扫描后显示确认文件前置文件名对话框</source>
        <translation>Ask to confirm the prefix after each scan</translation>
    </message>
    <message>
        <source>扫描之后询问前缀，并按它给刚保存的文件改名</source>
        <translation>The prefix is asked for after the scan, and the files just saved are renamed by it</translation>
    </message>
    <message>
        <source>扫描完成后开启程序</source>
        <translation>Start a program when the scan is finished</translation>
    </message>
    <message>
        <source>一批全部保存后，用所选程序打开最后一个文件</source>
        <translation>When all files of a batch are saved, the chosen program opens the last one</translation>
    </message>
    <message>
        <source>程序(&amp;G):</source>
        <translation>Pro&amp;gram:</translation>
    </message>
    <message>
        <source>扫描完成后开启的程序</source>
        <translation>Program to start when the scan is finished</translation>
    </message>
    <message>
        <source>添加(&amp;N)...</source>
        <translation>Add (&amp;N)...</translation>
    </message>
    <message>
        <source>在列表中登记一个新程序</source>
        <translation>Enter a new program into the list</translation>
    </message>
    <message>
        <source>从列表中删除所选的程序</source>
        <translation>Remove the chosen program from the list</translation>
    </message>
    <message>
        <source>下一个文件名:</source>
        <translation>Next file name:</translation>
    </message>
    <message>
        <source>系统默认程序</source>
        <translation>System default program</translation>
    </message>
    <message>
        <source>这一项不能删除。</source>
        <translation>This entry cannot be deleted.</translation>
    </message>
    <message>
        <source>删除(&amp;X)</source>
        <translation>Delete (&amp;X)</translation>
    </message>
</context>
<context>
    <name>filepanel</name>
    <message>
        <source>扫描并保存图像到您的存贮装置。</source>
        <translation>Scans images and saves them to your storage device.</translation>
    </message>
    <message>
        <source>扫描的图像保存到下面的文件夹，可以是U盘等存储装置上的文件夹。</source>
        <translation>Scanned images are saved to the folder below, which may be on a USB drive or another storage device.</translation>
    </message>
</context>
<context>
    <name>ftppanel</name>
    <message>
        <source>扫描文件并上传至FTP服务器。</source>
        <translation>Scans documents to be uploaded to an FTP server.</translation>
    </message>
    <message>
        <source>扫描的图像保存到下面的文件夹。要上传时，把文件从列表拖到您的FTP软件中。</source>
        <translation>Scanned images are saved to the folder below. To upload them, drag files from the list into your FTP software.</translation>
    </message>
</context>
<context>
    <name>imgmendpanel</name>
    <message>
        <source> 毫米</source>
        <translation> mm</translation>
    </message>
    <message>
        <source>影像补边设定</source>
        <translation>Border Settings</translation>
    </message>
    <message>
        <source>勾选“影像补边”后，页面四周涂成一种颜色，用来盖住扫描时留下的黑边和阴影。</source>
        <translation>With &quot;Border fill&quot; the page is painted in one color along its edges, to cover black borders and shadows of the scan.</translation>
    </message>
    <message>
        <source>涂在页面以内(&amp;I)</source>
        <translation>Paint &amp;inside the page</translation>
    </message>
    <message>
        <source>加在页面以外(&amp;X)</source>
        <translation>Add outside the page (&amp;X)</translation>
    </message>
    <message>
        <source>左右宽度与上下不同(&amp;S)</source>
        <translation>&amp;Sides differ from top and bottom</translation>
    </message>
    <message>
        <source>页面大小不变，靠边的内容会被盖住</source>
        <translation>The page keeps its size; what lies at its edge is covered</translation>
    </message>
    <message>
        <source>页面变大，内容全部保留</source>
        <translation>The page grows; all of it is kept</translation>
    </message>
    <message>
        <source>上下宽度(&amp;U):</source>
        <translation>Top and bottom (&amp;U):</translation>
    </message>
    <message>
        <source>上边和下边各补这么宽</source>
        <translation>Width of the border at the top and at the bottom</translation>
    </message>
    <message>
        <source>不勾选时，左右和上下一样宽</source>
        <translation>When off, the sides are as wide as top and bottom</translation>
    </message>
    <message>
        <source>左右宽度(&amp;L):</source>
        <translation>&amp;Left and right:</translation>
    </message>
    <message>
        <source>左边和右边各补这么宽</source>
        <translation>Width of the border at the left and at the right</translation>
    </message>
    <message>
        <source>颜色(&amp;K):</source>
        <translation>Color (&amp;K):</translation>
    </message>
    <message>
        <source>点击后选择补边的颜色</source>
        <translation>Click to choose the color of the border</translation>
    </message>
    <message>
        <source>补边颜色</source>
        <translation>Border color</translation>
    </message>
    <message>
        <source>白色</source>
        <translation>White</translation>
    </message>
    <message>
        <source>黑色</source>
        <translation>Black</translation>
    </message>
    <message>
        <source>补边颜色：%1</source>
        <translation>Border color: %1</translation>
    </message>
</context>
<context>
    <name>ocrpanel</name>
    <message>
        <source>扫描文字稿件并识别为可编辑的文字或Word文档。</source>
        <translation>Scans text documents and recognizes them as text that can be edited, or as Word documents.</translation>
    </message>
    <message>
        <source>页面拆分</source>
        <translation>Split pages</translation>
    </message>
    <message>
        <source>页面拆分：每页裁成几幅图像</source>
        <translation>Split pages: each page is cut into several images</translation>
    </message>
    <message>
        <source>每页裁成几幅为“整体设定”中的拆分数</source>
        <translation>The number of images is the split count in &quot;General Settings&quot;</translation>
    </message>
    <message>
        <source>文档类型</source>
        <translation>Document type</translation>
    </message>
    <message>
        <source>纯文本(*. txt)</source>
        <translation>Plain text (*. txt)</translation>
    </message>
    <message>
        <source>Word 工作薄(* .doc)</source>
        <translation>Word document (* .doc)</translation>
    </message>
    <message>
        <source>扫描类型:</source>
        <translation>Scan type:</translation>
    </message>
    <message>
        <source>文档类型:</source>
        <translation>Document type:</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>正在处理第%1张图像</source>
        <translation>Processing image %1</translation>
    </message>
    <message>
        <source>文档的文字</source>
        <translation>Text of the document</translation>
    </message>
    <message>
        <source>识别出的文字保存为纯文本，还是保存为版面与原件相近的 Word 文档</source>
        <translation>Whether the recognized text is saved as plain text or as a Word document laid out like the original</translation>
    </message>
</context>
<context>
    <name>pdfReader</name>
    <message>
        <source>显示 PDF 文件。</source>
        <translation>Shows PDF files.</translation>
    </message>
    <message>
        <source>显示这个说明。</source>
        <translation>Shows this help.</translation>
    </message>
    <message>
        <source>要打开的 PDF 文件；没有时打开空窗口。</source>
        <translation>The PDF file to open; without one the window is empty.</translation>
    </message>
    <message>
        <source>只能打开一个文件</source>
        <translation>Only one file can be opened</translation>
    </message>
    <message>
        <source>用 pdfReader --help 查看用法</source>
        <translation>See pdfReader --help</translation>
    </message>
    <message>
        <source>[文件]</source>
        <translation>[file]</translation>
    </message>
</context>
<context>
    <name>pdfpanel</name>
    <message>
        <source>扫描文字稿件并将影像转换成ofd文件或pdf文件。</source>
        <translation>Scans text documents and turns the images into OFD or PDF files.</translation>
    </message>
    <message>
        <source>文件拆分</source>
        <translation>Split files</translation>
    </message>
    <message>
        <source>文件拆分：每个文件固定的页数</source>
        <translation>Split files: a fixed number of pages for each file</translation>
    </message>
    <message>
        <source>每个文件的页数为“整体设定”中的拆分数</source>
        <translation>The number of pages is the split count in &quot;General Settings&quot;</translation>
    </message>
    <message>
        <source>可搜索PDF</source>
        <translation>Searchable PDF</translation>
    </message>
    <message>
        <source>可搜索OFD</source>
        <translation>Searchable OFD</translation>
    </message>
    <message>
        <source>仅含文字，不含页面图像</source>
        <translation>Only text, without the page image</translation>
    </message>
    <message>
        <source>正在处理第%1张图像</source>
        <translation>Processing image %1</translation>
    </message>
    <message>
        <source>正在生成版式文件数据</source>
        <translation>Making the layout data of the document</translation>
    </message>
    <message>
        <source>页面 %1 无法读取</source>
        <translation>Page %1 cannot be read</translation>
    </message>
    <message>
        <source>磁盘空间不足</source>
        <translation>the disk is full</translation>
    </message>
    <message>
        <source>无法写入文件夹 %1</source>
        <translation>Cannot write to the folder %1</translation>
    </message>
</context>
<context>
    <name>progress</name>
    <message>
        <source>正在准备扫描</source>
        <translation>Preparing to scan</translation>
    </message>
    <message>
        <source>取消扫描</source>
        <translation>Cancel Scan</translation>
    </message>
</context>
<context>
    <name>questionbox</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>是(&amp;Y)</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>否(&amp;N)</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>确定(&amp;O)</source>
        <translation>&amp;OK</translation>
    </message>
</context>
<context>
    <name>reader::Document</name>
    <message>
        <source>文件不存在。</source>
        <translation>The file does not exist.</translation>
    </message>
    <message>
        <source>这是一个文件夹，不是文件。</source>
        <translation>This is a folder, not a file.</translation>
    </message>
    <message>
        <source>这不是普通文件。</source>
        <translation>This is no regular file.</translation>
    </message>
    <message>
        <source>文件是空的（0 字节）。</source>
        <translation>The file is empty (0 bytes).</translation>
    </message>
    <message>
        <source>文件无法读取：%1</source>
        <translation>The file cannot be read: %1</translation>
    </message>
    <message>
        <source>没有读取这个文件的权限。</source>
        <translation>You have no right to read this file.</translation>
    </message>
    <message>
        <source>这不是 PDF 文件。</source>
        <translation>This is no PDF file.</translation>
    </message>
    <message>
        <source>文件的加密方式不受支持。</source>
        <translation>The file&apos;s encryption is not supported.</translation>
    </message>
    <message>
        <source>文件已损坏，无法读取。</source>
        <translation>The file is damaged and cannot be read.</translation>
    </message>
    <message>
        <source>文件已损坏：其中没有可以显示的页面。</source>
        <translation>The file is damaged: it has no page that can be shown.</translation>
    </message>
    <message>
        <source>第 %1 页已损坏，无法显示。</source>
        <translation>Page %1 is damaged and cannot be shown.</translation>
    </message>
    <message>
        <source>第 %1 页无法显示。</source>
        <translation>Page %1 cannot be shown.</translation>
    </message>
    <message>
        <source>第 %1 页有损坏，可能显示不完整。</source>
        <translation>Page %1 is damaged and may be incomplete.</translation>
    </message>
</context>
<context>
    <name>reader::NoticeBar</name>
    <message>
        <source>忽略</source>
        <translation>Dismiss</translation>
    </message>
    <message>
        <source>通知</source>
        <translation>Notice</translation>
    </message>
</context>
<context>
    <name>reader::OutlinePane</name>
    <message>
        <source>目录</source>
        <translation>Contents</translation>
    </message>
</context>
<context>
    <name>reader::PageView</name>
    <message>
        <source>页面</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>第 %1 页，共 %2 页</source>
        <translation>Page %1 of %2</translation>
    </message>
</context>
<context>
    <name>reader::PasswordDialog</name>
    <message>
        <source>需要密码</source>
        <translation>Password Needed</translation>
    </message>
    <message>
        <source>文件“%1”已加密。</source>
        <translation>The file &quot;%1&quot; is encrypted.</translation>
    </message>
    <message>
        <source>密码(&amp;P)：</source>
        <translation>&amp;Password:</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>密码不正确，还可以再试 %1 次。</source>
        <translation>The password is wrong; %1 more attempt(s).</translation>
    </message>
</context>
<context>
    <name>reader::PrintRun</name>
    <message>
        <source>打印机不接受任务。</source>
        <translation>The printer does not accept the job.</translation>
    </message>
    <message>
        <source>文件 %1 无法写入。</source>
        <translation>The file %1 cannot be written.</translation>
    </message>
    <message>
        <source>打印机报告了错误。</source>
        <translation>The printer reported an error.</translation>
    </message>
    <message>
        <source>文件 %1 无法写完整。</source>
        <translation>The file %1 cannot be written completely.</translation>
    </message>
    <message>
        <source>第 %1 页已损坏，打印已停止。</source>
        <translation>Page %1 is damaged; printing has stopped.</translation>
    </message>
</context>
<context>
    <name>reader::ReaderActions</name>
    <message>
        <source>打开(&amp;O)…</source>
        <translation>&amp;Open...</translation>
    </message>
    <message>
        <source>重新载入(&amp;R)</source>
        <translation>&amp;Reload</translation>
    </message>
    <message>
        <source>打印(&amp;P)…</source>
        <translation>&amp;Print...</translation>
    </message>
    <message>
        <source>关闭(&amp;C)</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>复制(&amp;C)</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>全选本页(&amp;A)</source>
        <translation>Select &amp;All on Page</translation>
    </message>
    <message>
        <source>查找(&amp;F)…</source>
        <translation>&amp;Find...</translation>
    </message>
    <message>
        <source>下一处(&amp;N)</source>
        <translation>Find &amp;Next</translation>
    </message>
    <message>
        <source>上一处(&amp;V)</source>
        <translation>Find Pre&amp;vious</translation>
    </message>
    <message>
        <source>放大(&amp;I)</source>
        <translation>Zoom &amp;In</translation>
    </message>
    <message>
        <source>缩小(&amp;U)</source>
        <translation>Zoom O&amp;ut</translation>
    </message>
    <message>
        <source>实际大小(&amp;1)</source>
        <translation>Actual Size (&amp;1)</translation>
    </message>
    <message>
        <source>适合宽度(&amp;W)</source>
        <translation>Fit &amp;Width</translation>
    </message>
    <message>
        <source>适合页面(&amp;G)</source>
        <translation>Fit Pa&amp;ge</translation>
    </message>
    <message>
        <source>侧栏(&amp;S)</source>
        <translation>&amp;Side Pane</translation>
    </message>
    <message>
        <source>全屏(&amp;L)</source>
        <translation>Fu&amp;ll Screen</translation>
    </message>
    <message>
        <source>首页(&amp;H)</source>
        <translation>First Page (&amp;H)</translation>
    </message>
    <message>
        <source>上一页(&amp;B)</source>
        <translation>Previous Page (&amp;B)</translation>
    </message>
    <message>
        <source>下一页(&amp;D)</source>
        <translation>Next Page (&amp;D)</translation>
    </message>
    <message>
        <source>末页(&amp;E)</source>
        <translation>Last Pag&amp;e</translation>
    </message>
    <message>
        <source>转到页(&amp;T)…</source>
        <translation>Go &amp;to Page...</translation>
    </message>
    <message>
        <source>文件(&amp;F)</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>编辑(&amp;E)</source>
        <translation>&amp;Edit</translation>
    </message>
    <message>
        <source>视图(&amp;V)</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>转到(&amp;G)</source>
        <translation>&amp;Go</translation>
    </message>
    <message>
        <source>工具栏</source>
        <translation>Tool bar</translation>
    </message>
    <message>
        <source>页码</source>
        <translation>Page number</translation>
    </message>
    <message>
        <source>缩放</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source> / %1 页 </source>
        <translation> / %1 </translation>
    </message>
</context>
<context>
    <name>reader::ReaderWindow</name>
    <message>
        <source>PDF 阅读器</source>
        <translation>PDF Reader</translation>
    </message>
    <message>
        <source>没有打开文件</source>
        <translation>No file is open</translation>
    </message>
    <message>
        <source>按 Ctrl+O 打开 PDF 文件，或把文件拖到这里。</source>
        <translation>Press Ctrl+O to open a PDF file, or drop one here.</translation>
    </message>
    <message>
        <source>缩略图</source>
        <translation>Thumbnails</translation>
    </message>
    <message>
        <source>文件已被移走或删除；窗口中仍是原来的内容。</source>
        <translation>The file was moved or deleted; the window still shows what was in it.</translation>
    </message>
    <message>
        <source>不打开这个地址：%1</source>
        <translation>This address is not opened: %1</translation>
    </message>
    <message>
        <source>打开 PDF 文件</source>
        <translation>Open PDF File</translation>
    </message>
    <message>
        <source>PDF 文件 (*.pdf *.PDF);;所有文件 (*)</source>
        <translation>PDF files (*.pdf *.PDF);;All files (*)</translation>
    </message>
    <message>
        <source>正在打开…</source>
        <translation>Opening...</translation>
    </message>
    <message>
        <source>%1 - PDF 阅读器</source>
        <translation>%1 - PDF Reader</translation>
    </message>
    <message>
        <source>目录</source>
        <translation>Contents</translation>
    </message>
    <message>
        <source>文件有损坏，已尽量修复；内容可能不完整。</source>
        <translation>The file is damaged and was repaired as far as possible; it may be incomplete.</translation>
    </message>
    <message>
        <source>文件已加密，没有输入密码。</source>
        <translation>The file is encrypted and no password was given.</translation>
    </message>
    <message>
        <source>三次密码都不正确。</source>
        <translation>All three passwords were wrong.</translation>
    </message>
    <message>
        <source>无法打开文件“%1”</source>
        <translation>Cannot open the file &quot;%1&quot;</translation>
    </message>
    <message>
        <source>文件已被更改。</source>
        <translation>The file has changed.</translation>
    </message>
    <message>
        <source>重新载入</source>
        <translation>Reload</translation>
    </message>
    <message>
        <source>缩放到纸张大小(&amp;Z)</source>
        <translation>Fit to paper si&amp;ze</translation>
    </message>
    <message>
        <source>页面</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>正在打印…</source>
        <translation>Printing...</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>打印</source>
        <translation>Print</translation>
    </message>
    <message>
        <source>正在打印第 %1 页，共 %2 页</source>
        <translation>Printing page %1 of %2</translation>
    </message>
</context>
<context>
    <name>reader::SearchBar</name>
    <message>
        <source>上一个</source>
        <translation>Previous</translation>
    </message>
    <message>
        <source>上一处（Shift+F3）</source>
        <translation>Previous match (Shift+F3)</translation>
    </message>
    <message>
        <source>下一个</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>下一处（F3）</source>
        <translation>Next match (F3)</translation>
    </message>
    <message>
        <source>查找(&amp;N)：</source>
        <translation>Fi&amp;nd:</translation>
    </message>
    <message>
        <source>要查找的文字</source>
        <translation>Text to find</translation>
    </message>
    <message>
        <source>查找结果</source>
        <translation>Result of the search</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>关闭查找栏（Esc）</source>
        <translation>Close the search bar (Esc)</translation>
    </message>
    <message>
        <source>第 %1 处，共 %2 处</source>
        <translation>%1 of %2</translation>
    </message>
    <message>
        <source>正在查找</source>
        <translation>Searching</translation>
    </message>
    <message>
        <source>（%1 / %2 页）</source>
        <translation>(page %1 of %2)</translation>
    </message>
    <message>
        <source>没有找到</source>
        <translation>Not found</translation>
    </message>
    <message>
        <source>（太多，已停止）</source>
        <translation>(too many, stopped)</translation>
    </message>
</context>
<context>
    <name>reader::ThumbnailModel</name>
    <message>
        <source>第 %1 页</source>
        <translation>Page %1</translation>
    </message>
</context>
<context>
    <name>reader::ThumbnailPane</name>
    <message>
        <source>缩略图</source>
        <translation>Thumbnails</translation>
    </message>
</context>
<context>
    <name>saveSet</name>
    <message>
        <source>保存设置</source>
        <translation>Save Settings</translation>
    </message>
    <message>
        <source>决定扫描的文件保存在哪里、叫什么名字。</source>
        <translation>Where scanned files are saved, and what they are called.</translation>
    </message>
    <message>
        <source>保存位置</source>
        <translation>Save to</translation>
    </message>
    <message>
        <source>文件夹(&amp;F):</source>
        <translation>&amp;Folder:</translation>
    </message>
    <message>
        <source>扫描的文件保存在这个文件夹中</source>
        <translation>Scanned files are saved in this folder</translation>
    </message>
    <message>
        <source>浏览(&amp;B)...</source>
        <translation>&amp;Browse...</translation>
    </message>
    <message>
        <source>选择保存文件夹</source>
        <translation>Choose Save Folder</translation>
    </message>
    <message>
        <source>使用默认的保存文件夹</source>
        <translation>Use the default save folder</translation>
    </message>
    <message>
        <source>文件名</source>
        <translation>File name</translation>
    </message>
    <message>
        <source>命名方式(&amp;M):</source>
        <translation>Na&amp;ming:</translation>
    </message>
    <message>
        <source>文件名由哪些部分组成；固定名称即“image”，重名时加 -1、-2……</source>
        <translation>What file names are made of; the fixed name is &quot;image&quot;, with -1, -2, ... when it exists</translation>
    </message>
    <message>
        <source>固定名称</source>
        <translation>Fixed name</translation>
    </message>
    <message>
        <source>前缀和编号</source>
        <translation>Prefix and number</translation>
    </message>
    <message>
        <source>日期和时间</source>
        <translation>Date and time</translation>
    </message>
    <message>
        <source>日期和时间、前缀和编号</source>
        <translation>Date and time, prefix and number</translation>
    </message>
    <message>
        <source>前缀(&amp;P):</source>
        <translation>&amp;Prefix:</translation>
    </message>
    <message>
        <source>文件名开头的文字，不能含有“/”</source>
        <translation>The beginning of the file name; no &quot;/&quot;</translation>
    </message>
    <message>
        <source>起始(&amp;S):</source>
        <translation>First number (&amp;S):</translation>
    </message>
    <message>
        <source>下一个文件的编号，每保存一个文件加一</source>
        <translation>The number of the next file, one more after each</translation>
    </message>
    <message>
        <source>位数(&amp;L):</source>
        <translation>Digits (&amp;L):</translation>
    </message>
    <message>
        <source>不补零</source>
        <translation>No zeros</translation>
    </message>
    <message>
        <source>编号不足这个位数时前面补零</source>
        <translation>Shorter numbers get zeros in front</translation>
    </message>
    <message>
        <source>覆盖相同名称的文件</source>
        <translation>Overwrite files of the same name</translation>
    </message>
    <message>
        <source>关闭时，同名文件保留，新文件名后加 -1、-2……</source>
        <translation>When off, a file that exists is kept and the new one&apos;s name gets -1, -2, ...</translation>
    </message>
    <message>
        <source>下一个文件名:</source>
        <translation>Next file name:</translation>
    </message>
    <message>
        <source>文件名设置(&amp;N)...</source>
        <translation>File &amp;Names...</translation>
    </message>
    <message>
        <source>日期格式、确认前缀等全部命名设置</source>
        <translation>Date format, confirming the prefix and all other naming settings</translation>
    </message>
    <message>
        <source>扫描的文件将保存在这里。</source>
        <translation>Scanned files will be saved here.</translation>
    </message>
    <message>
        <source>⚠ 请输入以“/”开头的完整路径。</source>
        <translation>⚠ Enter a full path that begins with &quot;/&quot;.</translation>
    </message>
    <message>
        <source>此文件夹尚不存在，确定后将会新建。</source>
        <translation>This folder does not exist yet; it is made when you click OK.</translation>
    </message>
    <message>
        <source>⚠ 这是一个文件，不是文件夹。</source>
        <translation>⚠ This is a file, not a folder.</translation>
    </message>
    <message>
        <source>⚠ 没有写入此文件夹的权限。</source>
        <translation>⚠ You have no right to write to this folder.</translation>
    </message>
    <message>
        <source>文件夹名中不能有控制字符。</source>
        <translation>A folder name must not contain control characters.</translation>
    </message>
    <message>
        <source>请选择一个文件夹。</source>
        <translation>Choose a folder.</translation>
    </message>
    <message>
        <source>%1。再次点“确定”仍使用它。</source>
        <translation>%1. Click &quot;OK&quot; again to use it all the same.</translation>
    </message>
    <message>
        <source>默认(&amp;E)</source>
        <translation>D&amp;efault</translation>
    </message>
</context>
<context>
    <name>state::Texts</name>
    <message>
        <source>请将手指放入指纹模块</source>
        <translation>Put a finger on the fingerprint module</translation>
    </message>
    <message>
        <source>指纹验证成功！</source>
        <translation>Fingerprint accepted!</translation>
    </message>
    <message>
        <source>指纹验证失败！</source>
        <translation>Fingerprint rejected!</translation>
    </message>
    <message>
        <source>内存清除中……</source>
        <translation>Clearing the memory...</translation>
    </message>
    <message>
        <source>指纹库为空，请录入指纹，此次扫描取消！</source>
        <translation>No fingerprints are enrolled. Enroll one; this scan is canceled!</translation>
    </message>
    <message>
        <source>扫描仪通信错误，请重启应用和扫描仪！</source>
        <translation>Scanner communication error. Restart the application and the scanner!</translation>
    </message>
    <message>
        <source>ADF进纸器无纸,请将稿件放入ADF进纸器！

如果取消扫描，请按机器上“清除”键取消扫描！</source>
        <translation>The feeder (ADF) is empty. Put the documents into it!

To cancel the scan, press the &quot;Clear&quot; key on the scanner!</translation>
    </message>
    <message>
        <source>进纸失败或纸张超长！

请检查纸张状态后重试</source>
        <translation>Feed failure, or the paper is too long!

Check the paper and try again</translation>
    </message>
    <message>
        <source>扫描仪忙，请关闭其他扫描软件，然后重试！</source>
        <translation>The scanner is busy. Close other scanning software and try again!</translation>
    </message>
    <message>
        <source>正在扫描第%1张图像</source>
        <translation>Scanning image %1</translation>
    </message>
    <message>
        <source>正在上传第%1张图像</source>
        <translation>Uploading image %1</translation>
    </message>
</context>
<context>
    <name>stateInfoPanel</name>
    <message>
        <source>扫描状态</source>
        <translation>Scan Status</translation>
    </message>
    <message>
        <source>扫描进度</source>
        <translation>Scan progress</translation>
    </message>
    <message>
        <source>继续</source>
        <translation>Continue</translation>
    </message>
    <message>
        <source>完成</source>
        <translation>Finish</translation>
    </message>
    <message>
        <source>取消扫描</source>
        <translation>Cancel Scan</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>扫描同一批次的下一页</source>
        <translation>Scan the next page of this batch</translation>
    </message>
    <message>
        <source>结束本批次扫描</source>
        <translation>End this batch</translation>
    </message>
    <message>
        <source>停止正在进行的扫描</source>
        <translation>Stop the scan that is running</translation>
    </message>
    <message>
        <source>继续扫描下一页？</source>
        <translation>Scan another page?</translation>
    </message>
    <message>
        <source>正在取消扫描，请稍候……</source>
        <translation>Canceling the scan, please wait...</translation>
    </message>
</context>
<context>
    <name>wholesetpanel</name>
    <message>
        <source>整体设定</source>
        <translation>General Settings</translation>
    </message>
    <message>
        <source>这里的设置对所有扫描功能都有效。</source>
        <translation>These settings count for all scan functions.</translation>
    </message>
    <message>
        <source>页面处理(&amp;G)</source>
        <translation>Pa&amp;ges</translation>
    </message>
    <message>
        <source>页面效果</source>
        <translation>Page Effects</translation>
    </message>
    <message>
        <source>删除背景强度(&amp;U):</source>
        <translation>Backgro&amp;und removal:</translation>
    </message>
    <message>
        <source>勾选“删除背景”后，纸张底色变白；数值越大去得越干净，0 表示不处理。</source>
        <translation>With &quot;Remove background&quot; paper becomes white; higher is cleaner, 0 does nothing.</translation>
    </message>
    <message>
        <source>字符增强强度(&amp;E):</source>
        <translation>Text &amp;enhancement:</translation>
    </message>
    <message>
        <source>勾选“字符增强”后，笔画更黑更清楚；数值越大越明显，0 表示不处理。</source>
        <translation>With &quot;Enhance text&quot; strokes become blacker and clearer; higher is stronger, 0 does nothing.</translation>
    </message>
    <message>
        <source>空白页灵敏度(&amp;K):</source>
        <translation>Blan&amp;k page level:</translation>
    </message>
    <message>
        <source>勾选“删除空白页”后，数值越大，内容很少的页面越容易当作空白页删除。</source>
        <translation>With &quot;Delete blank pages&quot;, the higher this is, the sooner a page with little on it counts as blank and is deleted.</translation>
    </message>
    <message>
        <source>拆分与双面</source>
        <translation>Splitting and Duplex</translation>
    </message>
    <message>
        <source>拆分数量(&amp;N):</source>
        <translation>Split cou&amp;nt:</translation>
    </message>
    <message>
        <source>拆分页面时，一页切成这么多份；拆分 PDF、OFD 文档时，每个文档这么多页。</source>
        <translation>A page that is split is cut into this many; PDF and OFD documents that are split get this many pages each.</translation>
    </message>
    <message>
        <source>双面翻页方式(&amp;L):</source>
        <translation>F&amp;lip two-sided on:</translation>
    </message>
    <message>
        <source>长边翻页（反面不旋转）</source>
        <translation>Long edge (back not turned)</translation>
    </message>
    <message>
        <source>短边翻页（反面旋转 180 度）</source>
        <translation>Short edge (back turned 180°)</translation>
    </message>
    <message>
        <source>只用于 PDF 和 OCR：短边翻页的稿件，反面旋转 180 度后与正面方向一致。</source>
        <translation>Only for PDF and OCR: with originals flipped on the short edge, the back is turned 180° to match the front.</translation>
    </message>
    <message>
        <source>另存的图像</source>
        <translation>Additional Images</translation>
    </message>
    <message>
        <source>100 dpi</source>
        <translation>100 dpi</translation>
    </message>
    <message>
        <source>200 dpi</source>
        <translation>200 dpi</translation>
    </message>
    <message>
        <source>300 dpi</source>
        <translation>300 dpi</translation>
    </message>
    <message>
        <source>600 dpi</source>
        <translation>600 dpi</translation>
    </message>
    <message>
        <source>黑白图像分辨率(&amp;B):</source>
        <translation>&amp;B/W resolution:</translation>
    </message>
    <message>
        <source>0（关）</source>
        <translation>0 (off)</translation>
    </message>
    <message>
        <source>设备维护(&amp;M)</source>
        <translation>&amp;Maintenance</translation>
    </message>
    <message>
        <source>文件模板和扫描按键模板都使用这里的设置；现在使用的是文件模板。</source>
        <translation>File templates and scan-key templates both use these settings; a file template is in use now.</translation>
    </message>
    <message>
        <source>文件模板和扫描按键模板都使用这里的设置；现在使用的是扫描按键模板。</source>
        <translation>File templates and scan-key templates both use these settings; a scan-key template is in use now.</translation>
    </message>
    <message>
        <source>拆分页面时，一页切成这么多份</source>
        <translation>A page that is split is cut into this many</translation>
    </message>
    <message>
        <source>拆分 PDF、OFD 文档时，每个文档这么多页</source>
        <translation>PDF and OFD documents that are split get this many pages each</translation>
    </message>
    <message>
        <source>%1；%2。</source>
        <translation>%1; %2.</translation>
    </message>
    <message>
        <source>处理后（字符增强 %1）</source>
        <translation>After (text enhanced, %1)</translation>
    </message>
    <message>
        <source>处理后（删除背景 %1）</source>
        <translation>After (background removed, %1)</translation>
    </message>
    <message>
        <source>按此灵敏度，这一页会被当作空白页删除。</source>
        <translation>At this level, this page would be deleted as blank.</translation>
    </message>
    <message>
        <source>按此灵敏度，这一页会保留。</source>
        <translation>At this level, this page stays.</translation>
    </message>
    <message>
        <source>整页（空白页灵敏度 %1）</source>
        <translation>Whole page (blank page level %1)</translation>
    </message>
    <message>
        <source>程序(&amp;Z)</source>
        <translation>Program (&amp;Z)</translation>
    </message>
    <message>
        <source>登录后自动启动(&amp;Y)</source>
        <translation>Start automatically after login (&amp;Y)</translation>
    </message>
    <message>
        <source>登录桌面后启动本程序，扫描仪上的扫描键随时可用。只对当前用户有效。</source>
        <translation>The program starts when you log in to the desktop, so that the scan key on the scanner is ready at any time. Only for the current user.</translation>
    </message>
    <message>
        <source>无法写入 %1，请检查磁盘空间和权限。</source>
        <translation>Cannot write %1; check disk space and rights.</translation>
    </message>
    <message>
        <source>勾选“输出多张图像”后，彩色扫描另存灰阶和黑白各一份，灰阶扫描另存黑白一份。</source>
        <translation>With &quot;Multiple images&quot; a color scan also gives a gray and a black-and-white copy, a gray scan a black-and-white one.</translation>
    </message>
    <message>
        <source>灰阶图像分辨率(&amp;H):</source>
        <translation>Gray resolution (&amp;H):</translation>
    </message>
    <message>
        <source>另存的灰阶图像的分辨率</source>
        <translation>Resolution of additional gray images</translation>
    </message>
    <message>
        <source>另存的黑白图像的分辨率</source>
        <translation>Resolution of additional black-and-white images</translation>
    </message>
</context>
</TS>
