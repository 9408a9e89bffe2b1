// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <functional>

class QLabel;
class QLineEdit;

// Asks for the name of a template. What a template cannot be called is refused here, what the list cuts is
// warned of, and an existing name is asked about. Application-modal; show() or exec() it.
class TemplateName : public QDialog
{
    Q_OBJECT
public:
    // `exists`: whether there is a template of this name.
    TemplateName(const QString& proposal, std::function<bool(const QString&)> exists,
                 QWidget* parent = nullptr);

public slots:
    void accept() override;

signals:
    void sendAddTempleteMessage(const QString& name); // confirmed

private:
    void nameEdited();

    std::function<bool(const QString&)> m_exists;
    QLineEdit* m_name;
    QLabel* m_message;
};
