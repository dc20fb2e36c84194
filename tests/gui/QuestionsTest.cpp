#include "GuiTest.h"

#include "base/MessagePrompt.h"
#include "browser/services/LogInDialog.h"
#include "browser/services/NoticeWindow.h"
#include "browser/services/PageDialogs.h"

#include <QCheckBox>
#include <QDialog>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>

using namespace Qt::StringLiterals;

/// The windows in which pages and the program ask, answered by real keys.
class QuestionsTest : public TestCase {
    Q_OBJECT
private slots:
    void keys()
    {
        for (const auto& [isRisky, key, isAccepted] : {std::tuple{false, Qt::Key_Return, true},
                                                       {false, Qt::Key_Escape, false},
                                                       {true, Qt::Key_Enter, false}}) {
            whileOpen([pressed = key](QDialog& dialog) {
                QCOMPARE(dialog.findChild<QLabel*>(u"lblText"_s)->textFormat(), Qt::PlainText);
                dialog.findChild<QCheckBox*>()->setChecked(true);
                QTest::keyClick(&dialog, pressed);
            });
            const PageAnswer answer = m_dialogs.ask(&m_window, {.text = u"<b>x</b>"_s,
                                                                .refuse = u"Nein"_s,
                                                                .isRisky = isRisky,
                                                                .checkBox = u"Ruhe"_s});
            QCOMPARE(answer.isAccepted, isAccepted);
            QVERIFY(answer.isChecked);
        }
    }

    void noticesLeaveEachOtherRoom()
    {
        const auto notice = [](int lines, const QList<QRect>& others) {
            auto* const window = new NoticeWindow(u"s"_s, u"t"_s, u"x\n"_s.repeated(lines));
            window->appear(others);
            return std::unique_ptr<NoticeWindow>(window);
        };
        auto low = notice(1, {});
        const QRect lowest = low->geometry();
        const auto high = notice(5, {lowest});
        QVERIFY(high->geometry().bottom() < lowest.top());
        low.reset();
        const auto larger = notice(3, {high->geometry()}); // the gap is too small for it
        QVERIFY(!larger->geometry().intersects(high->geometry()));
        const auto smaller = notice(1, {high->geometry(), larger->geometry()});
        QCOMPARE(smaller->geometry(), lowest);
    }

    void everyTextFits()
    {
        const QString lines = u"Zeile mit Worten "_s.repeated(20).append(u'\n').repeated(40);
        whileOpen([](QDialog& dialog) {
            QVERIFY(dialog.height() < dialog.screen()->availableSize().height());
            const auto* text = dialog.findChild<QLabel*>(u"lblText"_s);
            const QStringList words = text->text().split(u'\n');
            for (const QString& word : words.last(3))
                QVERIFY(text->fontMetrics().horizontalAdvance(word) <= text->width());
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        QVERIFY(m_dialogs.ask(&m_window, {.text = lines + u"Wort"_s.repeated(99)}).isAccepted);
    }

    void input()
    {
        whileOpen([](QDialog& dialog) {
            QTest::keyClicks(dialog.focusWidget(), u"neu"_s); // over what was there
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        });
        const PageAnswer answer =
            m_dialogs.ask(&m_window, {.refuse = u"Abbrechen"_s, .input = u"alt"_s});
        QVERIFY(answer.isAccepted);
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
        QVERIFY(!m_dialogs.ask(window, {.text = u"x"_s}).isAccepted);
    }

    // A question about unsaved changes is not to be answered by an Escape too many.
    void messages()
    {
        QVERIFY(answer(&MessagePrompt::askYesNo, {Qt::Key_Escape, Qt::Key_Return}));
        QVERIFY(!answer(&MessagePrompt::askYesNo, {Qt::Key_Tab, Qt::Key_Space}));
        QVERIFY(!answer(&MessagePrompt::askOkCancel, {Qt::Key_Escape}));
    }

    void savedFiles()
    {
        const QTemporaryDir folder;
        const QString all = u"Alle Dateien (*)"_s;
        for (const auto& [name, expected] :
             {std::pair{u"a.b.pdf"_s, QStringList{u"PDF-Dateien (*.pdf)"_s, all}},
              {u"a"_s, {all}},
              {u"a.p*"_s, {all}}}) {
            QStringList filters;
            whileOpen([&filters](QDialog& dialog) {
                filters = qobject_cast<QFileDialog*>(&dialog)->nameFilters();
                dialog.accept();
            });
            const QString path = folder.filePath(name);
            QCOMPARE(MessagePrompt().saveFileAs(nullptr, u"Sichern"_s, path), path);
            QCOMPARE(filters, expected);
        }
    }

private:
    template <typename Question>
    bool answer(Question question, const QList<Qt::Key>& keys)
    {
        whileOpen([&keys](QDialog& box) {
            for (const Qt::Key key : keys) {
                if (box.isVisible()) // otherwise it has its answer already
                    QTest::keyClick(box.focusWidget(), key);
            }
        });
        MessagePrompt prompt;
        return (prompt.*question)(nullptr, u"?"_s, u"Meldung"_s, Prompt::Icon::Question);
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
    PageDialogs m_dialogs;
};

GUI_TEST_MAIN(QuestionsTest)
#include "QuestionsTest.moc"
