#pragma once

#include "address/AddressResolver.h"
#include "address/SearchAddress.h"
#include "browser/EngineControl.h"
#include "engine/page/PageLeaving.h"
#include "engine/page/PageSleep.h"
#include "engine/page/WebCloseRequest.h"
#include "engine/page/WebSafety.h"
#include "engine/page/WebVisits.h"

#include <QPointer>
#include <QUrl>
#include <QWebEnginePage>

#include <memory>
#include <optional>

class PageStatus;
class PopupLimit;
class PromptSession;
class QWebEngineNewWindowRequest;
class QWebEngineView;
class WebEnginePage;

/// The engine of one browser window on Qt WebEngine.
///
/// Whatever makes the engine start something runs when control is back in the
/// event loop, and the page is deleted there, too: an event of this class may be sent
/// from deep inside the engine, and its receiver may destroy this object.
class WebEngineControl : public EngineControl {
    Q_OBJECT
public:
    /// How texts become addresses.
    struct Resolvers {
        AddressResolver address;
        SearchResolver search;
    };

    /// Takes `page` over, but leaves it its parent, which deletes it if it is still there at
    /// the program's end. The view is made inside `parent`. `session` outlives the engine. The
    /// page may sleep when it has not been seen for `sleepAfter`.
    WebEngineControl(QWidget* parent, WebEnginePage* page, Resolvers resolve,
                     PromptSession& session, std::chrono::milliseconds sleepAfter);
    ~WebEngineControl() override;
    Q_DISABLE_COPY_MOVE(WebEngineControl)

    /// Begins to load what `Navigate` will be asked for next: that call finds the load on its way.
    /// To be called before any other operation. What is no address of a page is left to `Navigate`:
    /// false.
    bool begin(const QString& typed);

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

    PageSafety Safety() const override { return m_safety.safety(); }
    void TakeBack(const QString& answer) override { m_safety.takeBack(answer); }

    QByteArray Pages() const override;
    bool RestorePages(const QByteArray& pages) override;

    using EngineControl::RegisterAsDropTarget;
    void RegisterAsDropTarget(bool value) override;
    QWidget* host() override;
    /// A page that is not seen is hidden from the engine, which then neither draws nor composes
    /// it; a covered view costs as much as any other (seen with Qt 6.4).
    void PageSeen(bool isSeen) override;
    QWebEngineView* view() const;
    WebEnginePage* page() const { return m_page; }

private:
    void connectLoading();
    void connectWindow();
    void navigate(const QString& typed, bool mayBeScript);
    void handOver(const QString& typed, bool mayBeScript);
    /// The engine is about to be told of a navigation.
    void beginPending();
    WebPageState pageState() const;
    void reloadLater(QWebEnginePage::WebAction action);
    void actLater(QWebEnginePage::WebAction action);
    void announceNavigation(const QUrl& url, bool isMainFrame);
    void announceSound();
    void announceWriting(const QString& title);
    bool mayOpenWindow(QWebEngineNewWindowRequest& request);
    void openWindow(QWebEngineNewWindowRequest& request);
    /// Shows in this window what the page of another one wants to open in a new one.
    void openHere(QWebEngineNewWindowRequest& request);
    void resizeWindow(const QRect& geometry);
    void closeWindow();
    void closeIfEmpty();

    QPointer<WebEnginePage> m_page;
    QPointer<QWidget> m_host;
    /// Fills the host, and is hidden while nothing of it is seen.
    QPointer<QWebEngineView> m_view;
    AddressResolver m_resolve;
    SearchResolver m_search;
    WebVisits m_visits;
    PopupLimit& m_popups;
    WebCloseRequest m_closeRequest;
    PageLeaving m_leaving;
    PageSleep m_sleep;
    WebSafety m_safety;
    /// Where a pending navigation is: it waits for the event loop, then in the engine, which
    /// begins to load a while later when many windows load at once.
    enum class Pending { Nothing, InEventLoop, InEngine };
    Pending m_pending = Pending::Nothing;
    /// Counts the navigations asked for.
    quint32 m_navigations = 0;
    /// What is being loaded although nobody has asked for it yet.
    QString m_begun;
    /// The last text that was no address.
    QString m_noAddress;
    /// The address under which the error page that was shown last has reported itself.
    QUrl m_errorPage;
    /// The page of another window has opened this one.
    bool m_isOpenedByPage = false;
    std::unique_ptr<PageStatus> m_status;
};
