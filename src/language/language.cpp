// SPDX-License-Identifier: GPL-3.0-or-later
#include "language/language.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLocale>
#include <QTranslator>
#include <algorithm>

// A static library's resources are not found by themselves; not in a namespace, as the macro asks for.
static void loadResources()
{
    Q_INIT_RESOURCE(translations);
}

namespace language {

namespace {

// "en" of "en_US.UTF-8@euro".
QByteArray languageOf(const QByteArray& locale)
{
    const auto end = std::find_if(locale.begin(), locale.end(),
                                  [](char c) { return c == '_' || c == '-' || c == '.' || c == '@'; });
    return locale.left(int(end - locale.begin())).toLower();
}

bool namesLanguage(const QByteArray& language)
{
    return !language.isEmpty() && language != "c" && language != "posix";
}

bool isChinese(const QByteArray& language)
{
    static const QList<QByteArray> languages{"zh", "cmn", "gan", "hak", "lzh", "nan", "wuu", "yue"};
    return languages.contains(language);
}

// In both languages: file names and recognised texts are Chinese, and outside a Chinese locale the fallback
// of the default font gives the Japanese forms of characters.
void useChineseFont()
{
    const QFontDatabase fonts;
    for (const char* family :
         {"Noto Sans CJK SC", "Noto Sans SC", "Source Han Sans SC", "WenQuanYi Micro Hei"}) {
        if (!fonts.hasFamily(QLatin1String(family)))
            continue;
        QFont font = QApplication::font();
        font.setFamily(QLatin1String(family));
        QApplication::setFont(font);
        return;
    }
}

} // namespace

bool isEnglish(const QByteArray& locale, const QByteArray& preferred)
{
    QByteArray language = languageOf(locale);
    if (!namesLanguage(language))
        return false;
    const QByteArray wish = languageOf(preferred.split(':').first());
    if (namesLanguage(wish))
        language = wish;
    return !isChinese(language);
}

bool isEnglish()
{
    QByteArray locale;
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (locale.isEmpty())
            locale = qgetenv(variable);
    return isEnglish(locale, qgetenv("LANGUAGE"));
}

void set(QApplication& application, const QStringList& toolkitFiles)
{
    useChineseFont();
    QStringList files = toolkitFiles;
    if (isEnglish()) {
        loadResources();
        files = QStringList{QStringLiteral(":/translations/qwd200_en.qm")};
    } else {
        QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
    }
    auto* translator = new QTranslator(&application);
    if (std::any_of(files.begin(), files.end(),
                    [translator](const QString& file) { return translator->load(file); }))
        QCoreApplication::installTranslator(translator);
}

} // namespace language
