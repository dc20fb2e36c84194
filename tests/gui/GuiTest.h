#pragma once

#include "tests/TestCase.h"

#include <QApplication>
#include <QPointer>

/// A test case around one window at a time.
class WindowTest : public TestCase {
protected:
    /// Shows the window, in which controls are looked for from now on.
    void show(QWidget& window)
    {
        m_shown = &window;
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
    template <typename Control = QWidget>
    Control* find(const QString& name = {}) const
    {
        return m_shown->findChild<Control*>(name);
    }
    void press(const QString& name) const { QTest::mouseClick(find(name), Qt::LeftButton); }

private:
    QPointer<QWidget> m_shown;
};
