#pragma once

#include <QLabel>

/// A text with words of a page in it: plain, wrapped, and of a width that is
/// easy to read. It can be marked and copied, but follows no links.
class PageTextLabel : public QLabel {
    Q_OBJECT
public:
    explicit PageTextLabel(const QString& text, QWidget* parent);
};
