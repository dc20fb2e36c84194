#pragma once

#include "engine/page/WebScriptAnswers.h"
#include "pages/asking/PageAsker.h"
#include "pages/asking/PageLimits.h"

#include <QObject>

class AskingPage;

/// The windows in which scripts speak to the user. A page that does not stop
/// can be silenced.
class ScriptDialogs : public QObject, public WebScriptAnswers {
    Q_OBJECT
public:
    explicit ScriptDialogs(AskingPage& asking, QObject* parent);

    void alert(const QUrl& site, const QString& text) override;
    bool confirm(const QUrl& site, const QString& text) override;
    std::optional<QString> prompt(const QUrl& site, const QString& text,
                                  const QString& preset) override;
    bool leave() override;

private:
    PageAnswer ask(const QUrl& site, const QString& text, PageQuestion question);
    PageAnswer askOfferingSilence(PageQuestion question);
    QUrl shown() const;

    AskingPage& m_asking;
    DialogSilence m_silence;
};
