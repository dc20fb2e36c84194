#pragma once

#include <QObject>

class QGuiApplication;

/// Gives a question the keys when a window has got them that the question blocks. The engine
/// activates the window of a page whose question is answered (6.4), even when the next question
/// is open already. Where the window manager leaves it at that (sway), no key would get anywhere.
class QuestionKeys : public QObject {
public:
    /// Belongs to the application.
    explicit QuestionKeys(QGuiApplication& application);
};
