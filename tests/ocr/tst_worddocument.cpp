// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/base64.h"
#include "ocr/worddocument.h"

#include <QtTest>
#include <numeric>
#include <opencv2/imgcodecs.hpp>

namespace {

// name(attribute=value ...)[children or "text"], attributes in order of their names.
QString outline(const QDomElement& element)
{
    QStringList attributes, children;
    const QDomNamedNodeMap map = element.attributes();
    for (int i = 0; i < map.count(); ++i)
        attributes << map.item(i).nodeName() + '=' + map.item(i).nodeValue();
    attributes.sort();
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling())
        children << (child.isText() ? '"' + child.nodeValue() + '"' : outline(child.toElement()));
    QString text = element.nodeName();
    if (!attributes.isEmpty())
        text += '(' + attributes.join(' ') + QLatin1Char(')');
    if (!children.isEmpty())
        text += '[' + children.join(' ') + ']';
    return text;
}

zarnTXTLINERET record(const QRect& place, const QString& text, int lines = 1)
{
    zarnTXTLINERET made;
    made.x = place.x();
    made.y = place.y();
    made.width = place.width();
    made.height = place.height();
    made.confidence = 90;
    made.lines = lines;
    made.lineHeight = place.height() / lines;
    made.text = text;
    return made;
}

const cv::Mat kFrame(3508, 2480, CV_8UC3, cv::Scalar(10, 120, 240));

QString outlineOf(const zarnTXTLINERET& line)
{
    WordDocument document{OcrJob()};
    return outline(document.pageParagraphs({{7, line}}, kFrame).value(7));
}

} // namespace

class TestWordDocument : public QObject
{
    Q_OBJECT

private slots:
    void oneLineBox()
    {
        QCOMPARE(outlineOf(record({100, 204, 1003, 50}, QString("今天。"))),
                 QString("w:p[w:r[w:pict[v:shape(stroked=f "
                         "style=position:absolute;margin-left:25;margin-top:51;width:401;height:25;z-index:1)"
                         "[v:textbox(inset=0,0,0,0)[w:txbxContent[w:p[w:r[w:rPr[w:sz(w:val=20)] "
                         "w:t[\"今天。\"]]]]]]]]]"));
    }

    void paragraphBox()
    {
        // Three lines of 50 with a pitch of 65: 180 high, so 24 half-points and 4 * 130 / 2 * 1.2 twips.
        zarnTXTLINERET lines = record({100, 200, 1000, 180}, QString("甲 乙ZARNFAXZARN丙\tZARNFAXZARN丁"), 3);
        lines.lineHeight = 50;
        const QString line = QString(
            "w:p[w:pPr[w:spacing(w:line-rule=exact w:line=312)] w:r[w:rPr[w:sz(w:val=24)] w:t[\"%1\"]]]");
        QCOMPARE(outlineOf(lines),
                 QString("w:p[w:r[w:pict[v:shape(stroked=f "
                         "style=position:absolute;left:25;top:50;width:400;height:90;z-index:1)"
                         "[v:textbox(inset=0,0,0,0)[w:txbxContent[") +
                     line.arg(QString("甲乙")) + ' ' + line.arg(QString("丙")) + ' ' +
                     line.arg(QString("丁")) + QString("]]]]]]"));
    }

    void doubtfulBoxBecomesItsPicture()
    {
        const QString text = outlineOf(record({400, 800, 200, 100}, doubtfulMarker()));
        const QRegularExpression expected(QString(
            "^w:p\\[w:r\\[w:pict\\[w:binData\\(w:name=(wordml://[0-9a-f-]{36}\\.jpg) xml:space=preserve\\)"
            "\\[\"([A-Za-z0-9+/=]+)\"\\] v:shape\\(stroked=f "
            "style=position:absolute;left:100;top:200;width:80;height:50;z-index:1\\)"
            "\\[v:imagedata\\(src=\\1\\)\\]\\]\\]\\]$"));
        const QRegularExpressionMatch match = expected.match(text);
        QVERIFY2(match.hasMatch(), qPrintable(text));
        const QByteArray bytes = QByteArray::fromBase64(match.captured(2).toLatin1());
        const cv::Mat picture =
            cv::imdecode(std::vector<uchar>(bytes.begin(), bytes.end()), cv::IMREAD_COLOR);
        QVERIFY(picture.size() == cv::Size(200, 100));
        QVERIFY(cv::norm(picture.at<cv::Vec3b>(50, 100), cv::Vec3b(10, 120, 240), cv::NORM_INF) < 6);
    }

