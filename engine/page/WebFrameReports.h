#pragma once

#include <QString>

#include <optional>

/// What the document of one frame says about itself.
struct FrameReport {
    bool isMainFrame = false;
    /// location.href; "chrome-error:..." while an error page of the engine stands there.
    QString address;
    QString title;
};

/// The way by which every frame of every page tells the program about its
/// document: a script of the program in a world that pages cannot see writes
/// one line to the console, marked with a token that is random per run, so
/// that no page can forge it.
class WebFrameReports {
public:
    WebFrameReports();

    /// To be run at the creation of every document, in a world of its own. It
    /// reports once: when the document is complete, at the latest after a second.
    QString script() const;
    /// The report in a line of the console; none in a line of somebody else.
    std::optional<FrameReport> read(const QString& consoleLine) const;

private:
    QString m_token;
};
