#include "pages/downloads/MovingFile.h"

#include "pages/downloads/FileNames.h"

#include <QFile>
#include <QPointer>
#include <QThread>

/// What the thread and the one who waits for it share.
struct MovingFile::Copy {
    std::atomic_bool isCancelled = false;
    FileMove result = FileMove::Failed;
    QPointer<QThread> thread;
};

MovingFile::MovingFile(const QString& from, const QString& to, bool replaces)
    : m_from(from), m_to(to), m_replaces(replaces)
{
}

MovingFile::~MovingFile()
{
    if (!m_copy || !m_copy->thread)
        return;
    m_copy->isCancelled = true;
    m_copy->thread->wait();
    QFile::remove(partialFile(m_to));
}

void MovingFile::start()
{
    const FileMove result = renameFile(m_from, m_to, m_replaces);
    if (result == FileMove::OtherFileSystem)
        copy();
    else
        emit ended(result);
}

void MovingFile::cancel()
{
    if (m_copy)
        m_copy->isCancelled = true;
}

void MovingFile::copy()
{
    const auto copy = std::make_shared<Copy>();
    m_copy = copy;
    copy->thread = QThread::create([copy, from = m_from, partial = partialFile(m_to)] {
        copy->result = copyFile(from, partial, copy->isCancelled);
    });
    connect(copy->thread, &QThread::finished, copy->thread, &QObject::deleteLater);
    connect(copy->thread, &QThread::finished, this, &MovingFile::copied);
    copy->thread->start();
}

void MovingFile::copied()
{
    FileMove result = m_copy->result;
    m_copy.reset();
    const QString partial = partialFile(m_to);
    if (result == FileMove::Done) {
        result = renameFile(partial, m_to, m_replaces);
        QFile::remove(result == FileMove::Done ? m_from : partial);
    }
    emit ended(result);
}
