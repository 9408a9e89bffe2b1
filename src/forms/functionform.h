// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/functioncontrols.h"

#include <QPointer>
#include <QWidget>
#include <memory>
#include <utility>
#include <vector>

class FunctionSettings;
class QAbstractButton;
class QComboBox;
class QPushButton;
class QSettings;
namespace Ui {
class FunctionForm;
}

// The form that the panels of the functions share: source, merging, tone, rotation, corrections and output,
// with their rules, settings and dialogs. A panel puts its own controls beside them and then calls setUp().
// GUI thread.
class FunctionForm : public QWidget
{
    Q_OBJECT
public:
    explicit FunctionForm(QWidget* parent = nullptr);
    ~FunctionForm() override;

    // The form's controls, for a panel to complete with its own.
    ScanPageControls controls() const;
    void addToPages(QWidget* widget); // a row below the merging controls
    void setSourceLabel(const QString& text);
    // A list that the panel shows in the place of the formats, which are then only stored.
    void showInsteadOfFormats(QComboBox* list, const QString& label);
    // Once, before anything below.
    void setUp(const ScanPageControls& controls, const FunctionGroups& groups);

    FunctionControls& function() { return *m_function; }
    const FunctionControls& function() const { return *m_function; }
    FunctionSettings& settings() { return *m_settings; }
    QPushButton* previewButton() const;
    // For a panel whose pages become pictures: the box of further copies in the place of the preview button.
    void showExtraCopies();

    QString folder() const; // the chosen save folder, without a trailing "/"
    void setFolder(const QString& folder);

    // The stored settings into the controls and back: the function's group, its save folder, its application
    // list (which only the dialogs write). writeStored() is false when a file could not be written.
    void readStored();
    bool writeStored();
    void setDefaults();
    // Whether readStored() from these two files would leave the form as it is.
    bool matches(QSettings& main, const QSettings& path) const;

    // For a preview of the pages as they are scanned: merging and splitting into files are off and the
    // directions disabled until it has ended.
    void beginPreview();
    void endPreview();

signals:
    void folderChanged();

private:
    void browse();
    void showFolder();

    std::unique_ptr<Ui::FunctionForm> m_ui;
    std::unique_ptr<FunctionControls> m_function;
    std::unique_ptr<FunctionSettings> m_settings;
    std::vector<std::pair<QAbstractButton*, bool>> m_beforePreview;
};
