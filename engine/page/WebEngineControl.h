#pragma once

#include "browser/EngineControl.h"
#include "engine/page/WebCloseRequest.h"
#include "engine/page/WebVisits.h"

#include <QPointer>
#include <QUrl>
#include <QWebEnginePage>

#include <functional>
#include <optional>

class PopupLimit;
class QWebEngineNewWindowRequest;
class QWebEngineView;
class WebEnginePage;

/// Makes an address to open of a text as the user typed it; an invalid one
/// means that the text cannot be an address.
using AddressResolver = std::function<QUrl(const QString& typed)>;

/// The engine of one browser window on Qt WebEngine.
///
/// Whatever makes the engine start something runs when control is back in the
/// event loop, and the page dies there too: an event of this class may be sent
/// from deep inside the engine, and its receiver may destroy this object.
class WebEngineControl : public EngineControl {
    Q_OBJECT
public:
    /// Takes `page` over; its parent remains the owner of last resort. The
    /// view is made inside `parent`. `popups` outlives the engine.
    WebEngineControl(QWidget* parent, WebEnginePage* page, AddressResolver resolve,
                     PopupLimit& popups);
    ~WebEngineControl() override;
    Q_DISABLE_COPY_MOVE(WebEngineControl)

    void Navigate(const QString& url) override;
    void NavigateTyped(const QString& url) override;
    void GoBack() override;
    void GoForward() override;
    void Refresh() override;
    void RefreshPastCache() override;
    void Stop() override;
    bool AskToClose() override;

    bool Busy() const override;
    QString LocationURL() const override;
    QString LocationName() const override;
    std::optional<EngineDocument> Document() const override;

    using EngineControl::RegisterAsDropTarget;
    void RegisterAsDropTarget(bool value) override;
    QWidget* host() override;
    QWebEngineView* view() const;

private:
    void connectLoading();
    void connectWindow();
    void navigate(const QString& url, bool mayBeScript);
    void start(bool mayBeScript);
    WebPageState pageState() const;
    void actLater(QWebEnginePage::WebAction action);
    void announceNavigation(const QUrl& url, bool isMainFrame);
    void announceWriting(const QString& title);
    bool mayOpenWindow(QWebEngineNewWindowRequest& request);
    void openWindow(QWebEngineNewWindowRequest& request);
    void lend(QWebEngineNewWindowRequest& request);
    void resizeWindow(const QRect& geometry);
    void closeWindow();
    void closeIfEmpty();

    QPointer<WebEnginePage> m_page;
    QPointer<QWebEngineView> m_view;
    AddressResolver m_resolve;
    WebVisits m_visits;
    PopupLimit& m_popups;
    WebCloseRequest m_closeRequest;
    /// The text of a navigation that has not been handed to the engine yet.
    std::optional<QString> m_pending;
    /// Counts the navigations asked for.
    quint32 m_turn = 0;
    /// The last text that was no address.
    QString m_noAddress;
    /// The error page that was shown last, by its own word.
    QUrl m_errorPage;
    /// Handed to the engine, which begins a while later when many windows load.
    bool m_isStarting = false;
    bool m_isLent = false;
    /// Whether a link's address has been sent as the status text, and nothing after it.
    bool m_isOverLink = false;
};
