// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>
#include <QWidget>

namespace reader {

// The line above the pages in which a text is looked for; the search follows the typing.
class SearchBar : public QWidget
{
    Q_OBJECT
public:
    explicit SearchBar(QWidget* parent = nullptr);
    void open(); // shows it with the text marked
    void close();
    void setState(int number, int count, int pagesDone, int pages,
                  bool complete); // pagesDone == pages: finished
    QString wanted() const { return m_text->text(); }

signals:
    void wantedChanged(const QString& text); // empty: nothing more
    void stepped(bool forward);
    void closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void typed();
    void step(bool forward);
    QToolButton* button(const QString& text, const QString& tip);

    QLineEdit* m_text;
    QLabel* m_state;
    QToolButton *m_previous, *m_next;
    QTimer m_pause;
};

} // namespace reader
