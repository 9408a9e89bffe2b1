// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "driving.h"
#include "forms/foldermodel.h"
#include "forms/folderview.h"

#include <QImage>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTreeView>

// The panels that show a folder of files, and the view itself.
class FolderPanelsTest : public QObject
{
    Q_OBJECT

private:
    static QStringList names(const QTreeView& list)
    {
        QStringList all;
        for (int i = 0; i < list.model()->rowCount(list.rootIndex()); ++i)
            all << list.model()->index(i, 0, list.rootIndex()).data().toString();
        return all;
    }
    static void select(QTreeView& list, const QString& name)
    {
        const int row = names(list).indexOf(name);
        QVERIFY(row >= 0);
        list.setCurrentIndex(list.model()->index(row, 0, list.rootIndex()));
        list.setFocus();
    }

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        QVERIFY(QDir().mkpath(defaultSaveFolder()));
    }

    void filesAreShownSortedAndWatched()
    {
        const QString folder = defaultSaveFolder() + "/later";
        FolderView view;
        view.setFolder(folder);
        view.resize(800, 400);
        open(view);
        auto* list = control<QTreeView>(view, "fileList");
        auto* empty = control<QLabel>(view, "emptyLabel");
        QVERIFY(!list->isVisible() && empty->text().contains(folder));
        QVERIFY(QDir().mkpath(folder)); // the first scan makes it
        QTRY_VERIFY(!empty->text().contains(folder));
        QImage picture(300, 400, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QVERIFY(picture.save(folder + "/b.png"));
        QVERIFY(putFile(folder + "/a.txt", QByteArray(5000, 'x')));
        QVERIFY(putFile(folder + "/damaged.jpg", "no picture"));
        QFile older(folder + "/a.txt");
        QVERIFY(
            older.open(QIODevice::ReadWrite) &&
            older.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
        older.close();
        QTRY_COMPARE(names(*list).size(), 3);
        QVERIFY(list->isVisible());
        pick(view, "sortComboBox", QStringLiteral("名称"));
        QTRY_COMPARE(names(*list), (QStringList{"a.txt", "b.png", "damaged.jpg"}));
        pick(view, "sortComboBox", QStringLiteral("日期，旧的在前"));
        QTRY_COMPARE(names(*list).first(), QStringLiteral("a.txt"));
        pick(view, "sortComboBox", QStringLiteral("大小，大的在前"));
        QTRY_COMPARE(names(*list).first(), QStringLiteral("a.txt"));
        // the picture arrives from the worker
        const auto centre = [&] {
            const QModelIndex row = list->model()->index(names(*list).indexOf("b.png"), 0, list->rootIndex());
            const QSize size(FolderModel::kPictureSide, FolderModel::kPictureSide);
            const QImage icon = row.data(Qt::DecorationRole).value<QIcon>().pixmap(size).toImage();
            return QColor(icon.pixel(icon.width() / 2, icon.height() / 2));
        };
        QTRY_COMPARE(centre(), QColor(Qt::red));
        checkReachable(view);
        QVERIFY(QDir(folder).removeRecursively()); // and no other folder is shown instead
        QTRY_VERIFY(!list->isVisible());
        QVERIFY(view.selectedFiles().isEmpty());
    }

    void renameDragAndNoTrash()
    {
        const QString folder = defaultSaveFolder();
        for (const char* name : {"one.jpg", "two.jpg", "three.jpg"})
            QVERIFY(putFile(folder + "/" + name, name));
        FolderView view;
        view.setFolder(folder);
        open(view);
        auto* list = control<QTreeView>(view, "fileList");
        QTRY_COMPARE(names(*list).size(), 3);
        QVERIFY(!control<QPushButton>(view, "trashButton")->isEnabled());
        select(*list, "one.jpg");
        const std::unique_ptr<QMimeData> dragged(
            list->model()->mimeData(list->selectionModel()->selectedIndexes()));
        QCOMPARE(dragged->urls().value(0), QUrl::fromLocalFile(folder + "/one.jpg"));
        QCOMPARE(list->model()->supportedDragActions(), Qt::CopyAction);

        // renaming: never over another file, never out of the folder
        const auto rename = [&](const QString& name) {
            select(*list, "one.jpg");
            click(view, "renameButton");
            auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
            QVERIFY(edit);
            QTRY_COMPARE(edit->selectedText(), QStringLiteral("one"));
            edit->setText(name);
            QTest::keyClick(edit, Qt::Key_Return);
        };
        for (const char* bad : {"two.jpg", "../out.jpg", ".hidden", "", " "}) {
            rename(bad);
            QTRY_VERIFY2(!control<QLabel>(view, "messageLabel")->text().isEmpty(), bad);
            QVERIFY2(QFile::exists(folder + "/one.jpg"), bad);
        }
        QCOMPARE(fileContent(folder + "/two.jpg"), QByteArray("two.jpg"));
        rename(QStringLiteral("第一页 $(x).jpg"));
        QTRY_COMPARE(view.selectedFiles(), QStringList{folder + QStringLiteral("/第一页 $(x).jpg")});
        QCOMPARE(fileContent(folder + QStringLiteral("/第一页 $(x).jpg")), QByteArray("one.jpg"));

        qputenv("XDG_DATA_HOME", "/proc/none"); // no place for a trash: the file stays
        select(*list, "three.jpg");
        QTest::keyClick(list, Qt::Key_Delete);
        QVERIFY(control<QLabel>(view, "messageLabel")->text().contains(QStringLiteral("无法移到回收站")));
        QVERIFY(QFile::exists(folder + "/three.jpg"));
    }
};

QTEST_MAIN(FolderPanelsTest)
#include "tst_folderpanels.moc"
