#pragma once

#include <QLabel>

/// A text with words of a page in it: plain, wrapped, and of a width that is
/// easy to read. It can be marked and copied, but follows no links.
class PageTextLabel : public QLabel {
    Q_OBJECT
public:
    explicit PageTextLabel(const QString& text, QWidget* parent);

    /// What a dialog is to show: the label, or one that scrolls it where the text is
    /// too long for the screen. Belongs to the label's parent.
    QWidget* fitted();
};
