#pragma once

#include "bookmarks/ArchiveSteps.h"

#include <QObject>

class ArchiveStatus;
class ArchiveView;
class CommandRunner;

/// The keys of the archive's tree that take changes back and repeat them: the node concerned
/// is selected, and the status line says what was done.
class StepKeys : public QObject {
    Q_OBJECT
public:
    /// All outlive this, which belongs to the view.
    StepKeys(ArchiveSteps& steps, CommandRunner& runner, ArchiveView& view, ArchiveStatus& status);

private:
    using Moved = std::optional<ArchiveSteps::Moved>;

    /// Steps by `how`; the status line says `done` and what, or `nothing`.
    void step(Moved (ArchiveSteps::*how)(), const QString& done, const QString& nothing);
    Moved move(Moved (ArchiveSteps::*how)());

    ArchiveSteps& m_steps;
    CommandRunner& m_runner;
    ArchiveView& m_view;
    ArchiveStatus& m_status;
};