    void wholeDocumentOfThreePages()
    {
        WordDocument document{OcrJob()};
        const QMap<int, zarnTXTLINERET> empty, full{{0, record({0, 0, 90, 50}, QString("甲"))}};
        for (int page = 0; page < 3; ++page)
            document.addPage(document.pageParagraphs(page == 1 ? empty : full, kFrame), page < 2);
        document.finishBody();
        QDomDocument& dom = document.document();
        QCOMPARE(dom.childNodes().size(), 3);
        QVERIFY(
            dom.toByteArray().startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                         "<?mso-application progid=\"Word.Document\"?>\n<w:wordDocument "));
        QDomElement root = dom.documentElement();
        QVERIFY(!QUuid(root.attribute(QString("xmlns:dt")).mid(5)).isNull());
        root.setAttribute(QString("xmlns:dt"), root.attribute(QString("xmlns:dt")).left(5));
        const QString box = outlineOf(record({0, 0, 90, 50}, QString("甲")));
        const QString pageBreak =
            QString("w:p[w:pPr[w:widowControl w:jc(w:val=left) w:rpr[w:rFonts(w:hint=fareast) "
                    "w:sz(w:val=6) w:sz-cs(w:val=4)]] "
                    "w:r[w:rpr[w:sz(w:val=6) w:sz-cs(w:val=4)] w:br(w:type=page)]]");
        const QStringList body{box, pageBreak, pageBreak, box};
        QCOMPARE(
            outline(root),
            QString("w:wordDocument(xml:space=preserve "
                    "xmlns:aml=http://schemas.microsoft.com/aml/2001/core xmlns:dt=uuid: "
                    "xmlns:o=urn:schemas-microsoft-com:office:office "
                    "xmlns:sl=http://schemas.microsoft.com/schemaLibrary/2003/core "
                    "xmlns:v=urn:schemas-microsoft-com:vml "
                    "xmlns:w10=urn:schemas-microsoft-com:office:word "
                    "xmlns:w=http://schemas.microsoft.com/office/word/2003/wordml "
                    "xmlns:wx=http://schemas.microsoft.com/office/word/2003/auxHint)"
                    "[w:defaultFonts(w:ascii=Times New Roman w:cs=Times New Roman w:fareast=宋体 "
                    "w:h-ansi=Times New Roman) "
                    "w:docPr[w:view(w:val=print) w:zoom(w:percent=100)] w:body[") +
                body.join(' ') +
                QString(" w:sectPr[w:pgSz(w:h=16840 w:w=11900) w:pgMar(w:bottom=0.0 w:footer=0 w:gutter=0 "
                        "w:header=0 w:left=0.0 w:right=0.0 w:top=0.0) w:cols(w:space=452) "
                        "w:docGrid(w:line-pitch=312 w:type=lines)]]]"));
    }

    void everyRunHasItsOwnNames()
    {
        const auto root = [] {
            return WordDocument{OcrJob()}.document().documentElement().attribute(QString("xmlns:dt"));
        };
        QVERIFY(root() != root());
        const zarnTXTLINERET doubtful = record({400, 800, 200, 100}, doubtfulMarker());
        QVERIFY(outlineOf(doubtful) != outlineOf(doubtful));
    }

    void whatXmlCannotHoldIsLeftOut()
    {
        WordDocument document{OcrJob()};
        const QString text = QString("甲<&\">") + QChar(1) + QChar(0xFFFE) + QString("]]>乙");
        document.addPage(document.pageParagraphs(
                             {{0, record({0, 0, 90, 50}, text)}, {1, record({0, 90, 90, 50}, "")}}, kFrame),
                         false);
        QDomDocument again;
        QString error;
        QVERIFY2(again.setContent(document.document().toByteArray(), true, &error), qPrintable(error));
        const QDomNodeList texts = again.elementsByTagName(QString("t"));
        QCOMPARE(texts.size(), 1); // nothing read: no box
        QCOMPARE(texts.at(0).toElement().text(), QString("甲<&\">]]>乙"));
    }

    void base64IsTheStandardOne()
    {
        for (int size = 0; size < 300; ++size) {
            QByteArray bytes(size, 0);
            std::iota(bytes.begin(), bytes.end(), 0);
            QCOMPARE(base64Encode(reinterpret_cast<const unsigned char*>(bytes.constData()), bytes.size()),
                     bytes.toBase64().toStdString());
        }
        QVERIFY(Mat2Base64(cv::Mat(), ".jpg").empty());
        QVERIFY(Mat2Base64(kFrame, ".nothing").empty());
    }
};

QTEST_APPLESS_MAIN(TestWordDocument)
#include "tst_worddocument.moc"
