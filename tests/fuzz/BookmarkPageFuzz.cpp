#include "bookmarks/ImportPlan.h"
#include "pages/viewing/BookmarkPage.h"
#include "tests/fuzz/Fuzz.h"

/// The bytes are the answers of a page, one a line, and what follows is done with them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString all = QString::fromUtf8(QByteArrayView(data, static_cast<qsizetype>(size)));
    BookmarkPageReader reader(QUrl(QStringLiteral("file:///x.html")));
    for (const QString& answer : all.split(u'\n')) {
        if (const auto offer = BookmarkOffer::read(answer))
            require(offer->links > 0, "an offer offers something");
        if (reader.take(answer) == BookmarkPageReader::Progress::Refused)
            break;
    }
    const BookmarkFile file = reader.takeFile();
    for (std::size_t i = 0; i < file.folders.size(); ++i)
        require(file.folders[i].parent < static_cast<int>(i), "a folder stands behind its own");
    ArchiveContents archive;
    archive.room = 2;
    const ImportPlan plan = ImportPlan::of(file, archive);
    require(plan.added + plan.present + plan.doubled + plan.unfit == plan.offered,
            "nothing is lost without a word");
    require(plan.folders.size() <= 2, "the archive has room");
    return 0;
}
