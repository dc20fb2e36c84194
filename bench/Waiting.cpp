#include "bench/Waiting.h"

#include <QEventLoop>
#include <QTimer>

bool runUntil(const std::function<bool()>& happened, int milliseconds)
{
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (happened())
            loop.exit(1);
    });
    QTimer end; // a single shot would outlive the loop
    QObject::connect(&end, &QTimer::timeout, &loop, &QEventLoop::quit);
    look.start(20);
    end.start(milliseconds);
    return loop.exec() == 1;
}

void runFor(int milliseconds)
{
    QEventLoop loop;
    QTimer end;
    QObject::connect(&end, &QTimer::timeout, &loop, &QEventLoop::quit);
    end.start(milliseconds);
    loop.exec();
}
