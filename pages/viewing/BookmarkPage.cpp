#include "pages/viewing/BookmarkPage.h"

#include "base/ShownText.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QUuid>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

// No file of a user comes near these; each keeps a page from filling the memory.
constexpr qsizetype longestAnswer = 8'000'000;
constexpr qsizetype longestText = 1000;
constexpr qsizetype longestAddress = 2000;
constexpr qint64 mostLength = 60'000'000;
constexpr qint64 mostEvents = 2'000'000;
constexpr std::size_t mostFolders = 40'000;
constexpr std::size_t mostDepth = 50;

/// Reads the properties of a document by the engine's own functions: a page can give its
/// elements names that stand in the place of these properties.
constexpr QLatin1StringView accessors(R"(
    const get = (type, name) => {
        const read = Object.getOwnPropertyDescriptor(type.prototype, name).get;
        return object => read.call(object);
    };)");

/// Walks through the document without recursion, one node a step. The kinds of its events: a
/// heading, a list begins, a list ends, a link with its address, a description.
constexpr QLatin1StringView walker(R"(
    const first = get(Node, 'firstChild'), next = get(Node, 'nextSibling');
    const parent = get(Node, 'parentNode'), kind = get(Node, 'nodeType');
    const tag = get(Element, 'localName');
    const attribute = Element.prototype.getAttribute;
    const part = CharacterData.prototype.substringData;
    const name = node => kind(node) === 1 ? tag(node) : '';
    const ends = ['dl', 'dt', 'dd', 'h3'], silent = ['script', 'style', 'template'];

    function text(root) {
        let result = '';
        let at = first(root);
        for (let i = 0; at && i < 2000 && result.length < 1000; ++i) {
            const its = name(at);
            if (ends.includes(its))
                break;
            if (its === 'br')
                result += '\r';
            else if (kind(at) === 3)
                result += part.call(at, 0, 1000 - result.length);
            let going = silent.includes(its) ? null : first(at);
            while (!going && at && at !== root && ++i < 2000) {
                going = next(at);
                if (!going)
                    at = parent(at);
            }
            at = going;
        }
        return result;
    }
    function isInDescription(link) {
        let at = parent(link);
        for (let i = 0; at && i < 30; ++i, at = parent(at)) {
            const its = name(at);
            if (its === 'dd')
                return true;
            if (its === 'dt' || its === 'dl')
                return false;
        }
        return false;
    }

    let at = document, isLeaving = false, isDone = false, events = [], size = 0, nodes = 0;
    function say(...event) {
        events.push(event);
        for (const text of event)
            size += text.length;
    }
    function enter() {
        const its = name(at);
        if (its === 'dl') {
            say('+');
        } else if (its === 'h3') {
            say('H', text(at));
        } else if (its === 'dd') {
            say('D', text(at));
        } else if (its === 'a') {
            const address = attribute.call(at, 'href');
            if (address !== null && !isInDescription(at))
                say('A', text(at), address.slice(0, 2000));
        }
    }
    function step() {
        if (!isLeaving) {
            enter();
            const child = first(at);
            if (child) {
                at = child;
                return;
            }
        }
        if (name(at) === 'dl')
            say('-');
        const sibling = at === document ? null : next(at);
        isLeaving = !sibling;
        at = sibling || (at === document ? null : parent(at));
        isDone = !at;
    }
    return () => {
        const until = Date.now() + 30;
        events = [];
        size = 0;
        do {
            for (let i = 0; i < 100 && !isDone; ++i, ++nodes)
                step();
        } while (!isDone && events.length < 2000 && size < 400000 && Date.now() < until);
        const isTooMuch = !isDone && nodes > 20000000;
        return JSON.stringify([isDone || isTooMuch, !isTooMuch, ...events]);
    };)");

/// The text on one line, without what nobody sees.
QString line(const QString& text)
{
    return oneLineText(text).simplified();
}

/// The lines of a description. A CR stands for a line break of the page; a line feed is one in
/// the file's text, which counts where there is no other. Blanks around both count nothing.
QString lines(const QString& text)
{
    QString result;
    qsizetype breaks = 0;
    bool isFed = false;
    for (qsizetype from = 0; from <= text.size();) {
        qsizetype to = from;
        while (to < text.size() && text[to] != u'\r' && text[to] != u'\n')
            ++to;
        const QString its = line(text.mid(from, to - from));
        if (!its.isEmpty()) {
            if (!result.isEmpty())
                result += u"\r\n"_s.repeated(breaks > 0 ? breaks : isFed ? 1 : 0);
            result += its;
            breaks = 0;
            isFed = false;
        }
        if (to < text.size() && text[to] == u'\r')
            ++breaks;
        else
            isFed = true;
        from = to + 1;
    }
    return result;
}

