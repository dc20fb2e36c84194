#include "base/MessagePrompt.h"
#include "GuiTest.h"

#include <QTimer>

using namespace Qt::StringLiterals;

class MessagePromptTest : public QObject {
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }

    // A question about unsaved changes is not to be answered by an Escape too many.
    void answers()
    {
        QVERIFY(answer(&MessagePrompt::askYesNo, {Qt::Key_Escape, Qt::Key_Return}));
        QVERIFY(!answer(&MessagePrompt::askYesNo, {Qt::Key_Tab, Qt::Key_Space}));
        QVERIFY(!answer(&MessagePrompt::askOkCancel, {Qt::Key_Escape}));
    }

private:
    template <typename Question>
    bool answer(Question question, const QList<Qt::Key>& keys)
    {
        QTimer::singleShot(0, this, [&keys] {
            QWidget* box = QApplication::activeModalWidget();
            QVERIFY(box != nullptr && QTest::qWaitForWindowActive(box));
            for (const Qt::Key key : keys) {
                if (box->isVisible()) // otherwise it has its answer already
                    QTest::keyClick(box->focusWidget(), key);
            }
        });
        MessagePrompt prompt;
        return (prompt.*question)(nullptr, u"?"_s, u"Meldung"_s, Prompt::Icon::Question);
    }
};

GUI_TEST_MAIN(MessagePromptTest)
#include "MessagePromptTest.moc"
