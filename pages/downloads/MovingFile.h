#pragma once

#include "pages/downloads/FileMove.h"

#include <QObject>

#include <memory>

/// A file on its way to where the user wants it: at once in the same file system, else copied in
/// a thread of its own. If it is destroyed underway, the copy is removed.
class MovingFile : public QObject {
    Q_OBJECT
public:
    /// A file that is at `to` already is replaced only if `replaces` says so.
    MovingFile(const QString& from, const QString& to, bool replaces);
    ~MovingFile() override;
    Q_DISABLE_COPY_MOVE(MovingFile)

    /// Ends with `ended`, from within the call or later.
    void start();
    void cancel();

signals:
    /// Never with `OtherFileSystem`.
    void ended(FileMove result);

private:
    struct Copy;

    void copy();
    void copied();

    QString m_from;
    QString m_to;
    bool m_replaces;
    /// Null unless the file is being copied.
    std::shared_ptr<Copy> m_copy;
};
