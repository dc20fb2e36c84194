#pragma once

#include <QString>

#include <optional>

/// What the document of one frame says about itself.
struct FrameReport {
    bool isMainFrame = false;
    /// Its location.href; "chrome-error:..." while an error page of the engine stands there.
    QString address;
    QString title;
};

/// Has every frame of every page report its document: a script of the program, in a
/// JavaScript world that pages cannot see, writes one line to the console. The line is
/// marked with a token that is random per run, so that no page can forge it.
class FrameReports {
public:
    FrameReports();

    /// To be run at the creation of every document, in a world of its own. It
    /// reports once: when the document is complete, at the latest after a second.
    QString script() const;
    /// The report in a line of the console; none in a line of somebody else.
    std::optional<FrameReport> read(const QString& consoleLine) const;

private:
    QString m_token;
};
