#pragma once

#include "bookmarks/ArchiveChanges.h"

#include <QUndoStack>

#include <functional>
#include <optional>

/// What was changed in an archive since it was loaded, step by step: each can be taken back,
/// the last one first, and repeated.
///
/// A step that is taken back or repeated leaves the archive marked changed, except where it
/// stands as it was loaded or saved last.
class ArchiveSteps {
public:
    /// A step that was taken back or repeated.
    struct Moved {
        /// What the step did, in German: "Bookmark „x“ löschen".
        QString text;
        /// The node that was changed, or one beside it if it is gone.
        QPersistentModelIndex node;
        /// Where the step has saved the archive: what could not be written, as a text for the
        /// user. All is in memory, and marked changed.
        QString problem;
    };

    /// Both outlive this.
    ArchiveSteps(ArchiveFiles& files, ArchiveTree& tree) : m_archive{files, tree, {}, false, {}} {}

    ChangedArchive& archive() { return m_archive; }
    /// Does the change and keeps it. Returns its node.
    QModelIndex run(Change change);

    /// The last step, or nothing where there is none, or while one is being made.
    std::optional<Moved> takeBack();
    std::optional<Moved> repeat();

    /// `report` is called after each change that was made, taken back or repeated.
    void reportTo(const std::function<void()>& report) { m_report = report; }

    /// The archive has been loaded: nothing can be taken back.
    void clear();
    /// The archive has been saved, whole or not.
    void noteSaved(bool whole);

private:
    friend class OneStep;

    void begin(const QString& name);
    void end();
    Moved moved(const QString& text);
    void noteChange();
    void markByStep();

    ChangedArchive m_archive;
    QUndoStack m_steps;
    std::function<void()> m_report;
    /// The name of the step that several changes are to be, until the first of them.
    QString m_name;
    int m_open = 0; ///< how many `OneStep` there are
    bool m_begun = false;
    /// The mark of the archive when it was loaded or saved: a load leaves it alone.
    bool m_cleanMark = false;
};

/// While it lives, all changes of the archive are one step. Of several the outermost counts;
/// without a change there is no step.
class OneStep {
public:
    /// `name` says in German what the step does, as in "7 Bookmarks übernehmen".
    /// `steps` outlives this.
    OneStep(ArchiveSteps& steps, const QString& name) : m_steps(steps) { m_steps.begin(name); }
    OneStep(const OneStep&) = delete;
    OneStep& operator=(const OneStep&) = delete;
    ~OneStep() { m_steps.end(); }

private:
    ArchiveSteps& m_steps;
};
