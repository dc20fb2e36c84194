#include "app/GermanTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

namespace {
/// Qt's own texts call the key "Return" (seen with Qt 6.4), which stands on no German keyboard.
class EnterKey : public QTranslator {
public:
    using QTranslator::QTranslator;

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* /*more*/,
                      int /*number*/) const override
    {
        return context == "QShortcut"_ba && text == "Return"_ba ? u"Eingabe"_s : QString();
    }
};
} // namespace

void installGermanTexts()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    // Qt's own texts fit its version best, but Qt does not require them: an
    // installed program brings some along.
    const QString shared = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    const QString own = QCoreApplication::applicationDirPath() + u"/translations"_s;
    for (const QString& name : {u"qtbase_de"_s, u"qtwebengine_de"_s}) {
        auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
        if (translator->load(name, shared) || translator->load(name, own))
            QCoreApplication::installTranslator(translator.release()); // the application owns it
    }
    QCoreApplication::installTranslator(new EnterKey(QCoreApplication::instance()));
}
