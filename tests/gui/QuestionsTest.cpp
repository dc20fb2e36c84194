#include "GuiTest.h"

#include "base/DialogPrompt.h"
#include "base/QuestionDialogs.h"
#include "pages/asking/NotificationWindow.h"
#include "pages/viewing/frmBrowserData.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

using namespace Qt::StringLiterals;

/// The windows in which pages and the program ask, answered by real keys.
class QuestionsTest : public TestCase {
    Q_OBJECT
private slots:
    void notificationsLeaveEachOtherRoom()
    {
        const auto notification = [](int lines, const QList<QRect>& others) {
            auto* const window = new NotificationWindow(u"s"_s, u"t"_s, u"x\n"_s.repeated(lines));
            window->appear(others);
            return std::unique_ptr<NotificationWindow>(window);
        };
        auto low = notification(1, {});
        const QRect lowest = low->geometry();
        const auto high = notification(5, {lowest});
        QVERIFY(high->geometry().bottom() < lowest.top());
        low.reset();
        const auto larger = notification(3, {high->geometry()}); // the gap is too small for it
        QVERIFY(!larger->geometry().intersects(high->geometry()));
        const auto smaller = notification(1, {high->geometry(), larger->geometry()});
        QCOMPARE(smaller->geometry(), lowest);
    }

    void everyTextFits()
    {
        const QString lines = u"Zeile mit Worten "_s.repeated(20).append(u'\n').repeated(40);
        whileOpen([](QDialog& dialog) {
            QVERIFY(dialog.height() < dialog.screen()->availableSize().height());
            const auto* text = dialog.findChild<QLabel*>(u"lblText"_s);
            QCOMPARE(text->textFormat(), Qt::PlainText);
            const QStringList words = text->text().split(u'\n');
            for (const QString& word : words.last(3))
                QVERIFY(text->fontMetrics().horizontalAdvance(word) <= text->width());
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        QVERIFY(m_prompt.ask(&m_window, {.text = lines + u"Wort"_s.repeated(99)}).isAccepted);
    }

    void input()
    {
        whileOpen([](QDialog& dialog) {
            dialog.findChild<QCheckBox*>()->setChecked(true);
            QTest::keyClicks(dialog.focusWidget(), u"neu"_s); // over what was there
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        });
        const Prompt::Answer answer = m_prompt.ask(
            &m_window, {.refuse = u"Abbrechen"_s, .checkBox = u"Ruhe"_s, .input = u"alt"_s});
        QVERIFY(answer.isAccepted && answer.isChecked);
        QCOMPARE(answer.input, u"neu"_s);
    }

    void passwordsAreHidden()
    {
        const LogInDialog dialog({}, nullptr);
        QCOMPARE(dialog.findChild<QLineEdit*>(u"txtPassword"_s)->echoMode(), QLineEdit::Password);
    }

    void windowGoes()
    {
        auto* const window = new QWidget;
        whileOpen([window](QDialog&) { delete window; });
        QVERIFY(!m_prompt.ask(window, {.text = u"x"_s}).isAccepted);
    }

    // A question about unsaved changes is not to be answered by an Escape too many.
    void messages()
    {
        QVERIFY(answer(&DialogPrompt::askYesNo, {Qt::Key_Escape, Qt::Key_Return}));
        QVERIFY(!answer(&DialogPrompt::askYesNo, {Qt::Key_Tab, Qt::Key_Space}));
        QVERIFY(!answer(&DialogPrompt::askOkCancel, {Qt::Key_Escape}));
    }

    void deletingNeedsItsButton()
    {
        frmBrowserData dialog(&m_window);
        dialog.show();
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        QVERIFY(dialog.isVisible());
        QTest::keyClick(dialog.findChild<QWidget*>(u"cmdDelete"_s), Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
    }

private:
    template <typename Question>
    bool answer(Question question, const QList<Qt::Key>& keys)
    {
        whileOpen([&keys](QDialog& box) {
            for (const Qt::Key key : keys)
                if (box.isVisible()) // otherwise it has its answer already
                    QTest::keyClick(box.focusWidget(), key);
        });
        return (m_prompt.*question)(nullptr, u"?"_s, u"Meldung"_s, Prompt::Icon::Question);
    }
    void whileOpen(const std::function<void(QDialog&)>& act)
    {
        QTimer::singleShot(100, this, [act] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && QTest::qWaitForWindowActive(dialog))
                act(*dialog);
        });
    }

    QWidget m_window;
    DialogPrompt m_prompt;
};

QTEST_MAIN(QuestionsTest)
#include "QuestionsTest.moc"
