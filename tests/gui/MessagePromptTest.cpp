#include "base/MessagePrompt.h"
#include "GuiTest.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QTimer>

using namespace Qt::StringLiterals;

class MessagePromptTest : public QObject {
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }

    void answers_data()
    {
        QTest::addColumn<bool>("yesNo");
        QTest::addColumn<QList<Qt::Key>>("keys");
        QTest::addColumn<bool>("closed");
        QTest::addColumn<bool>("answer");
        using Keys = QList<Qt::Key>;
        QTest::newRow("Ja by default") << true << Keys{Qt::Key_Return} << false << true;
        QTest::newRow("Nein") << true << Keys{Qt::Key_Tab, Qt::Key_Space} << false << false;
        // A question about unsaved changes is not to be answered by an Escape too many.
        QTest::newRow("no escape") << true << Keys{Qt::Key_Escape, Qt::Key_Return} << false << true;
        QTest::newRow("no close box") << true << Keys{Qt::Key_Return} << true << true;
        QTest::newRow("OK by default") << false << Keys{Qt::Key_Return} << false << true;
        QTest::newRow("Abbrechen") << false << Keys{Qt::Key_Tab, Qt::Key_Space} << false << false;
        QTest::newRow("escaped") << false << Keys{Qt::Key_Escape} << false << false;
        QTest::newRow("closed") << false << Keys{} << true << false;
    }
    void answers()
    {
        QFETCH(bool, yesNo);
        QFETCH(QList<Qt::Key>, keys);
        QFETCH(bool, closed);
        QFETCH(bool, answer);
        QStringList captions;
        QTimer::singleShot(0, this, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr && QTest::qWaitForWindowActive(box));
            QCOMPARE(box->textFormat(), Qt::PlainText);
            for (const QAbstractButton* button : box->buttons())
                captions << button->text();
            if (closed)
                box->close();
            for (const Qt::Key key : keys) {
                if (box->isVisible()) // otherwise it has its answer already
                    QTest::keyClick(box->focusWidget(), key);
            }
        });
        MessagePrompt prompt;
        const auto ask = yesNo ? &MessagePrompt::askYesNo : &MessagePrompt::askOkCancel;
        QCOMPARE((prompt.*ask)(nullptr, u"<b>?"_s, u"Meldung"_s, Prompt::Icon::Question), answer);
        captions.sort();
        QCOMPARE(captions.join(u' '), yesNo ? u"Ja Nein"_s : u"Abbrechen OK"_s);
    }
};

GUI_TEST_MAIN(MessagePromptTest)
#include "MessagePromptTest.moc"
