#include "tests/e2e/Scenario.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {
constexpr int height = 40; // of each thing to drag
enum Thing { Link, Image, LinkedImage, Selection, Script };

/// Five things to drag, one under the other; the number tells the pages apart.
QByteArray things(const char* title)
{
    const auto at = [](Thing thing) {
        return "style='display:block;position:fixed;margin:0;left:0;width:99vw;height:40px;top:" +
               QByteArray::number(thing * height) + "px'";
    };
    return "<title>" + QByteArray(title) + "</title><body><a " + at(Link) +
           " href='/ziel?a=1#b'>Ein Link</a><img " + at(Image) +
           " alt='Alt' src='/bild.svg?a&amp;b'><a href=/fort><img " + at(LinkedImage) +
           " src=/bild2.svg></a><p id=s " + at(Selection) + ">/text</p><a " + at(Script) +
           " href='javascript:void(document.title=1)'>Gratis</a>"
           "<script>s.textContent = location.host + '/text';"
           "onpageshow = () => getSelection().selectAllChildren(s)</script>";
}
} // namespace

/// What is dragged out of a page with a real mouse, and where it arrives.
class DropsTest : public Scenario {
    Q_OBJECT
private slots:
    void ontoTheAddressLine()
    {
        openThings();
        drop(Link, u"/ziel"_s);
        shows(m_server->address(u"/ziel?a=1#b"_s));
        drop(Image, u"/bild.svg"_s);
        shows(m_server->address(u"/bild.svg?a&b"_s));
        back();
        drop(LinkedImage, u"/bild2.svg"_s);
        back();
        drop(Selection, u"/text"_s);
        User::carry(thing(Script), m_frame + addressLine);
        QTRY_SEES(noAddress());
        User::press(u"ctrl+l Return"_s); // not typed by hand, for all that
        QTest::qWait(1500);
        QVERIFY(User::sees(noAddress()));
        User::typeAddress(u"javascript:void(document.title='Unfug')"_s);
        QTRY_SEES(maximised(u"Unfug"_s));
        QCOMPARE(m_program->startAndWait({u" JavaScript:document.title='Unfug'"_s}), 0);
        QTRY_SEES(title());
        User::press(u"ctrl+w"_s);
    }

    void ontoOtherWindows()
    {
        openThings();
        User::press(u"alt+f k"_s); // leaves some of the frame free
        QTRY_SEES(title());
        m_page += QPoint(0, 20);
        drop(Link, u"/ziel"_s, {880, 660});
        User::press(u"alt+f n"_s); // side by side
        QTest::qWait(700);
        drop(Image, u"/bild.svg"_s, {650, 93});
        archive();
    }

private:
    void openThings()
    {
        m_server->page(u"/dinge"_s, things("Dinge"));
        m_server->page(u"/ziel"_s, things("Ziel"));
        m_server->page(u"/text"_s, things("Text"));
        for (const auto& path : {u"/bild.svg"_s, u"/bild2.svg"_s})
            m_server->answer(path,
                             {.body = "<svg xmlns='http://www.w3.org/2000/svg' "
                                      "width='9' height='9'><rect width='9' height='9'/></svg>",
                              .type = "image/svg+xml"});
        open(u"/dinge"_s, u"Dinge"_s);
        User::resize(maximised(u"Dinge"_s), {900, 700});
        QTest::qWait(500);
        m_page = QPoint(0, 85);
        m_frame = User::place(maximised(u"Dinge"_s)).topLeft();
    }
    QPoint thing(Thing thing) const
    {
        return m_frame + m_page + QPoint(40, thing * height + height / 2);
    }
    static QString noAddress() { return maximised(u"Keine gültige Adresse"_s); }
    void drop(Thing dragged, const QString& path, const QPoint& target = addressLine)
    {
        const int before = m_server->requests(path);
        User::carry(thing(dragged), m_frame + target);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(path), before + 1, patience);
        QTest::qWait(700); // the page is there, and takes the mouse
    }
    /// The archive's window lies behind the frame.
    void archive()
    {
        const QString archive = u"Bookmark Archiv"_s;
        User::press(u"alt+x b"_s);
        QTRY_SEES(archive);
        User::press(u"alt+a l"_s); // the first folder is there now
        User::move(archive, m_frame + QPoint(300, 250));
        QTest::qWait(300);
        const QPoint tree = User::place(archive).topLeft();
        for (const Thing dragged : {Link, LinkedImage, Selection})
            User::carry(thing(dragged), tree + QPoint(80, 48), {m_frame + QPoint(892, 400)});
        if (User::minimise(archive))
            QTRY_VERIFY_WITH_TIMEOUT(!User::sees(archive), patience);
        QVERIFY(User::sees(title()));
        User::press(u"ctrl+shift+o"_s);
        QTRY_COMPARE_WITH_TIMEOUT(User::activeWindow(), archive, patience);
        User::press(u"Delete alt+a s"_s); // what was dropped last is selected
        const auto kept = [this](int number) {
            constexpr int record = 722;
            constexpr int address = 202;
            const QByteArray bytes = bytesOf(m_program->file(u"1.bkm"_s));
            return QString::fromLatin1(bytes.mid(number * record + address, 200)).trimmed();
        };
        QTRY_COMPARE_WITH_TIMEOUT(kept(0), m_server->address(u"/bild2.svg"_s), patience);
        QCOMPARE(kept(1), m_server->address(u"/ziel?a=1#b"_s));
    }
    static void back()
    {
        User::press(u"alt+Left"_s);
        QTRY_SEES(maximised(u"Ziel"_s));
        QTest::qWait(700);
    }
    static void shows(const QString& address)
    {
        const auto copied = [] { // the page may take its time until the line has its address
            User::press(u"ctrl+l ctrl+c"_s);
            return User::clipboard();
        };
        QTRY_COMPARE_WITH_TIMEOUT(copied(), address, patience);
    }

    static constexpr QPoint addressLine{300, 68};
    QPoint m_frame; ///< its content's top left corner on the display
    QPoint m_page;  ///< the page's in the frame
};

QTEST_MAIN(DropsTest)
#include "DropsTest.moc"
