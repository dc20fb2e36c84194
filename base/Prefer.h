#pragma once

#include <QByteArray>
#include <QString>

/// The user's preferences: one object for the run, loaded at the start, written
/// by the preferences dialog and by the frame when it closes.
///
/// Flags are 16-bit numbers, true -1 and false 0; whatever a file holds is kept
/// as it stands and written back, without a range check.
class Prefer {
public:
    /// `programFolder` holds the file "Pref.tsp"; no trailing separator.
    explicit Prefer(const QString& programFolder);

    /// Browser windows show the address bar (flag).
    qint16 Adresszeile() const { return m_adresszeile; }
    void Adresszeile(qint16 value) { m_adresszeile = value; }
    /// Browser windows show the toolbar (flag).
    qint16 Toolbar() const { return m_toolbar; }
    void Toolbar(qint16 value) { m_toolbar = value; }
    /// Full path of the e-mail application, or empty.
    const QString& MailClient() const { return m_mailClient; }
    void MailClient(const QString& value) { m_mailClient = value; }
    /// Largest number of history entries kept.
    qint16 HistoryRows() const { return m_historyRows; }
    void HistoryRows(qint16 value) { m_historyRows = value; }
    /// The frame's state when it was last closed: 0 normal, 1 minimised, 2 maximised.
    qint16 MdiState() const { return m_mdiState; }
    void MdiState(qint16 value) { m_mdiState = value; }
    /// The frame's last normal size in twips.
    qint16 MdiHeight() const { return m_mdiHeight; }
    void MdiHeight(qint16 value) { m_mdiHeight = value; }
    qint16 MdiWidth() const { return m_mdiWidth; }
    void MdiWidth(qint16 value) { m_mdiWidth = value; }
    /// Open a browser window after the start (flag).
    qint16 StartBrowser() const { return m_startBrowser; }
    void StartBrowser(qint16 value) { m_startBrowser = value; }
    /// The frame shows its status bar: 1 yes, 0 no (the value of a check box).
    qint16 StatusBar() const { return m_statusBar; }
    void StatusBar(qint16 value) { m_statusBar = value; }
    /// Address of the web search engine.
    const QString& SearchEngine() const { return m_searchEngine; }
    void SearchEngine(const QString& value) { m_searchEngine = value; }
    /// The start address of new browser windows.
    const QString& HomeUrl() const { return m_homeUrl; }
    void HomeUrl(const QString& value) { m_homeUrl = value; }

    /// Writes the record over the first 618 bytes of the file, creating it if
    /// it is missing. Throws FileError, also where the file is there but was not read:
    /// what it holds is not lost.
    void SavePref();
    /// Reads the record. A missing or broken file gives the defaults, which are then
    /// written if that is possible. Throws FileError, with the defaults taken, when the
    /// file is there but cannot be read.
    void LoadPref();

    /// The values that a first start and the dialog's "Standard" take.
    static QString defaultHomeUrl(const QString& programFolder);
    static QString defaultSearchEngine();
    static constexpr qint16 defaultHistoryRows = 50;

private:
    QByteArray record() const;
    void takeRecord(const QByteArray& bytes);
    void takeDefaults();

    QString m_programFolder;
    bool m_isUnread = false;
    qint16 m_adresszeile = 0;
    qint16 m_toolbar = 0;
    QString m_mailClient;
    qint16 m_historyRows = 0;
    qint16 m_mdiState = 0;
    qint16 m_mdiHeight = 0;
    qint16 m_mdiWidth = 0;
    qint16 m_startBrowser = 0;
    qint16 m_statusBar = 0;
    QString m_searchEngine;
    QString m_homeUrl;
};
