#pragma once

#include <QIcon>
#include <QString>

class Prefer;

/// What the frame asks of the start-up module, which outlives it.
class StartModule {
public:
    StartModule() = default;
    StartModule(const StartModule&) = delete;
    StartModule& operator=(const StartModule&) = delete;
    virtual ~StartModule() = default;

    /// The folder of the executable, without trailing separator.
    virtual const QString& programFolder() const = 0;
    virtual const QString& title() const = 0;
    virtual QIcon frameIcon() const = 0;
    virtual QIcon childIcon() const = 0;
    /// The preferences of the run.
    virtual Prefer& preferences() = 0;

    /// Switches the frame's drop target, and with it the taking over of
    /// addresses: a switch, not a counter.
    virtual void SetDropDisabled(bool disable) = 0;
    /// The frame takes messages of other copies, or takes them no more.
    virtual void installHook() = 0;
    virtual void removeHook() = 0;
};
