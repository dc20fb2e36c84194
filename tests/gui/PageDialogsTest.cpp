#include "GuiTest.h"

#include "browser/services/PageDialogs.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

using namespace Qt::StringLiterals;

/// The windows in which pages ask, answered by real keys.
class PageDialogsTest : public QObject {
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }

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

    void logIn()
    {
        whileOpen([](QDialog& dialog) {
            auto* const password = dialog.findChild<QLineEdit*>(u"txtPassword"_s);
            QTest::keyClicks(dialog.focusWidget(), u"ich"_s);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            QTest::keyClicks(dialog.focusWidget(), u"geheim"_s);
            QCOMPARE(password->echoMode(), QLineEdit::Password);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        });
        const auto answer = m_dialogs.logIn(&m_window, {.site = u"h"_s, .realm = {}, .user = {}});
        QVERIFY(answer.has_value());
        QCOMPARE(answer->user, u"ich"_s);
        QCOMPARE(answer->password, u"geheim"_s);
    }

    void windowGoes()
    {
        auto* const window = new QWidget;
        whileOpen([window](QDialog&) { delete window; });
        QVERIFY(!m_dialogs.ask(window, {.text = u"x"_s}).isAccepted);
    }

private:
    void whileOpen(const std::function<void(QDialog&)>& act)
    {
        QTimer::singleShot(100, this, [act] {
            if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                act(*dialog);
        });
    }

    QWidget m_window;
    PageDialogs m_dialogs;
};

GUI_TEST_MAIN(PageDialogsTest)
#include "PageDialogsTest.moc"
