#include "update/Stillness.h"

#include "platform/Clock.h"

#include <chrono>
#include <thread>

namespace lumivane {

namespace {

constexpr int betweenLooks = 200; // milliseconds

std::function<void(int)>& thePause()
{
    static std::function<void(int)> pause;
    return pause;
}

} // namespace

int untilGrown(const FileStamp& stamp)
{
    // In whole seconds, as times are stored.
    const qint64 age = Clock::now().toMSecsSinceEpoch() - stamp.modified / 1'000'000'000 * 1000;
    return age >= 0 && age < youth ? static_cast<int>(youth - age) : 0;
}

bool staysAsItWas(const QString& path, const FileStamp& firstLook)
{
    pauseFor(betweenLooks);
    return FileStamp::of(path) == firstLook;
}

void setPause(std::function<void(int milliseconds)> pause)
{
    thePause() = std::move(pause);
}

void pauseFor(int milliseconds)
{
    if (thePause())
        thePause()(milliseconds);
    else
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace lumivane
