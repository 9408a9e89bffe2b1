// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class FolderView;
class FunctionControls;
class FunctionForm;
class QSettings;
class QTabWidget;

// A function panel with the settings of a scan to pictures, in groups of its own, and the folder into which
// they are saved. The window scans for it with its own scan function; what happens to the files then is the
// user's affair: the panel neither prints nor sends. GUI thread.
class FolderPanel : public QWidget
{
    Q_OBJECT
public:
    struct Function
    {
        QString name;        // "Copy  Utility"
        QString description; // one line
        QString hint;        // what to do with the files
        QString group;       // "Copy": the settings group is "Scan_Copy" or "File_Copy"
    };

    FolderPanel(const Function& function, const QString& page, QWidget* parent = nullptr);
    ~FolderPanel() override;

    FunctionControls& functionControls();

    // The stored settings into the controls and back; false when a file could not be written.
    void readIni();
    bool writeIni();
    void setDefaultValue();
    // Whether reading from these two files would leave all controls as they are.
    bool matches(QSettings& main, const QSettings& path) const;

protected:
    FunctionForm& form() { return *m_form; }

private:
    void setUpForm(const QString& page, const QString& group);
    void showFolder();

    QTabWidget* m_tabs;
    FolderView* m_files;
    FunctionForm* m_form;
};

class copyPanel : public FolderPanel
{
    Q_OBJECT
public:
    // `page` begins the settings groups: "Scan" or "File".
    explicit copyPanel(const QString& page, QWidget* parent = nullptr);
};

class EmailPanel : public FolderPanel
{
    Q_OBJECT
public:
    explicit EmailPanel(const QString& page, QWidget* parent = nullptr);
};

class filepanel : public FolderPanel
{
    Q_OBJECT
public:
    explicit filepanel(const QString& page, QWidget* parent = nullptr);
};

class ftppanel : public FolderPanel
{
    Q_OBJECT
public:
    explicit ftppanel(const QString& page, QWidget* parent = nullptr);
};
