#pragma once

#include <QLabel>

/// A plain text on one line. One that is too long loses its middle, and is whole in the tool
/// tip; it never widens the window.
class ElidedLabel : public QLabel {
    Q_OBJECT
public:
    ElidedLabel(const QString& name, QWidget* parent);

    void showText(const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void elide();

    QString m_text;
};
