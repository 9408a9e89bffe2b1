// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/singleinstance.h"
#include "app/widget.h"
#include "config/folderrights.h"
#include "config/leftovers.h"
#include "config/paths.h"
#include "device/readbtn.h"
#include "language/language.h"

#include <QApplication>
#include <QIcon>
#include <QTextCodec>
#include <csignal>
#include <omp.h>

int main(int argc, char* argv[])
{
    omp_set_max_active_levels(0); // recognition forks; OpenMP's threads would hang the children
    shareNewFiles();
    std::signal(SIGXFSZ, SIG_IGN); // a file-size limit is a failed write, not the end of the program
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("utf-8"));
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qwd200"));
    QApplication::setDesktopFileName(QStringLiteral("cn.zarn.qwd200"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/images/qwd200.png")));
    QApplication::setQuitOnLastWindowClosed(false); // the window lives on in the tray while hidden
    const SingleInstance instance;
    if (!instance.isPrimary())
        return 0;

    language::set(application, {paths::translation()});

    Widget window(std::make_unique<readBtn>());
    window.setWindowFlags(Qt::Dialog | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    window.show();
    sweepAbandonedFiles();
    return QApplication::exec();
}
