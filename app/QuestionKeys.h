#pragma once

#include <QObject>

class QGuiApplication;

/// Gives a question the keys when a window has got them that the question blocks. The engine
/// activates the window of a page whose own question is answered (6.4), be the next one open or
/// not; where a window manager does not know better, its user could press what he likes.
class QuestionKeys : public QObject {
public:
    /// Belongs to the application.
    explicit QuestionKeys(QGuiApplication& application);
};
