#pragma once

#include <QKeySequence>
#include <QObject>

class QWidget;

/// Keeps a key of the frame from the address lines and the pages in it: without a desktop's own
/// settings the toolkit takes Ctrl+D for "delete" wherever a text is typed (seen with Qt 6.4).
class FieldKeys : public QObject {
    Q_OBJECT
public:
    /// Belongs to `frame`.
    explicit FieldKeys(QWidget& frame);

    static QKeySequence pageToArchive() { return Qt::CTRL | Qt::Key_D; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_frame;
};