/// As the engine reads addresses: without the blanks around them and the controls within.
QString cleanAddress(QString text)
{
    text.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    return text.trimmed();
}

QString nameOf(const QUrl& address)
{
    const QString file = line(QFileInfo(address.fileName()).completeBaseName());
    const QString name = file.isEmpty() ? line(address.host()) : file;
    return name.isEmpty() ? u"Bookmarks"_s : name;
}

} // namespace

QString BookmarkOffer::script()
{
    return u"(() => {"_s + accessors + uR"(
    const type = get(Document, 'doctype')(document);
    if (!type || get(DocumentType, 'name')(type) !== 'netscape-bookmark-file-1')
        return '';
    if (get(Document, 'readyState')(document) === 'loading')
        return '';
    const links = get(Document, 'links')(document);
    return JSON.stringify([performance.timeOrigin, get(HTMLCollection, 'length')(links)]);
})())"_s;
}

std::optional<BookmarkOffer> BookmarkOffer::read(const QString& answer)
{
    constexpr qsizetype longest = 100;
    if (answer.isEmpty() || answer.size() > longest)
        return std::nullopt;
    const QJsonArray values = QJsonDocument::fromJson(answer.toUtf8()).array();
    const double links = values.at(1).toDouble();
    if (!values.at(0).isDouble() || !(links >= 1))
        return std::nullopt;
    return BookmarkOffer{values.at(0).toDouble(),
                         static_cast<int>(std::min(links, double{mostEvents}))};
}

BookmarkPageReader::BookmarkPageReader(const QUrl& address)
    : m_token(QUuid::createUuid().toString(QUuid::Id128))
{
    m_file.folders.push_back({-1, nameOf(address)});
}

QString BookmarkPageReader::firstScript() const
{
    return u"globalThis['%1'] = (() => {"_s.arg(m_token) + accessors + walker + u"})();"_s +
           nextScript();
}

QString BookmarkPageReader::nextScript() const
{
    return u"Object.hasOwn(globalThis, '%1') ? globalThis['%1']() : ''"_s.arg(m_token);
}

QString BookmarkPageReader::lastScript() const
{
    return u"delete globalThis['%1']"_s.arg(m_token);
}

BookmarkPageReader::Progress BookmarkPageReader::take(const QString& answer)
{
    if (answer.isEmpty() || answer.size() > longestAnswer)
        return Progress::Refused;
    const QJsonArray values = QJsonDocument::fromJson(answer.toUtf8()).array();
    if (!values.at(0).isBool() || !values.at(1).isBool())
        return Progress::Refused;
    m_file.isWhole = m_file.isWhole && values.at(1).toBool();
    for (qsizetype i = 2; i < values.size(); ++i) {
        const QJsonArray event = values.at(i).toArray();
        if (!takeEvent(event.at(0).toString(), event.at(1).toString(), event.at(2).toString()))
            return Progress::Refused;
        if (++m_events >= mostEvents || m_length > mostLength) {
            m_file.isWhole = false;
            return Progress::Done;
        }
    }
    return values.at(0).toBool() ? Progress::Done : Progress::More;
}

bool BookmarkPageReader::takeEvent(const QString& kind, const QString& first, const QString& second)
{
    const QString text = first.left(longestText);
    m_length += text.size() + second.size();
    if (kind == "+"_L1) {
        enterList();
    } else if (kind == "-"_L1) {
        if (m_tooDeep > 0)
            --m_tooDeep;
        else if (m_open.size() > 1)
            m_open.pop_back();
    } else if (kind == "H"_L1) {
        m_heading = line(text);
    } else if (kind == "A"_L1) {
        addBookmark(line(text), cleanAddress(second.left(longestAddress)));
        m_heading.reset();
    } else if (kind == "D"_L1) {
        describe(text);
    } else {
        return false;
    }
    // What follows a heading describes the folder, of which the archive keeps the name alone.
    m_isDescribed = kind != "A"_L1;
    return true;
}

void BookmarkPageReader::enterList()
{
    int folder = m_open.back();
    if (m_open.size() > mostDepth) {
        ++m_tooDeep;
        return;
    }
    if (m_heading && m_file.folders.size() < mostFolders) {
        m_file.folders.push_back({folder, m_heading->isEmpty() ? u"Ohne Namen"_s : *m_heading});
        folder = static_cast<int>(m_file.folders.size()) - 1;
    }
    m_heading.reset();
    m_open.push_back(folder);
}

void BookmarkPageReader::addBookmark(const QString& titel, const QString& url)
{
    m_file.bookmarks.push_back({m_open.back(), titel, url, {}});
}

void BookmarkPageReader::describe(const QString& text)
{
    if (!m_isDescribed && !m_file.bookmarks.empty())
        m_file.bookmarks.back().info = lines(text);
}
