// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "document.h"

#include <QTreeWidget>

namespace reader {

// The document's own table of contents.
class OutlinePane : public QTreeWidget
{
    Q_OBJECT
public:
    explicit OutlinePane(QWidget* parent = nullptr);
    void setOutline(const std::vector<OutlineEntry>& outline);

signals:
    void placeChosen(int page, double top);

private:
    void choose(const QTreeWidgetItem* item);
};

} // namespace reader
