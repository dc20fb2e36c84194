#include "base/ShownText.h"
#include "browser/FrameReports.h"
#include "pages/asking/SiteText.h"
#include "pages/downloads/FileNames.h"
#include "tests/fuzz/Fuzz.h"

#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
bool isClean(const QString& text, bool withLines)
{
    const QList<uint> characters = text.toUcs4();
    return std::none_of(characters.begin(), characters.end(),
                        [&](uint c) { return isInvisible(c) && !(withLines && c == u'\n'); });
}

void showOne(const QString& text)
{
    struct Cleaning {
        QString (*clean)(const QString&);
        bool withLines;
    };
    for (const auto& [clean, withLines] :
         {Cleaning{oneLineText, false}, Cleaning{messageText, true}, Cleaning{cleanText, true},
          Cleaning{[](const QString& line) { return cleanLine(line); }, false}}) {
        const QString once = clean(text);
        require(isClean(once, withLines), "nothing invisible is shown");
        require(clean(once) == once, "a cleaned text stays as it is");
    }
    require(plainToolTip(text).count(u'<') == 2, "tags are shown as they are");
    require(isClean(siteName(QUrl(text)), false), "a site has a visible name");
}

void nameOne(const QString& text)
{
    for (const QString& name : {safeFileName(text), pdfFileName(text)}) {
        require(!name.isEmpty() && !name.contains(u'/') && !name.startsWith(u'.') &&
                    isClean(name, false),
                "a file gets a name in its folder that can be seen");
        require(partialFile(name).toUtf8().size() <= 255, "the name fits");
        require(safeFileName(name) == name, "a safe name stays as it is");
        const QString other =
            freeFileName(name, [&name](const QString& taken) { return taken == name; });
        require(safeFileName(other) == other, "and so does the next one");
    }
}

void reportOne(const QString& text)
{
    static const FrameReports reports;
    static const QString token = reports.script().section(u'\'', 1, 1);
    require(!reports.read(text), "nobody else can report");
    if (const auto report = reports.read(token + text))
        require(report->title.size() <= 4096, "titles are cut");
}
} // namespace

/// The bytes are what a page says, once as UTF-8 and once as code units.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QString units;
    for (std::size_t i = 0; i + 1 < size; i += 2)
        units += QChar(data[i], data[i + 1]);
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    for (const QString& text : {QString::fromUtf8(bytes), units}) {
        showOne(text);
        nameOne(text);
        reportOne(text);
    }
    return 0;
}
