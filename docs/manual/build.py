#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Typesets the manual: chapters/*.html in the order of their names, with contents and index, into one PDF.

    build.py VERSION OUT.pdf

A <dfn key="pinyin" as="entry">term</dfn> in the text becomes an entry of the index, sorted by the key, under the words
of `as` (without them, the term itself); equal entries are one. The first row of a table is repeated on each page. A
picture that a chapter names must be there: nothing is typeset with a gap. The same sources give the same bytes.
"""
import html
import os
import re
import sys
from pathlib import Path

import weasyprint

os.environ.setdefault('SOURCE_DATE_EPOCH', '0')  # embedded fonts carry the time of their making
HERE = Path(__file__).resolve().parent
TREE = 'http://tree/'  # the source folder: names in the PDF are made of addresses, and must not depend on the place
HEADING = re.compile(r'<(h[12])>(.*?)</\1>', re.S)
TERM = re.compile(r'<dfn key="([^"]*)"(?: as="([^"]*)")?>(.*?)</dfn>', re.S)
HEAD_ROW = re.compile(r'(<table[^>]*>)\s*(<tr><th.*?</tr>)', re.S)
PICTURE = re.compile(r'<img[^>]*src="([^"]+)"')


def plain(text):
    return html.escape(html.unescape(re.sub(r'<[^>]+>', '', text)))


def numbered_headings(text, contents):
    def mark(match):
        level, title = match.groups()
        contents.append((level, f's{len(contents)}', title))
        return f'<{level} id="{contents[-1][1]}">{title}</{level}>'
    return HEADING.sub(mark, text)


def marked_terms(text, terms):
    def mark(match):
        key, entry, term = match.groups()
        place = f'i{sum(len(places) for places in terms.values())}'
        terms.setdefault((key.lower(), plain(entry or term)), []).append(place)
        return f'<dfn id="{place}">{term}</dfn>'
    return TERM.sub(mark, text)


def contents_page(contents):
    lines, chapter, section = ['<h1 class="plain">目录</h1><nav><ol>'], 0, 0
    for level, place, title in contents:
        if level == 'h1':
            chapter, section = chapter + 1, 0
            lines.append(('</ol></li>' if chapter > 1 else '') + f'<li><a href="#{place}">{chapter}　{plain(title)}</a><ol>')
        else:
            section += 1
            lines.append(f'<li><a href="#{place}">{chapter}.{section}　{plain(title)}</a></li>')
    return ''.join(lines) + '</ol></li></ol></nav>'


def index_pages(terms):
    lines, letter = ['<h1 class="plain">索引</h1><div class="index">'], ''
    for (key, term), places in sorted(terms.items()):
        if key[0].upper() != letter:
            letter = key[0].upper()
            lines.append(f'<h3>{letter}</h3>')
        links = '，'.join(f'<a href="#{place}"></a>' for place in places)
        lines.append(f'<p>{term}　{links}</p>')
    return ''.join(lines) + '</div>'


def fetch(address):
    if not address.startswith(TREE):
        raise ValueError(f'{address} is not in the source folder')
    return weasyprint.default_url_fetcher((HERE.parent.parent / address[len(TREE):]).as_uri())


def main():
    version, output = sys.argv[1:]
    contents, terms, chapters = [], {}, []
    for chapter in sorted((HERE / 'chapters').glob('*.html')):
        text = chapter.read_text(encoding='utf-8')
        for picture in PICTURE.findall(text):
            if not (HERE / picture).is_file():
                sys.exit(f'{chapter.name}: no picture {picture}')
        text = HEAD_ROW.sub(r'\1<thead>\2</thead>', text)
        chapters.append(marked_terms(numbered_headings(text, contents), terms))
    cover = (HERE / 'cover.html').read_text(encoding='utf-8').replace('VERSION', html.escape(version))
    document = ('<!DOCTYPE html><html lang="zh-CN"><head><meta charset="utf-8"><title>QWD200 文档扫描 用户手册</title>'
                '<meta name="description" content="扫描、保存、识别、模板、故障与处理">'
                '<link rel="stylesheet" href="manual.css"></head><body>'
                + cover + contents_page(contents) + ''.join(chapters) + index_pages(terms) + '</body></html>')
    manual = weasyprint.HTML(string=document, base_url=TREE + 'docs/manual/', url_fetcher=fetch)
    manual.write_pdf(output, optimize_size=('fonts', 'images'))


if __name__ == '__main__':
    main()
