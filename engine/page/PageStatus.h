#pragma once

#include <QObject>
#include <QPointer>

class QWidget;
class WebEnginePage;

/// What a page has to say in the status line: the link under the mouse, and what was refused to
/// it. What is said may end the window, and this object with it.
class PageStatus : public QObject {
    Q_OBJECT
public:
    /// `page` outlives this; the keys belong to the page while `view` or a child of it has them.
    PageStatus(WebEnginePage& page, QWidget& view);

    /// Says something that the user is to know, until the page goes on.
    void notify(const QString& text);
    /// Takes back what still stands there.
    void clear();

signals:
    /// An empty text takes back the one before.
    void changed(const QString& text);

private:
    void showLink(const QString& address);
    void leaveLink();

    QPointer<QWidget> m_view;
    /// What the text is that was said last, if it still stands for something.
    enum class Said { Nothing, Link, Notice };
    Said m_said = Said::Nothing;
};
